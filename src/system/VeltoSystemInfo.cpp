// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSystemInfo.h"

#include "VTPasswordEntry_p.h"
#include "VTSysctl_p.h"
#include "VeltoBundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QStringDecoder>
#include <QSysInfo>


#include <sys/utsname.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// Null when the bytes are not valid UTF-8, so that callers can fall back instead of showing U+FFFD.
QString strictUtf8(const char *bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(QByteArrayView(bytes));
    return decoder.hasError() ? QString() : text;
}

} // namespace

bool Velto_SysCtl_GetIntByName(qint32 *outValue, const char *name)
{
    return VTSysctl().int32ByName(name, outValue);
}

bool VeltoSystem_CPUIs64Bit()
{
    return VTSysctl().cpuIs64Bit();
}

int VeltoSystem_CPUCount()
{
    qint32 count = 0;
    if (!Velto_SysCtl_GetIntByName(&count, "hw.ncpu"))
        return 0;
    return count;
}

qint64 VeltoSystem_CPUSpeed()
{
    return VTSysctl().cpuSpeedMHz();
}

quint64 VeltoSystem_RAM()
{
    qint64 bytes = 0;
    if (!VTSysctl().int64ByName("hw.memsize", &bytes))
        return 0;
    return quint64(bytes);
}

QString VeltoSystem_MacModelName()
{
    return VTSysctl().modelName();
}

QString VeltoSystem_PrimaryLanguageCode()
{
    const QString language = VeltoBundle::preferredLanguages().value(0);
    return language.isNull() ? u""_s : language;
}

QString VeltoSystem_CurrentUserName()
{
    const auto entry = VTPasswordEntryForRealUser();
    const QString name = entry ? strictUtf8(entry->name.constData()) : QString();
    return name.isEmpty() ? u"user"_s : name;
}

QString VeltoSystem_RealHomeFolder()
{
    static const QString home = [] {
        const auto entry = VTPasswordEntryForRealUser();
        return entry && !entry->homeFolder.isEmpty() ? QFile::decodeName(entry->homeFolder) : QDir::homePath();
    }();
    return home;
}

QString VeltoSystem_ComputerName()
{
    const QString pretty = VTSysctl().prettyHostName();
    if (!pretty.isEmpty())
        return pretty;
    const QString hostName = QSysInfo::machineHostName();
    return hostName.isEmpty() ? QString() : hostName;
}

QString VeltoSystem_RootVolumeName()
{
    const QStorageInfo root = QStorageInfo::root();
    const QString label = root.name();
    if (!label.isEmpty())
        return label;
    const QString device = QFileInfo(QString::fromLocal8Bit(root.device())).fileName();
    if (!device.isEmpty())
        return device;
    return u"volume"_s;
}

QString VeltoSystem_KernelVersionString()
{
    struct utsname names;
    if (uname(&names) != 0)
        return {};
    return QString::fromLatin1(names.release);
}

QString VeltoSystem_DistributionName()
{
    return VTSysctl().distributionName();
}
