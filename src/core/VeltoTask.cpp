// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoTask.h"

#include "VTTextDecoding_p.h"
#include "VTToolSearch_p.h"
#include "VeltoException.h"
#include "VeltoLogSink.h"

#include <QFileInfo>
#include <QProcess>

using namespace Qt::StringLiterals;

QString VeltoTask::launchTaskReturningStdoutAndGetError(const std::function<void(QProcess &task)> &configuredUsing,
                                                        VeltoError *error)
{
    QProcess task;
    // Standard error goes where this process's goes, as a child's does by default; the block may change that.
    task.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    VeltoError failure;
    bool launched = false;
    try {
        if (configuredUsing)
            configuredUsing(task);
        // Standard output is always captured, whatever channel mode the block chose.
        if (task.processChannelMode() == QProcess::ForwardedChannels)
            task.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        else if (task.processChannelMode() == QProcess::ForwardedOutputChannel)
            task.setProcessChannelMode(QProcess::SeparateChannels);
        task.start(QIODevice::ReadOnly);
        if (!task.waitForStarted(-1))
            throw VeltoException(VeltoInvalidArgumentException,
                                 u"launch path not accessible: %1 (%2)"_s.arg(task.program(), task.errorString()));
        launched = true;
        task.waitForFinished(-1);
    } catch (const std::exception &exception) {
        failure = VeltoError::errorWithException(exception);
    }
    // A task that never ran has no exit status to read: asking for one is the caller's programming error.
    if (!launched)
        throw VeltoException(VeltoInvalidArgumentException, u"task not launched: %1"_s.arg(failure.localizedDescription()));

    // For a tool killed by a signal, QProcess reports the signal's number here.
    const int status = task.exitCode();
    QString output;
    if (status != 0) {
        failure = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorTaskFailed,
                                              u"NSTask for %1 failed: %2"_s.arg(task.program()).arg(status));
    } else {
        output = VTStringFromUtf8ThenAscii(task.readAllStandardOutput());
    }
    if (!failure.isNull()) {
        if (error)
            *error = failure;
        return QString();
    }
    return output;
}

QString VeltoTask::filePathForCommandLineExecutableWithName(const QString &toolName)
{
    if (toolName.isEmpty())
        return QString();
    VeltoCache<QString> &cache = VTToolPathCache();
    if (const std::optional<QString> known = cache.objectForKey(toolName))
        return *known;
    const QString path = calculateCommandLineExecutablePathForToolName(toolName);
    if (path.isNull())
        VeltoLogSink::warn(u"the '%1' command is not available on this computer"_s.arg(toolName));
    cache.setObject(path, toolName);
    return path;
}

QString VeltoTask::calculateCommandLineExecutablePathForToolName(const QString &toolName)
{
    return VTToolSearch::system().find(toolName);
}

QString VTToolSearch::find(const QString &toolName) const
{
    if (toolName.isEmpty())
        return QString();
    for (const QString &folder : folders) {
        const QString path = folder + u'/' + toolName;
        if (QFileInfo::exists(path))
            return path;
    }
    if (!QFileInfo::exists(whichPath)) {
        VeltoLogSink::warn(u"the 'which' command is not available"_s);
        return QString();
    }
    const QString output = VeltoTask::launchTaskReturningStdoutAndGetError([&](QProcess &task) {
        task.setProgram(whichPath);
        task.setArguments({toolName});
    });
    if (output.isEmpty() || output.startsWith(u"no "))
        return QString();
    return output.trimmed();
}

const VTToolSearch &VTToolSearch::system()
{
    static const VTToolSearch search{{u"/usr/bin"_s, u"/usr/sbin"_s}, u"/usr/bin/which"_s};
    return search;
}

VeltoCache<QString> &VTToolPathCache()
{
    // Made once and never destroyed: a background thread may still ask while the process exits.
    static VeltoCache<QString> *const cache =
        VeltoCache<QString>::newStaticCacheVeltoWithName(VeltoTask::ToolPathCacheName).release();
    return *cache;
}
