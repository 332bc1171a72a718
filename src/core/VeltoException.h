// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoException.h
 * \brief The exception VeltoCore throws for programming errors.
 *
 * Ordinary failures are returned as a VeltoError; a VeltoException means the caller broke a contract
 * (an index out of bounds, a change to an immutable object, memory exhausted). Each exception carries a
 * name (such as "NSRangeException"), a formatted reason and the call stack captured where it was made.
 *
 * \code
 * if (index >= count())
 *     throw VeltoException(VeltoRangeException, QStringLiteral("index %1 beyond bounds").arg(index));
 * \endcode
 */

#include "veltocore_export.h"

#include <QString>
#include <QStringList>

#include <exception>

/// Exception names. The values are the names callers and logs expect; compare against these constants.
inline constexpr QLatin1StringView VeltoGenericException{"NSGenericException"};
inline constexpr QLatin1StringView VeltoRangeException{"NSRangeException"};
inline constexpr QLatin1StringView VeltoInvalidArgumentException{"NSInvalidArgumentException"};
inline constexpr QLatin1StringView VeltoInternalInconsistencyException{"NSInternalInconsistencyException"};
inline constexpr QLatin1StringView VeltoMallocException{"NSMallocException"};

/**
 * \brief VeltoException: a named programming error with its reason and the call stack of the throw.
 *
 * Value semantics; copying keeps the stack captured at construction. Derives from std::exception so
 * that generic handlers see it; what() returns "name: reason" in UTF-8.
 */
class VELTOCORE_EXPORT VeltoException : public std::exception
{
public:
    /// Makes an exception and captures the calling thread's stack (the constructor's own frame excluded).
    VeltoException(const QString &name, const QString &reason);
    ~VeltoException() override;
    VeltoException(const VeltoException &other);
    VeltoException &operator=(const VeltoException &other);

    /**
     * fromException: \a exception as a VeltoException: a copy when it is one; otherwise one named after its
     * demangled type ("std::runtime_error") with what() as the reason and the call stack of this call.
     */
    [[nodiscard]] static VeltoException fromException(const std::exception &exception);

    /// name: the exception's name, for example "NSRangeException".
    [[nodiscard]] QString name() const;
    /// reason: the formatted reason text.
    [[nodiscard]] QString reason() const;
    /// description: "name: reason", the full text used when the exception becomes an error.
    [[nodiscard]] QString description() const;
    /**
     * callStackSymbols: one line per frame, innermost first, "index  binary  symbol + offset"; symbols are
     * demangled where the binary exports them, otherwise the frame shows "binary  + 0xoffset", the
     * offset into the binary that addr2line takes.
     */
    [[nodiscard]] QStringList callStackSymbols() const;
    /// callStackReturnAddresses: the raw return addresses behind callStackSymbols().
    [[nodiscard]] QList<quintptr> callStackReturnAddresses() const;

    const char *what() const noexcept override;

private:
    class Private;
    Private *d;
};
