// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoVersion.h"

#include "VeltoException.h"

#include <QHashFunctions>

#include <algorithm>

using namespace Qt::StringLiterals;

class VeltoVersion::Private : public QSharedData
{
public:
    quint8 majorVersion = 0;
    quint8 minorVersion = 0;
    quint8 revision = 0;
    VeltoReleaseType releaseType = VeltoReleaseType::Unknown;
    quint8 releaseIncrement = 0;
    QString displayStringIvar;
    QString bundleVersionStringIvar;
};

namespace {

constexpr QLatin1StringView InvalidDisplayString{"invalid display version string"};
constexpr QLatin1StringView BundleStringWrongLength{"bundle version string is wrong length"};
constexpr QLatin1StringView InvalidBundleString{"invalid bundle version string"};
constexpr qsizetype BundleVersionStringLength = 12;
constexpr quint64 LargestNumber = 99; // two decimal digits in both textual forms

// A number for \a field, refused rather than cut down when it does not fit.
quint8 checkedNumber(quint64 value, const char *field)
{
    if (value > LargestNumber)
        throw VeltoException(VeltoInvalidArgumentException, u"VeltoVersion: %1 %2 is outside 0-%3"_s
                                                                 .arg(QLatin1StringView(field))
                                                                 .arg(value)
                                                                 .arg(LargestNumber));
    return quint8(value);
}

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
    VeltoReleaseType readReleaseType()
    {
        qsizetype end = text.indexOf(u' ', position);
        if (end < 0)
            end = text.size();
        const QString word = text.sliced(position, end - position).toString().toLower();
        position = std::min(end + 1, text.size());
        if (word == u"alpha")
            return VeltoReleaseType::Alpha;
        if (word == u"beta")
            return VeltoReleaseType::Beta;
        if (word == u"fc")
            return VeltoReleaseType::FinalCandidate;
        return VeltoReleaseType::Unknown;
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

    const VeltoReleaseType releaseType = reader.readReleaseType();
    quint8 increment = 0;
    // Text after the increment and its separator is ignored.
    if (releaseType == VeltoReleaseType::Unknown || !reader.atDigit() || !reader.readNumber(increment))
        return std::nullopt;
    return VeltoVersion(major, minor, revision, releaseType, increment);
}

QString releaseSuffix(VeltoReleaseType releaseType)
{
    switch (releaseType) {
    case VeltoReleaseType::Alpha:
        return u" alpha"_s;
    case VeltoReleaseType::Beta:
        return u" beta"_s;
    case VeltoReleaseType::FinalCandidate:
        return u" fc"_s;
    default:
        return u" ???"_s;
    }
}

} // namespace

VeltoVersion::VeltoVersion() : d(new Private) {}

VeltoVersion::VeltoVersion(quint64 major, quint64 minor, quint64 revision)
    : VeltoVersion(major, minor, revision, VeltoReleaseType::Release, 1)
{
}

VeltoVersion::VeltoVersion(quint64 major, quint64 minor, quint64 revision, VeltoReleaseType releaseType,
                           quint64 releaseIncrement)
    : d(new Private)
{
    d->majorVersion = checkedNumber(major, "major version");
    d->minorVersion = checkedNumber(minor, "minor version");
    d->revision = checkedNumber(revision, "revision");
    d->releaseType = releaseType;
    d->releaseIncrement = checkedNumber(releaseIncrement, "release increment");
}

VeltoVersion::VeltoVersion(const VeltoVersion &other)
    : d(other.d), m_producedTexts(other.m_producedTexts.load(std::memory_order_relaxed))
{
}

VeltoVersion &VeltoVersion::operator=(const VeltoVersion &other)
{
    d = other.d;
    m_producedTexts.store(other.m_producedTexts.load(std::memory_order_relaxed), std::memory_order_relaxed);
    return *this;
}

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
    VeltoVersion version(fields[0], fields[1], fields[2], VeltoReleaseType::Unknown, fields[4]);
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

VeltoReleaseType VeltoVersion::releaseType() const
{
    return d->releaseType;
}

quint8 VeltoVersion::releaseIncrement() const
{
    return d->releaseIncrement;
}

// A text given out before a field changes stays the version's text: keep it before changing the field.
void VeltoVersion::keepProducedTexts()
{
    const quint8 produced = m_producedTexts.load(std::memory_order_relaxed);
    if ((produced & DisplayText) && d->displayStringIvar.isNull())
        d->displayStringIvar = madeDisplayString();
    if ((produced & BundleText) && d->bundleVersionStringIvar.isNull())
        d->bundleVersionStringIvar = madeBundleVersionString();
}

void VeltoVersion::setMajorVersion(quint64 value)
{
    const quint8 checked = checkedNumber(value, "major version");
    keepProducedTexts();
    d->majorVersion = checked;
}

void VeltoVersion::setMinorVersion(quint64 value)
{
    const quint8 checked = checkedNumber(value, "minor version");
    keepProducedTexts();
    d->minorVersion = checked;
}

void VeltoVersion::setRevision(quint64 value)
{
    const quint8 checked = checkedNumber(value, "revision");
    keepProducedTexts();
    d->revision = checked;
}

void VeltoVersion::setReleaseType(VeltoReleaseType value)
{
    keepProducedTexts();
    d->releaseType = value;
}

void VeltoVersion::setReleaseIncrement(quint64 value)
{
    const quint8 checked = checkedNumber(value, "release increment");
    keepProducedTexts();
    d->releaseIncrement = checked;
}

bool VeltoVersion::setReleaseTypeFromInteger(qint64 value)
{
    const bool known = value >= qint64(VeltoReleaseType::Alpha) && value <= qint64(VeltoReleaseType::Release);
    setReleaseType(known ? VeltoReleaseType(value) : VeltoReleaseType::Unknown);
    return known;
}

// A text given out is the version's text from then on: while no setter has run since, the fields still
// make it; a setter keeps it in the shared data first.
QString VeltoVersion::displayStringIvar() const
{
    if (d->displayStringIvar.isNull() && (m_producedTexts.load(std::memory_order_relaxed) & DisplayText))
        return madeDisplayString();
    return d->displayStringIvar;
}

QString VeltoVersion::bundleVersionStringIvar() const
{
    if (d->bundleVersionStringIvar.isNull() && (m_producedTexts.load(std::memory_order_relaxed) & BundleText))
        return madeBundleVersionString();
    return d->bundleVersionStringIvar;
}

QString VeltoVersion::displayString() const
{
    if (!d->displayStringIvar.isNull())
        return d->displayStringIvar;
    m_producedTexts.fetch_or(DisplayText, std::memory_order_relaxed);
    return madeDisplayString();
}

QString VeltoVersion::bundleVersionString() const
{
    if (!d->bundleVersionStringIvar.isNull())
        return d->bundleVersionStringIvar;
    m_producedTexts.fetch_or(BundleText, std::memory_order_relaxed);
    return madeBundleVersionString();
}

QString VeltoVersion::madeDisplayString() const
{
    QString text = u"%1.%2"_s.arg(d->majorVersion).arg(d->minorVersion);
    if (d->revision != 0)
        text += u".%1"_s.arg(d->revision);
    // Releases show no increment.
    if (d->releaseType != VeltoReleaseType::Release)
        text += releaseSuffix(d->releaseType) + u" %1"_s.arg(d->releaseIncrement);
    return text;
}

QString VeltoVersion::madeBundleVersionString() const
{
    return QString::asprintf("%02u%02u.%02u%02u.%02u", d->majorVersion, d->minorVersion, d->revision,
                             unsigned(d->releaseType), d->releaseIncrement);
}

quint64 VeltoVersion::orderedInteger() const
{
    return quint64(d->majorVersion) << 32 | quint64(d->minorVersion) << 24 | quint64(d->revision) << 16
        | quint64(d->releaseType) << 8 | d->releaseIncrement;
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
    const QString text = displayString();
    const QString address = QString::asprintf("%p", static_cast<const void *>(d.constData()));
    return u"VeltoVersion<%1> - \"%2\""_s.arg(address, text);
}

size_t qHash(const VeltoVersion &version, size_t seed) noexcept
{
    return qHash(version.orderedInteger(), seed);
}
