#include "VeltoVersion.h"

#include <QHashFunctions>

#include <algorithm>

using namespace Qt::StringLiterals;

class VeltoVersion::Private : public QSharedData
{
public:
    quint8 majorVersion = 0;
    quint8 minorVersion = 0;
    quint8 revision = 0;
    quint64 releaseType = VeltoReleaseTypeUnknown;
    quint8 releaseIncrement = 0;
    QString displayStringIvar;
    QString bundleVersionStringIvar;
};

namespace {

constexpr QLatin1StringView InvalidDisplayString{"invalid display version string"};
constexpr QLatin1StringView BundleStringWrongLength{"bundle version string is wrong length"};
constexpr QLatin1StringView InvalidBundleString{"invalid bundle version string"};
constexpr qsizetype BundleVersionStringLength = 12;

void setVersionError(VeltoError *error, QLatin1StringView text)
{
    if (error)
        *error = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorVersionString, text);
}

// Only "0" to "9": digits of other scripts are not part of a version.
bool isStrictDecimalDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Reads a trimmed display string from left to right.
struct DisplayStringReader
{
    QStringView text;
    qsizetype position = 0;

    bool atEnd() const { return position >= text.size(); }
    bool atDigit() const { return !atEnd() && isStrictDecimalDigit(text[position]); }

    // A number from 0 to 99 without leading zeros, followed by one separator of any kind, which is
    // skipped. At the end of the text there is nothing to read: that succeeds and leaves \a value alone.
    bool readNumber(quint8 &value)
    {
        if (atEnd())
            return true;
        qsizetype end = position;
        while (end < text.size() && isStrictDecimalDigit(text[end]))
            ++end;
        const QStringView digits = text.sliced(position, end - position);
        position = std::min(end + 1, text.size());
        if (digits.isEmpty() || digits.size() > 2 || (digits.size() == 2 && digits[0] == u'0'))
            return false;
        value = quint8(digits.toUInt());
        return true;
    }

    // The release word runs to the next space (U+0020 only) or the end; the one space is skipped.
    quint64 readReleaseType()
    {
        qsizetype end = text.indexOf(u' ', position);
        if (end < 0)
            end = text.size();
        const QString word = text.sliced(position, end - position).toString().toLower();
        position = std::min(end + 1, text.size());
        if (word == u"alpha")
            return VeltoReleaseTypeAlpha;
        if (word == u"beta")
            return VeltoReleaseTypeBeta;
        if (word == u"fc")
            return VeltoReleaseTypeFinalCandidate;
        return VeltoReleaseTypeUnknown;
    }
};

std::optional<VeltoVersion> parseDisplayString(QStringView text)
{
    DisplayStringReader reader{text};
    if (!reader.atDigit())
        return std::nullopt;
    quint8 major = 0;
    quint8 minor = 0;
    quint8 revision = 0;
    if (!reader.readNumber(major))
        return std::nullopt;
    if (reader.atDigit() && !reader.readNumber(minor))
        return std::nullopt;
    if (reader.atDigit() && !reader.readNumber(revision))
        return std::nullopt;
    if (reader.atEnd())
        return VeltoVersion(major, minor, revision);

    const quint64 releaseType = reader.readReleaseType();
    quint8 increment = 0;
    // Text after the increment and its separator is ignored.
    if (releaseType == VeltoReleaseTypeUnknown || !reader.atDigit() || !reader.readNumber(increment))
        return std::nullopt;
    return VeltoVersion(major, minor, revision, releaseType, increment);
}

QString releaseSuffix(quint64 releaseType)
{
    switch (releaseType) {
    case VeltoReleaseTypeAlpha:
        return u" alpha"_s;
    case VeltoReleaseTypeBeta:
        return u" beta"_s;
    case VeltoReleaseTypeFinalCandidate:
        return u" fc"_s;
    default:
        return u" ???"_s;
    }
}

} // namespace

VeltoVersion::VeltoVersion() : d(new Private) {}

VeltoVersion::VeltoVersion(quint64 major, quint64 minor, quint64 revision)
    : VeltoVersion(major, minor, revision, VeltoReleaseTypeRelease, 1)
{
}

VeltoVersion::VeltoVersion(quint64 major, quint64 minor, quint64 revision, quint64 releaseType,
                           quint64 releaseIncrement)
    : d(new Private)
{
    d->majorVersion = quint8(major);
    d->minorVersion = quint8(minor);
    d->revision = quint8(revision);
    d->releaseType = releaseType;
    d->releaseIncrement = quint8(releaseIncrement);
}

VeltoVersion::VeltoVersion(const VeltoVersion &other) = default;
VeltoVersion &VeltoVersion::operator=(const VeltoVersion &other) = default;
VeltoVersion::~VeltoVersion() = default;

std::optional<VeltoVersion> VeltoVersion::initWithDisplayString(const QString &text, VeltoError *error)
{
    const QString trimmed = text.trimmed();
    std::optional<VeltoVersion> version = parseDisplayString(trimmed);
    if (!version) {
        setVersionError(error, InvalidDisplayString);
        return std::nullopt;
    }
    version->d->displayStringIvar = trimmed;
    return version;
}

std::optional<VeltoVersion> VeltoVersion::initWithBundleVersionString(const QString &text, VeltoError *error)
{
    if (text.size() != BundleVersionStringLength) {
        setVersionError(error, BundleStringWrongLength);
        return std::nullopt;
    }
    if (text[4] != u'.' || text[9] != u'.') {
        setVersionError(error, InvalidBundleString);
        return std::nullopt;
    }
    // Major, minor, revision, release type, increment.
    constexpr qsizetype fieldStarts[] = {0, 2, 5, 7, 10};
    quint64 fields[5] = {};
    for (int i = 0; i < 5; ++i) {
        const QChar tens = text[fieldStarts[i]];
        const QChar ones = text[fieldStarts[i] + 1];
        if (!isStrictDecimalDigit(tens) || !isStrictDecimalDigit(ones)) {
            setVersionError(error, InvalidBundleString);
            return std::nullopt;
        }
        fields[i] = quint64(tens.unicode() - u'0') * 10 + quint64(ones.unicode() - u'0');
    }
    VeltoVersion version(fields[0], fields[1], fields[2], VeltoReleaseTypeUnknown, fields[4]);
    // An unknown type such as 07 is accepted and read as unknown.
    (void)version.setReleaseTypeFromInteger(qint64(fields[3]));
    version.d->bundleVersionStringIvar = text;
    return version;
}

quint8 VeltoVersion::majorVersion() const
{
    return d->majorVersion;
}

quint8 VeltoVersion::minorVersion() const
{
    return d->minorVersion;
}

quint8 VeltoVersion::revision() const
{
    return d->revision;
}

quint64 VeltoVersion::releaseType() const
{
    return d->releaseType;
}

quint8 VeltoVersion::releaseIncrement() const
{
    return d->releaseIncrement;
}

void VeltoVersion::setMajorVersion(quint64 value)
{
    d->majorVersion = quint8(value);
}

void VeltoVersion::setMinorVersion(quint64 value)
{
    d->minorVersion = quint8(value);
}

void VeltoVersion::setRevision(quint64 value)
{
    d->revision = quint8(value);
}

void VeltoVersion::setReleaseType(quint64 value)
{
    d->releaseType = value;
}

void VeltoVersion::setReleaseIncrement(quint64 value)
{
    d->releaseIncrement = quint8(value);
}

bool VeltoVersion::setReleaseTypeFromInteger(qint64 value, VeltoError *)
{
    const bool known = value >= qint64(VeltoReleaseTypeAlpha) && value <= qint64(VeltoReleaseTypeRelease);
    d->releaseType = known ? quint64(value) : VeltoReleaseTypeUnknown;
    return known;
}

QString VeltoVersion::displayStringIvar() const
{
    return d->displayStringIvar;
}

QString VeltoVersion::bundleVersionStringIvar() const
{
    return d->bundleVersionStringIvar;
}

QString VeltoVersion::displayString() const
{
    if (d->displayStringIvar.isNull()) {
        QString text = u"%1.%2"_s.arg(d->majorVersion).arg(d->minorVersion);
        if (d->revision != 0)
            text += u".%1"_s.arg(d->revision);
        // Releases show no increment.
        if (d->releaseType != VeltoReleaseTypeRelease)
            text += releaseSuffix(d->releaseType) + u" %1"_s.arg(d->releaseIncrement);
        dataForCaching()->displayStringIvar = text;
    }
    return d->displayStringIvar;
}

QString VeltoVersion::bundleVersionString() const
{
    if (d->bundleVersionStringIvar.isNull()) {
        dataForCaching()->bundleVersionStringIvar =
            QString::asprintf("%02u%02u.%02u%02llu.%02u", d->majorVersion, d->minorVersion, d->revision,
                              static_cast<unsigned long long>(d->releaseType), d->releaseIncrement);
    }
    return d->bundleVersionStringIvar;
}

quint64 VeltoVersion::orderedInteger() const
{
    return quint64(d->majorVersion) << 32 | quint64(d->minorVersion) << 24 | quint64(d->revision) << 16
        | d->releaseType << 8 | d->releaseIncrement;
}

bool VeltoVersion::isEqualVersion(const VeltoVersion &other) const
{
    return orderedInteger() == other.orderedInteger();
}

int VeltoVersion::compareVersion(const VeltoVersion &other) const
{
    const quint64 mine = orderedInteger();
    const quint64 theirs = other.orderedInteger();
    return mine < theirs ? -1 : (mine > theirs ? 1 : 0);
}

QString VeltoVersion::description() const
{
    const QString text = displayString(); // first: caching it may detach
    const QString address = QString::asprintf("%p", static_cast<const void *>(d.constData()));
    return u"VeltoVersion<%1> - \"%2\""_s.arg(address, text);
}

// The caches are filled by const getters; detaching first keeps the text out of other copies.
VeltoVersion::Private *VeltoVersion::dataForCaching() const
{
    return const_cast<VeltoVersion *>(this)->d.data();
}

size_t qHash(const VeltoVersion &version, size_t seed) noexcept
{
    return qHash(version.orderedInteger(), seed);
}
