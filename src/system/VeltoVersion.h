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
 * A version caches the text it was parsed from, or the text first made for it, and keeps returning it:
 * the setters store the numbers but do not clear the cached texts. Build the version completely before
 * asking for its text. Copies are independent values; asking a version for its text fills its own cache,
 * so one object must not be asked from two threads at once (different copies may).
 */

#include "veltocore_export.h"

#include "VeltoError.h"

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

#include <compare>
#include <optional>

/// Release types of a VeltoVersion, in their order. Values outside 0-4 show as " ???".
enum VeltoReleaseType : quint64 {
    VeltoReleaseTypeUnknown = 0,
    VeltoReleaseTypeAlpha = 1,
    VeltoReleaseTypeBeta = 2,
    VeltoReleaseTypeFinalCandidate = 3, ///< "fc"
    VeltoReleaseTypeRelease = 4,
};

/**
 * \brief VeltoVersion: a product version. Implicitly shared; equal and hashed by orderedInteger().
 *
 * A default-constructed version is 0.0 with release type unknown and increment 0.
 */
class VELTOCORE_EXPORT VeltoVersion
{
public:
    VeltoVersion();
    /// initWithMajor: a release (type 4) with increment 1; each number keeps its low 8 bits.
    VeltoVersion(quint64 major, quint64 minor, quint64 revision);
    /// initWithMajor: the given fields; the numbers keep their low 8 bits, the release type is stored whole.
    VeltoVersion(quint64 major, quint64 minor, quint64 revision, quint64 releaseType, quint64 releaseIncrement);
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
    /// releaseType: one of VeltoReleaseType, or any other value that was set.
    [[nodiscard]] quint64 releaseType() const;
    [[nodiscard]] quint8 releaseIncrement() const;

    /// setMajorVersion: stores the low 8 bits of \a value. Does not clear the cached texts.
    void setMajorVersion(quint64 value);
    /// setMinorVersion: stores the low 8 bits of \a value. Does not clear the cached texts.
    void setMinorVersion(quint64 value);
    /// setRevision: stores the low 8 bits of \a value. Does not clear the cached texts.
    void setRevision(quint64 value);
    /// setReleaseType: stores \a value whole. Does not clear the cached texts.
    void setReleaseType(quint64 value);
    /// setReleaseIncrement: stores the low 8 bits of \a value. Does not clear the cached texts.
    void setReleaseIncrement(quint64 value);

    /**
     * setReleaseTypeFromInteger: stores \a value when it is 1 to 4 and returns true; otherwise stores 0
     * (unknown) and returns false. \a error is never set: an unknown type is not an error to report.
     */
    bool setReleaseTypeFromInteger(qint64 value, VeltoError *error = nullptr);

    /// displayStringIvar: the cached display string; null until parsed or first made.
    [[nodiscard]] QString displayStringIvar() const;
    /// bundleVersionStringIvar: the cached bundle version string; null until parsed or first made.
    [[nodiscard]] QString bundleVersionStringIvar() const;

    /// displayString: the cached display string, or one made from the fields and cached ("2.1 beta 3").
    [[nodiscard]] QString displayString() const;
    /**
     * bundleVersionString: the cached bundle version string, or one made from the fields and cached
     * ("0201.0002.03"). A release type above 99 makes it longer than twelve units.
     */
    [[nodiscard]] QString bundleVersionString() const;

    /**
     * orderedInteger: major << 32 | minor << 24 | revision << 16 | releaseType << 8 | increment. The
     * release type is not masked: a type above 255 reaches into the higher fields.
     */
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
    Private *dataForCaching() const;
    QSharedDataPointer<Private> d;
};

Q_DECLARE_METATYPE(VeltoVersion)

/// qHash: hashes orderedInteger().
VELTOCORE_EXPORT size_t qHash(const VeltoVersion &version, size_t seed = 0) noexcept;
