// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoAssertionInfo.h
 * \brief VeltoAssertionInfo: one failed consistency check, or one unexpected exception, as a record that
 * numbers itself, renders itself for a log and knows when another record is the same failure.
 *
 * The host's assertion macros and the exception handler (VeltoExceptionHandler) make records; where they
 * go (a log, a report for the user, a file) is the host's choice. A collector that keeps records by
 * equalityKey() raises the held record's repeatCount() instead of keeping a repeat.
 *
 * \code
 * auto record = std::make_shared<VeltoAssertionInfo>();
 * record->setFailedExpression(u"index < count"_s);
 * record->setFileName(QString::fromUtf8(__FILE__));
 * record->setFileLineNumber(__LINE__);
 * qWarning().noquote() << record->description();
 * \endcode
 */

#include "veltocore_export.h"

#include <QString>
#include <QStringList>

#include <memory>

/// The assertion type of a record made for an unexpected exception; other values belong to the host.
inline constexpr qint32 VeltoAssertionTypeUnexpectedException = 2;

/**
 * \brief VeltoAssertionInfo: a record of a failed check (what, where, during which operation, with which
 * call stack, when, and how often).
 *
 * Records may be made, read and written on any thread; every accessor is atomic, so a report built on one
 * thread sees whole values written on another. A record is an object with identity: not copyable, handed
 * on by pointer (usually a std::shared_ptr).
 */
class VELTOCORE_EXPORT VeltoAssertionInfo
{
public:
    /**
     * Makes a record: takes the next number of the process-wide sequence (1 for the first record of the
     * process), stamps the current time and sets repeatCount() to 1; every other field is zero or null.
     * Numbers are unique even when records are made at the same instant on several threads.
     */
    VeltoAssertionInfo();
    ~VeltoAssertionInfo();
    VeltoAssertionInfo(const VeltoAssertionInfo &) = delete;
    VeltoAssertionInfo &operator=(const VeltoAssertionInfo &) = delete;

    /// assertionType: the kind of failure; VeltoAssertionTypeUnexpectedException (2) for an exception.
    [[nodiscard]] qint32 assertionType() const;
    void setAssertionType(qint32 type);

    /// sequenceNumber: the record's place in the process-wide sequence, from 1; fixed at construction.
    [[nodiscard]] quint64 sequenceNumber() const;

    /// failedExpression: the text of the failed check; for an exception, its reason.
    [[nodiscard]] QString failedExpression() const;
    void setFailedExpression(const QString &expression);

    /// userFriendlyMessage: a message meant for the user; "unexpected exception" for an exception.
    [[nodiscard]] QString userFriendlyMessage() const;
    void setUserFriendlyMessage(const QString &message);

    /// fileName: the source file of the check; for an exception, the exception's name.
    [[nodiscard]] QString fileName() const;
    void setFileName(const QString &fileName);

    /// fileLineNumber: the line of the check; for an exception, the outermost return address of its stack.
    [[nodiscard]] quint64 fileLineNumber() const;
    void setFileLineNumber(quint64 line);

    /// timeMark: when the record was made, in seconds since 2001-01-01 00:00:00 UTC; fixed at construction.
    [[nodiscard]] double timeMark() const;

    /// stackTrace: one line per stack frame, innermost first; may be empty.
    [[nodiscard]] QStringList stackTrace() const;
    void setStackTrace(const QStringList &frames);

    /// operationTitle: the user-visible name of the operation under way (an undo title); may be empty.
    [[nodiscard]] QString operationTitle() const;
    void setOperationTitle(const QString &title);

    /// repeatCount: how many times this failure has occurred; 1 for a new record.
    [[nodiscard]] quint64 repeatCount() const;
    void setRepeatCount(quint64 count);

    /**
     * description: the multi-line report, without a line feed at its end:
     * "Assertion #<n> at time=<whole seconds>: \n", "\tfailed: <expression> \n", "\tin: <file> line <line> \n",
     * "\twhile: <title> \n" only for a non-empty title, then "\tSTACK TRACE:\n\t" and the frames joined by
     * "\n\t", or "\t(no stack trace)" when they join to nothing. A null text shows as "(null)". The
     * user-friendly message, the type and the repeat count are not part of it.
     */
    [[nodiscard]] QString description() const;
    /// shortDescription: "assert failed (<expression>), in <file> line <line>".
    [[nodiscard]] QString shortDescription() const;
    /// equalityKey: "<file>, line <line>"; records with the same key are the same failure.
    [[nodiscard]] QString equalityKey() const;
    /// isSameFailedAssertion: whether \a other has the same line number and a file name of the same text.
    [[nodiscard]] bool isSameFailedAssertion(const VeltoAssertionInfo &other) const;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
