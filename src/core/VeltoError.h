// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoError.h
 * \brief Error values: a domain, a signed code and a user-info map, and the rule that turns one into
 * the text a user sees.
 *
 * Every fallible VeltoCore call returns false (or an empty result) and fills an optional
 * `VeltoError *error = nullptr` out-parameter. Errors of the library's own making are in
 * VeltoCoreErrorDomain with one of the VeltoCoreError codes; errors that stand for system failures use
 * the general domain ("NSCocoaErrorDomain") or the POSIX domain ("NSPOSIXErrorDomain", code = errno).
 *
 * \code
 * VeltoError error;
 * if (!document.save(&error))
 *     showMessage(error.descriptionForUserVelto());   // "Permission denied [NSPOSIXErrorDomain code 13]"
 * \endcode
 */

#include "veltocore_export.h"

#include <QSharedDataPointer>
#include <QString>
#include <QVariantMap>

#include <exception>

class VeltoException;

/// The library's error domain. Compare domains against this constant, never against a copy of the text.
inline constexpr QLatin1StringView VeltoCoreErrorDomain{"com.velto.veltoCore.errorDomain"};
/// The general error domain: cancellation (3072), missing files (4, 260), unreadable (257), read-only (513).
inline constexpr QLatin1StringView VeltoCocoaErrorDomain{"NSCocoaErrorDomain"};
/// The POSIX error domain; the code is the errno value.
inline constexpr QLatin1StringView VeltoPOSIXErrorDomain{"NSPOSIXErrorDomain"};

/// User-info key of the localized description text.
inline constexpr QLatin1StringView VeltoLocalizedDescriptionKey{"NSLocalizedDescription"};
/// User-info key of an underlying VeltoError (stored with QVariant::fromValue).
inline constexpr QLatin1StringView VeltoUnderlyingErrorKey{"NSUnderlyingError"};
/// User-info key of the file path an error is about.
inline constexpr QLatin1StringView VeltoFilePathErrorKey{"NSFilePath"};
/// User-info key that, with any value, keeps the domain and code out of the user-facing description.
inline constexpr QLatin1StringView VeltoOmitCodeKey{"VeltoOmitCode"};

/// Codes of VeltoCoreErrorDomain. The numbers are fixed and stored by applications.
enum VeltoCoreErrorCode : qint64 {
    VeltoCoreErrorInvalidData = 1,   ///< stored data is missing or unusable
    VeltoCoreErrorSecurityScope = 2, ///< a file reference could not be captured or a parent does not enclose it
    VeltoCoreErrorException = 3,     ///< an exception was caught and converted into an error
    VeltoCoreErrorPlistType = 4,     ///< a property-list value is missing or of the wrong type
    VeltoCoreErrorTaskFailed = 5,    ///< a child process ended with a non-zero status
    VeltoCoreErrorVersionString = 6, ///< a version string could not be parsed
    VeltoCoreErrorUnknown = 999,     ///< "An unknown/unspecified error occurred."
};

/// Codes of the general domain that VeltoCore tests for.
enum VeltoCocoaErrorCode : qint64 {
    VeltoCocoaErrorFileNoSuchFile = 4,
    VeltoCocoaErrorFileReadUnknown = 256,
    VeltoCocoaErrorFileReadNoPermission = 257,
    VeltoCocoaErrorFileReadCorruptFile = 259,
    VeltoCocoaErrorFileReadNoSuchFile = 260,
    VeltoCocoaErrorFileReadUnsupportedScheme = 262,
    VeltoCocoaErrorFileReadTooLarge = 263,
    VeltoCocoaErrorFileWriteUnknown = 512,
    VeltoCocoaErrorFileWriteNoPermission = 513,
    VeltoCocoaErrorFileWriteFileExists = 516,
    VeltoCocoaErrorFileWriteUnsupportedScheme = 518,
    VeltoCocoaErrorFileWriteOutOfSpace = 640,
    VeltoCocoaErrorFileWriteVolumeReadOnly = 642,
    VeltoCocoaErrorUserCancelled = 3072,
    VeltoCocoaErrorPropertyListReadCorrupt = 3840,
    VeltoCocoaErrorPropertyListWriteInvalid = 3852,
};

/**
 * \brief VeltoError: an error value (domain, code, user info). Cheap to copy (implicitly shared).
 *
 * A default-constructed error is null: empty domain, code 0, no user info.
 */
class VELTOCORE_EXPORT VeltoError
{
public:
    VeltoError();
    /// Makes an error with the given domain, code and user info.
    VeltoError(const QString &domain, qint64 code, const QVariantMap &userInfo = {});
    VeltoError(const VeltoError &other);
    VeltoError &operator=(const VeltoError &other);
    ~VeltoError();

    /**
     * errorWithDomain: an error whose user-facing text is \a localizedDescription alone. With a non-empty
     * description the user info holds exactly the description and VeltoOmitCodeKey = true; with a null or
     * empty one the user info is empty and the user-facing text ends in "[domain code N]".
     */
    [[nodiscard]] static VeltoError errorWithDomain(const QString &domain, qint64 code,
                                                    const QString &localizedDescription);
    /// errorWithDomainException: errorWithDomain() with the exception's description() as the text.
    [[nodiscard]] static VeltoError errorWithDomainException(const QString &domain, qint64 code,
                                                             const VeltoException &exception);
    /**
     * errorWithException: an error in VeltoCoreErrorDomain, code 3, described as
     * "Exception was thrown. <name>: <reason>". This is how a caught exception leaves a library call.
     */
    [[nodiscard]] static VeltoError errorWithException(const VeltoException &exception);
    /// errorWithException: the same for any std::exception; the name is its demangled type name.
    [[nodiscard]] static VeltoError errorWithException(const std::exception &exception);
    /// unknownErrorVelto: VeltoCoreErrorDomain, code 999, "An unknown/unspecified error occurred.".
    [[nodiscard]] static VeltoError unknownErrorVelto();
    /// userCancellationErrorVelto: the general domain's code 3072 with no user info.
    [[nodiscard]] static VeltoError userCancellationErrorVelto();
    /// posixError: the POSIX domain with \a errnoValue; \a description, if given, becomes the text.
    [[nodiscard]] static VeltoError posixError(int errnoValue, const QString &description = {});

    [[nodiscard]] bool isNull() const;
    [[nodiscard]] QString domain() const;
    [[nodiscard]] qint64 code() const;
    [[nodiscard]] QVariantMap userInfo() const;

    /**
     * localizedDescription: the user info's description; without one, the system's text for a POSIX
     * code (strerror) or a general text naming the domain and code.
     */
    [[nodiscard]] QString localizedDescription() const;

    /// isUserCancellationErrorVelto: the general domain with code 3072.
    [[nodiscard]] bool isUserCancellationErrorVelto() const;
    /// isErrorDomainVelto: the code equals \a code and the domain's text equals \a domain. A null domain
    /// on either side (a null error's, or a null \a domain) matches no domain, not even the empty one.
    [[nodiscard]] bool isErrorDomainVelto(const QString &domain, qint64 code) const;
    /// isErrorNoSuchFileVelto: general-domain code 4 or 260, or POSIX-domain code 2 (ENOENT).
    [[nodiscard]] bool isErrorNoSuchFileVelto() const;

    /**
     * descriptionForUserVelto: the text to show a user. The localized description; for a user
     * cancellation, or when the user info has VeltoOmitCodeKey, exactly that; otherwise followed by
     * " [domain code N]", or by "\n\n[domain code N]" when the description holds a line feed.
     */
    [[nodiscard]] QString descriptionForUserVelto() const;

    /// description: "Error Domain=<domain> Code=<code> \"<localized description>\"", for logs.
    [[nodiscard]] QString description() const;

    /// Equal when domain, code and user info are equal.
    bool operator==(const VeltoError &other) const;

private:
    class Private;
    QSharedDataPointer<Private> d;
};

Q_DECLARE_METATYPE(VeltoError)

/// qHash: hashes domain and code.
VELTOCORE_EXPORT size_t qHash(const VeltoError &error, size_t seed = 0) noexcept;
