// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAssertionInfo.h"

#include "VeltoLogging.h"

#include <atomic>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {

std::atomic<quint64> assertionSequence{0};

// A text that was never set shows as "(null)", as an unset field always has in these reports.
QString shown(const QString &text)
{
    return text.isNull() ? u"(null)"_s : text;
}

} // namespace

class VeltoAssertionInfo::Private
{
public:
    mutable std::mutex mutex;
    qint32 assertionType = 0;
    const quint64 sequenceNumber = assertionSequence.fetch_add(1, std::memory_order_relaxed) + 1;
    QString failedExpression;
    QString userFriendlyMessage;
    QString fileName;
    quint64 fileLineNumber = 0;
    const double timeMark = VeltoLog_CurrentTime();
    QStringList stackTrace;
    QString operationTitle;
    quint64 repeatCount = 1;

    template<typename T>
    T get(const T &field) const
    {
        std::lock_guard lock(mutex);
        return field;
    }
    template<typename T>
    void set(T &field, const T &value)
    {
        std::lock_guard lock(mutex);
        field = value;
    }
};

VeltoAssertionInfo::VeltoAssertionInfo() : d(std::make_unique<Private>()) {}

VeltoAssertionInfo::~VeltoAssertionInfo() = default;

qint32 VeltoAssertionInfo::assertionType() const
{
    return d->get(d->assertionType);
}

void VeltoAssertionInfo::setAssertionType(qint32 type)
{
    d->set(d->assertionType, type);
}

quint64 VeltoAssertionInfo::sequenceNumber() const
{
    return d->sequenceNumber;
}

QString VeltoAssertionInfo::failedExpression() const
{
    return d->get(d->failedExpression);
}

void VeltoAssertionInfo::setFailedExpression(const QString &expression)
{
    d->set(d->failedExpression, expression);
}

QString VeltoAssertionInfo::userFriendlyMessage() const
{
    return d->get(d->userFriendlyMessage);
}

void VeltoAssertionInfo::setUserFriendlyMessage(const QString &message)
{
    d->set(d->userFriendlyMessage, message);
}

QString VeltoAssertionInfo::fileName() const
{
    return d->get(d->fileName);
}

void VeltoAssertionInfo::setFileName(const QString &fileName)
{
    d->set(d->fileName, fileName);
}

quint64 VeltoAssertionInfo::fileLineNumber() const
{
    return d->get(d->fileLineNumber);
}

void VeltoAssertionInfo::setFileLineNumber(quint64 line)
{
    d->set(d->fileLineNumber, line);
}

double VeltoAssertionInfo::timeMark() const
{
    return d->timeMark;
}

QStringList VeltoAssertionInfo::stackTrace() const
{
    return d->get(d->stackTrace);
}

void VeltoAssertionInfo::setStackTrace(const QStringList &frames)
{
    d->set(d->stackTrace, frames);
}

QString VeltoAssertionInfo::operationTitle() const
{
    return d->get(d->operationTitle);
}

void VeltoAssertionInfo::setOperationTitle(const QString &title)
{
    d->set(d->operationTitle, title);
}

quint64 VeltoAssertionInfo::repeatCount() const
{
    return d->get(d->repeatCount);
}

void VeltoAssertionInfo::setRepeatCount(quint64 count)
{
    d->set(d->repeatCount, count);
}

QString VeltoAssertionInfo::description() const
{
    QString report = u"Assertion #%1 at time=%2: \n"_s.arg(d->sequenceNumber).arg(quint64(d->timeMark));
    report += u"\tfailed: %1 \n"_s.arg(shown(failedExpression()));
    report += u"\tin: %1 line %2 \n"_s.arg(shown(fileName()), QString::number(fileLineNumber()));
    if (const QString title = operationTitle(); !title.isEmpty())
        report += u"\twhile: %1 \n"_s.arg(title);
    const QString frames = stackTrace().join(u"\n\t"_s);
    report += frames.isEmpty() ? u"\t(no stack trace)"_s : u"\tSTACK TRACE:\n\t"_s + frames;
    return report;
}

QString VeltoAssertionInfo::shortDescription() const
{
    return u"assert failed (%1), in %2 line %3"_s.arg(shown(failedExpression()), shown(fileName()),
                                                     QString::number(fileLineNumber()));
}

QString VeltoAssertionInfo::equalityKey() const
{
    return u"%1, line %2"_s.arg(shown(fileName()), QString::number(fileLineNumber()));
}

bool VeltoAssertionInfo::isSameFailedAssertion(const VeltoAssertionInfo &other) const
{
    return fileLineNumber() == other.fileLineNumber() && fileName() == other.fileName();
}
