// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoVersion.h
 * \brief VeltoVersion: one release of a product (major, minor, revision, release type and increment),
 * read from and written as a display string ("2.1.3 beta 4") or a twelve-character bundle version
 * string ("0201.0304.01"), compared through one packed integer.
 *
 * Display strings: "major.minor[.revision]" followed, for anything but a release, by " alpha", " beta",
 * " fc" (final candidate) or " ???" (unknown) and the increment: 2.0, 2.0.1, 2.1 beta 3, 3.0 fc 1.
 * Every number is 0 to 99 without leading zeros. Bundle version strings hold two-digit fields at fixed
 * places: major, minor, ".", revision, release type, ".", increment; 0201.0002.03 is 2.1 beta 3.
 *
 * Versions order by major, minor, revision, then unknown < alpha < beta < fc < release, then increment:
 * 2.0 beta 9 < 2.0 fc 1 < 2.0.
 *
 * \code
 * VeltoError error;
 * const auto running = VeltoVersion::initWithDisplayString(u"2.1 beta 3"_s, &error);
 * if (!running)
 *     qWarning() << error.localizedDescription();          // "invalid display version string"
 * else if (running->compareVersion(VeltoVersion(2, 1, 0)) < 0)
 *     showPrereleaseBanner();
 * \endcode
 *
 * Use VeltoSystemVersion (VeltoSystemVersions.h) for the operating system's version.
 *
 * A version keeps the text it was parsed from, or the text first made for it, and keeps returning it:
 * the setters store the numbers but do not change a text already given out. Build the version completely
 * before asking for its text. Copies are independent values. The const calls never change shared state,
 * so one version may be read from several threads at once; a setter needs the caller's own lock.
 */

#include "veltocore_export.h"

#include "VeltoError.h"

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

#include <atomic>
#include <compare>
#include <optional>

/// Release types of a VeltoVersion, in their order; the numbers are those of the bundle version string.
enum class VeltoReleaseType : quint8 {
    Unknown = 0, ///< shown as " ???"
    Alpha = 1,
    Beta = 2,
    FinalCandidate = 3, ///< "fc"
    Release = 4,
};

/**
 * \brief VeltoVersion: a product version. Implicitly shared; equal and hashed by orderedInteger().
 *
 * A default-constructed version is 0.0 with release type unknown and increment 0. Every number (major,
 * minor, revision, increment) is 0 to 99, the range both textual forms can hold: parsing refuses larger
 * numbers with an error, and the constructors and setters throw a VeltoException named
 * "NSInvalidArgumentException" for them instead of storing a cut-down value.
 */
class VELTOCORE_EXPORT VeltoVersion
{
public:
    VeltoVersion();
    /// initWithMajor: a release with increment 1. Throws VeltoException for a number above 99.
    VeltoVersion(quint64 major, quint64 minor, quint64 revision);
    /// initWithMajor: the given fields. Throws VeltoException (NSInvalidArgumentException) for a number above
    /// 99, with a reason such as "VeltoVersion: minor version 256 is outside 0-99".
    VeltoVersion(quint64 major, quint64 minor, quint64 revision, VeltoReleaseType releaseType,
                 quint64 releaseIncrement);
    VeltoVersion(const VeltoVersion &other);
    VeltoVersion &operator=(const VeltoVersion &other);
    ~VeltoVersion();

    /**
     * initWithDisplayString: parses \a text with whitespace and line breaks trimmed from both ends. The
     * trimmed text is cached and returned by displayString() as it is (letter case included).
     * \return nothing on failure, with \a error (if given) set to VeltoCoreErrorDomain, code 6,
     * "invalid display version string". Accepted: 1, 1.2, 1.2.3, 1 beta 2, 1.2 Beta 10, 1.2.; refused:
     * empty text, 01.2, 1.100, 1.2 beta, 1.2 release 1, 1.2  beta 3 (two spaces), 1.2.3.4.
     */
    [[nodiscard]] static std::optional<VeltoVersion> initWithDisplayString(const QString &text,
                                                                           VeltoError *error = nullptr);

    /**
     * initWithBundleVersionString: parses exactly twelve UTF-16 units "MMmm.rrTT.ii" of ASCII digits and two
     * full stops; \a text is cached as it is. A release type outside 1-4 (such as 07) is accepted and
     * read as 0 (unknown).
     * \return nothing on failure, with \a error (if given) set to VeltoCoreErrorDomain, code 6, and the text
     * "bundle version string is wrong length" or "invalid bundle version string".
     */
    [[nodiscard]] static std::optional<VeltoVersion> initWithBundleVersionString(const QString &text,
                                                                                 VeltoError *error = nullptr);

    [[nodiscard]] quint8 majorVersion() const;
    [[nodiscard]] quint8 minorVersion() const;
    [[nodiscard]] quint8 revision() const;
    [[nodiscard]] VeltoReleaseType releaseType() const;
    [[nodiscard]] quint8 releaseIncrement() const;

    /**
     * setMajorVersion, setMinorVersion, setRevision, setReleaseIncrement: store \a value, 0 to 99; a larger
     * one throws VeltoException (NSInvalidArgumentException) and leaves the version as it was. The setters
     * do not change a text already made or parsed.
     */
    void setMajorVersion(quint64 value);
    void setMinorVersion(quint64 value);
    void setRevision(quint64 value);
    void setReleaseIncrement(quint64 value);
    /// setReleaseType: stores \a value. Does not change a text already made or parsed.
    void setReleaseType(VeltoReleaseType value);

    /**
     * setReleaseTypeFromInteger: stores \a value when it is 1 to 4 and returns true; otherwise stores
     * VeltoReleaseType::Unknown and returns false. An unknown type is not an error: the bundle version
     * string reader accepts one and shows it as " ???".
     */
    [[nodiscard]] bool setReleaseTypeFromInteger(qint64 value);

    /// displayStringIvar: the display string kept for the version; null until parsed or first given out.
    [[nodiscard]] QString displayStringIvar() const;
    /// bundleVersionStringIvar: the bundle version string kept for it; null until parsed or first given out.
    [[nodiscard]] QString bundleVersionStringIvar() const;

    /**
     * displayString: the parsed display string, or one made from the fields ("2.1 beta 3"). Once given out,
     * the text stays what it was when the fields change later.
     */
    [[nodiscard]] QString displayString() const;
    /// bundleVersionString: the parsed bundle version string, or one made from the fields ("0201.0002.03"),
    /// always twelve units; it stays as given out, as displayString() does.
    [[nodiscard]] QString bundleVersionString() const;

    /// orderedInteger: major << 32 | minor << 24 | revision << 16 | releaseType << 8 | increment.
    [[nodiscard]] quint64 orderedInteger() const;

    /// isEqualVersion: the ordered integers are equal (the cached texts play no part).
    [[nodiscard]] bool isEqualVersion(const VeltoVersion &other) const;
    /// compareVersion: −1, 0 or +1 as this version is older than, the same as or newer than \a other.
    [[nodiscard]] int compareVersion(const VeltoVersion &other) const;

    bool operator==(const VeltoVersion &other) const { return isEqualVersion(other); }
    std::strong_ordering operator<=>(const VeltoVersion &other) const
    {
        return orderedInteger() <=> other.orderedInteger();
    }

    /// description: VeltoVersion<address> - "display string", for logs.
    [[nodiscard]] QString description() const;

private:
    class Private;
    enum ProducedText : quint8 { DisplayText = 1, BundleText = 2 };
    void keepProducedTexts();
    [[nodiscard]] QString madeDisplayString() const;
    [[nodiscard]] QString madeBundleVersionString() const;

    QSharedDataPointer<Private> d;
    // Which texts this object has made and given out: the next setter keeps them (written by const
    // calls, hence atomic; the texts themselves are only stored by setters).
    mutable std::atomic<quint8> m_producedTexts{0};
};

Q_DECLARE_METATYPE(VeltoVersion)

/// qHash: hashes orderedInteger().
VELTOCORE_EXPORT size_t qHash(const VeltoVersion &version, size_t seed = 0) noexcept;
