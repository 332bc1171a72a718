// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoNumberFormatter.h"

#include "VTDecimalTrimming_p.h"
#include "VTNumberConversion_p.h"

#include <QByteArray>

#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;
using VTNumberConversion::isFloating;
using VTNumberConversion::isNumber;
using VTNumberConversion::isUnsigned;

class VeltoNumberFormatter::Private : public QSharedData
{
public:
    NumberStyle style = NumberStyle::NoStyle;
    QLocale locale = VeltoFormatter::currentLocaleVelto();
    int minimumFractionDigits = 0;
    int maximumFractionDigits = 0;
    QString positiveSuffix;
    QString negativeSuffix;
    QString zeroSymbol;
    quint64 maximumDecimalDigits = 0;

    [[nodiscard]] QString baseText(const QVariant &number) const;
    [[nodiscard]] std::optional<QVariant> parse(const QString &text) const;
    [[nodiscard]] QString localDigits(QByteArrayView asciiDigits) const;
    [[nodiscard]] QString localInteger(const QByteArray &asciiDigits) const;
};

namespace {

constexpr auto StyleKey = "numberStyle"_L1;
constexpr auto LocaleKey = "locale"_L1;
constexpr auto MinimumFractionKey = "minimumFractionDigits"_L1;
constexpr auto MaximumFractionKey = "maximumFractionDigits"_L1;
constexpr auto PositiveSuffixKey = "positiveSuffix"_L1;
constexpr auto NegativeSuffixKey = "negativeSuffix"_L1;
constexpr auto ZeroSymbolKey = "zeroSymbol"_L1;

// A number as unsigned decimal digits and a sign: exact for integers, the shortest round-tripping
// form for floating values (so 0.1 is "0.1", not the binary value's 55 digits).
struct Decimal
{
    bool negative = false;
    QByteArray integer;
    QByteArray fraction;
};

Decimal decimalOf(const QVariant &number)
{
    Decimal d;
    QByteArray text;
    if (isFloating(number)) {
        const double value = number.toDouble();
        d.negative = std::signbit(value);
        text = QLocale::c().toString(std::fabs(value), 'f', QLocale::FloatingPointShortest).toLatin1();
    } else if (isUnsigned(number)) {
        text = QByteArray::number(number.toULongLong());
    } else {
        const qint64 value = number.toLongLong();
        d.negative = value < 0;
        // The magnitude as unsigned, so that the smallest qint64 has one.
        text = QByteArray::number(d.negative ? 0 - quint64(value) : quint64(value));
    }
    const qsizetype point = text.indexOf('.');
    d.integer = point < 0 ? text : text.first(point);
    d.fraction = point < 0 ? QByteArray() : text.sliced(point + 1);
    return d;
}

// Rounds to `digits` fraction digits, half to even.
void roundHalfEven(Decimal &d, int digits)
{
    if (d.fraction.size() <= digits)
        return;
    const char next = d.fraction.at(digits);
    bool restNonZero = false;
    for (qsizetype i = digits + 1; i < d.fraction.size(); ++i)
        restNonZero = restNonZero || d.fraction.at(i) != '0';
    d.fraction.truncate(digits);
    const char last = digits > 0 ? d.fraction.back() : d.integer.back();
    const bool up = next > '5' || (next == '5' && (restNonZero || (last - '0') % 2 == 1));
    if (!up)
        return;
    for (qsizetype i = d.fraction.size() - 1; i >= 0; --i) {
        if (d.fraction[i] != '9') {
            ++d.fraction[i];
            return;
        }
        d.fraction[i] = '0';
    }
    for (qsizetype i = d.integer.size() - 1; i >= 0; --i) {
        if (d.integer[i] != '9') {
            ++d.integer[i];
            return;
        }
        d.integer[i] = '0';
    }
    d.integer.prepend('1');
}

bool allZero(const Decimal &d)
{
    auto zeros = [](const QByteArray &digits) { return digits.count('0') == digits.size(); };
    return zeros(d.integer) && zeros(d.fraction);
}

bool isAsciiDigit(char32_t c)
{
    return c >= U'0' && c <= U'9';
}

} // namespace

QString VeltoNumberFormatter::Private::localDigits(QByteArrayView asciiDigits) const
{
    const QList<uint> zero = locale.zeroDigit().toUcs4();
    if (zero.size() != 1 || zero.front() == U'0')
        return QString::fromLatin1(asciiDigits);
    QString text;
    text.reserve(asciiDigits.size() * 2);
    for (const char c : asciiDigits)
        text += QChar::fromUcs4(char32_t(zero.front() + uint(c - '0')));
    return text;
}

QString VeltoNumberFormatter::Private::localInteger(const QByteArray &asciiDigits) const
{
    const bool grouped = style == NumberStyle::DecimalStyle;
    bool fits = false;
    const qulonglong value = asciiDigits.toULongLong(&fits);
    if (fits) {
        // QLocale knows the locale's grouping (three digits, or the Indian 2-2-3) and digits.
        QLocale l = locale;
        l.setNumberOptions(grouped ? l.numberOptions() & ~QLocale::OmitGroupSeparator
                                   : l.numberOptions() | QLocale::OmitGroupSeparator);
        return l.toString(value);
    }
    // Beyond 64 bits: groups of three.
    if (!grouped)
        return localDigits(asciiDigits);
    QString text;
    const qsizetype head = asciiDigits.size() % 3 == 0 ? 3 : asciiDigits.size() % 3;
    text += localDigits(QByteArrayView(asciiDigits).first(head));
    for (qsizetype i = head; i < asciiDigits.size(); i += 3)
        text += locale.groupSeparator() + localDigits(QByteArrayView(asciiDigits).sliced(i, 3));
    return text;
}

QString VeltoNumberFormatter::Private::baseText(const QVariant &number) const
{
    if (!isNumber(number))
        return {};
    if (isFloating(number)) {
        const double value = number.toDouble();
        if (std::isnan(value))
            return u"NaN"_s;
        if (std::isinf(value))
            return value < 0 ? locale.negativeSign() + u"∞"_s + negativeSuffix : u"∞"_s + positiveSuffix;
    }
    Decimal d = decimalOf(number);
    if (!zeroSymbol.isNull() && allZero(d))
        return zeroSymbol;
    roundHalfEven(d, maximumFractionDigits);
    while (d.fraction.size() > minimumFractionDigits && d.fraction.endsWith('0'))
        d.fraction.chop(1);
    if (d.fraction.size() < minimumFractionDigits)
        d.fraction.append(QByteArray(minimumFractionDigits - d.fraction.size(), '0'));
    // A value that rounds to zero is shown without a sign ("0", not "-0").
    const bool negative = d.negative && !allZero(d);
    QString text = localInteger(d.integer);
    if (!d.fraction.isEmpty())
        text += locale.decimalPoint() + localDigits(d.fraction);
    return negative ? locale.negativeSign() + text + negativeSuffix : text + positiveSuffix;
}

std::optional<QVariant> VeltoNumberFormatter::Private::parse(const QString &text) const
{
    if (!zeroSymbol.isEmpty() && text == zeroSymbol)
        return QVariant(qint64(0));
    QStringView body(text);
    bool negative = false;
    for (const QString &minus : {locale.negativeSign(), u"-"_s}) {
        if (!minus.isEmpty() && body.startsWith(minus)) {
            negative = true;
            body = body.sliced(minus.size());
            break;
        }
    }
    const QString &suffix = negative ? negativeSuffix : positiveSuffix;
    if (!suffix.isEmpty()) {
        if (!body.endsWith(suffix))
            return std::nullopt;
        body.chop(suffix.size());
    }

    // Rebuild the number in ASCII: digits of the locale or ASCII, grouping only between integer digits.
    const uint zero = locale.zeroDigit().toUcs4().value(0, U'0');
    const QString group = locale.groupSeparator();
    const QString point = locale.decimalPoint();
    const bool groupingAllowed = style == NumberStyle::DecimalStyle && !group.isEmpty();
    QByteArray ascii = negative ? "-" : "";
    bool seenPoint = false;
    bool digitBefore = false;
    qsizetype digitCount = 0;
    qsizetype i = 0;
    while (i < body.size()) {
        if (!seenPoint && body.sliced(i).startsWith(point)) {
            seenPoint = true;
            ascii += '.';
            i += point.size();
            digitBefore = false;
            continue;
        }
        if (groupingAllowed && !seenPoint && digitBefore && body.sliced(i).startsWith(group)) {
            i += group.size();
            digitBefore = false; // a digit must follow
            continue;
        }
        const char32_t c = QChar::isHighSurrogate(body.at(i).unicode()) && i + 1 < body.size()
                               ? QChar::surrogateToUcs4(body.at(i), body.at(i + 1))
                               : char32_t(body.at(i).unicode());
        int digit = -1;
        if (isAsciiDigit(c))
            digit = int(c - U'0');
        else if (c >= zero && c <= zero + 9)
            digit = int(c - zero);
        if (digit < 0)
            return std::nullopt;
        ascii += char('0' + digit);
        ++digitCount;
        digitBefore = true;
        i += QChar::requiresSurrogates(c) ? 2 : 1;
    }
    // Nothing but a separator, or a grouping separator left dangling ("1.").
    if (digitCount == 0 || (!seenPoint && !digitBefore))
        return std::nullopt;
    bool ok = false;
    if (!seenPoint) {
        const qint64 whole = ascii.toLongLong(&ok);
        if (ok)
            return QVariant(whole);
    }
    const double real = ascii.toDouble(&ok);
    return ok ? std::optional<QVariant>(QVariant(real)) : std::nullopt;
}

VeltoNumberFormatter::VeltoNumberFormatter() : d(new Private) {}

VeltoNumberFormatter::VeltoNumberFormatter(const QString &unitName, bool allowDecimals) : d(new Private)
{
    setNumberStyle(allowDecimals ? NumberStyle::DecimalStyle : NumberStyle::NoStyle);
    if (!unitName.isEmpty())
        setSuffixesForVeltoUnitName(unitName);
}

VeltoNumberFormatter::VeltoNumberFormatter(const VeltoNumberFormatter &other) = default;
VeltoNumberFormatter::VeltoNumberFormatter(VeltoNumberFormatter &&other) noexcept = default;
VeltoNumberFormatter &VeltoNumberFormatter::operator=(const VeltoNumberFormatter &other) = default;
VeltoNumberFormatter &VeltoNumberFormatter::operator=(VeltoNumberFormatter &&other) noexcept = default;
VeltoNumberFormatter::~VeltoNumberFormatter() = default;

VeltoNumberFormatter VeltoNumberFormatter::initWithCoder(const QVariantMap &archive)
{
    VeltoNumberFormatter f;
    auto integer = [&](QLatin1StringView key) -> std::optional<qint64> {
        const QVariant v = archive.value(key);
        if (!isNumber(v) || isFloating(v))
            return std::nullopt;
        return v.toLongLong();
    };
    auto text = [&](QLatin1StringView key) -> std::optional<QString> {
        const QVariant v = archive.value(key);
        return v.typeId() == QMetaType::QString ? std::optional<QString>(v.toString()) : std::nullopt;
    };
    if (const auto style = integer(StyleKey); style && (*style == 0 || *style == 1))
        f.setNumberStyle(*style == 1 ? NumberStyle::DecimalStyle : NumberStyle::NoStyle);
    if (const auto name = text(LocaleKey))
        f.setLocale(QLocale(*name));
    if (const auto digits = integer(MaximumFractionKey); digits && *digits >= 0 && *digits <= 340)
        f.setMaximumFractionDigits(int(*digits));
    if (const auto digits = integer(MinimumFractionKey); digits && *digits >= 0 && *digits <= 340)
        f.setMinimumFractionDigits(int(*digits));
    if (const auto suffix = text(PositiveSuffixKey))
        f.setPositiveSuffix(*suffix);
    if (const auto suffix = text(NegativeSuffixKey))
        f.setNegativeSuffix(*suffix);
    if (const auto symbol = text(ZeroSymbolKey))
        f.setZeroSymbol(*symbol);
    if (const auto digits = integer(DigitsArchiveKey); digits && *digits >= 0)
        f.setMaximumDecimalDigitsVelto(quint64(*digits));
    return f;
}

void VeltoNumberFormatter::encodeWithCoder(QVariantMap &archive) const
{
    archive.insert(StyleKey, qint64(d->style == NumberStyle::DecimalStyle ? 1 : 0));
    archive.insert(LocaleKey, d->locale.name());
    archive.insert(MinimumFractionKey, qint64(d->minimumFractionDigits));
    archive.insert(MaximumFractionKey, qint64(d->maximumFractionDigits));
    // Null texts (not set) are left out, so that they read back as not set.
    if (!d->positiveSuffix.isNull())
        archive.insert(PositiveSuffixKey, d->positiveSuffix);
    if (!d->negativeSuffix.isNull())
        archive.insert(NegativeSuffixKey, d->negativeSuffix);
    if (!d->zeroSymbol.isNull())
        archive.insert(ZeroSymbolKey, d->zeroSymbol);
    archive.insert(DigitsArchiveKey, qint64(d->maximumDecimalDigits));
}

VeltoNumberFormatter::NumberStyle VeltoNumberFormatter::numberStyle() const
{
    return d->style;
}

void VeltoNumberFormatter::setNumberStyle(NumberStyle style)
{
    d->style = style;
    d->minimumFractionDigits = 0;
    d->maximumFractionDigits = style == NumberStyle::DecimalStyle ? 3 : 0;
}

QLocale VeltoNumberFormatter::locale() const
{
    return d->locale;
}

void VeltoNumberFormatter::setLocale(const QLocale &locale)
{
    d->locale = locale;
}

int VeltoNumberFormatter::minimumFractionDigits() const
{
    return d->minimumFractionDigits;
}

void VeltoNumberFormatter::setMinimumFractionDigits(int digits)
{
    d->minimumFractionDigits = qMax(digits, 0);
    d->maximumFractionDigits = qMax(d->maximumFractionDigits, d->minimumFractionDigits);
}

int VeltoNumberFormatter::maximumFractionDigits() const
{
    return d->maximumFractionDigits;
}

void VeltoNumberFormatter::setMaximumFractionDigits(int digits)
{
    d->maximumFractionDigits = qMax(digits, 0);
    d->minimumFractionDigits = qMin(d->minimumFractionDigits, d->maximumFractionDigits);
}

QString VeltoNumberFormatter::positiveSuffix() const
{
    return d->positiveSuffix;
}

void VeltoNumberFormatter::setPositiveSuffix(const QString &suffix)
{
    d->positiveSuffix = suffix;
}

QString VeltoNumberFormatter::negativeSuffix() const
{
    return d->negativeSuffix;
}

void VeltoNumberFormatter::setNegativeSuffix(const QString &suffix)
{
    d->negativeSuffix = suffix;
}

QString VeltoNumberFormatter::zeroSymbol() const
{
    return d->zeroSymbol;
}

void VeltoNumberFormatter::setZeroSymbol(const QString &symbol)
{
    d->zeroSymbol = symbol;
}

quint64 VeltoNumberFormatter::maximumDecimalDigitsVelto() const
{
    return d->maximumDecimalDigits;
}

void VeltoNumberFormatter::setMaximumDecimalDigitsVelto(quint64 digits)
{
    d->maximumDecimalDigits = digits;
}

void VeltoNumberFormatter::setSuffixesForVeltoUnitName(const QString &unitName)
{
    if (unitName.isEmpty()) {
        d->positiveSuffix = QString();
        d->negativeSuffix = QString();
        d->zeroSymbol = u"0"_s;
        return;
    }
    d->positiveSuffix = u' ' + unitName;
    d->negativeSuffix = d->positiveSuffix;
    d->zeroSymbol = u"0 "_s + unitName;
}

QString VeltoNumberFormatter::stringFromNumber(const QVariant &number) const
{
    return stringForObjectValue(number);
}

QString VeltoNumberFormatter::stringWithoutVeltoUnitNameFromNumber(const QVariant &number) const
{
    QString text = stringFromNumber(number);
    if (d->zeroSymbol.startsWith(u"0 "_s)) {
        const QStringView unitSuffix = QStringView(d->zeroSymbol).sliced(1);
        if (text.endsWith(unitSuffix))
            text.chop(unitSuffix.size());
    }
    return text;
}

QString VeltoNumberFormatter::stringForObjectValue(const QVariant &value) const
{
    const QString text = d->baseText(value);
    if (text.isNull())
        return text;
    return VTDecimalTrimming::trimmedText(text, d->locale.decimalPoint(), d->maximumDecimalDigits);
}

bool VeltoNumberFormatter::getObjectValue(QVariant *value, const QString &string, QString *errorDescription) const
{
    std::optional<QVariant> read = d->parse(string);
    if (!read) {
        if (errorDescription)
            *errorDescription = u"Invalid number"_s;
        // Typed without the space before the unit ("12cm"): try again with the suffix as it is set.
        for (const QString &suffix : {d->positiveSuffix, d->negativeSuffix}) {
            if (!suffix.startsWith(u' ') || string.endsWith(suffix) || !string.endsWith(QStringView(suffix).sliced(1)))
                continue;
            read = d->parse(string.chopped(suffix.size() - 1) + suffix);
            if (read)
                break;
        }
        if (!read)
            return false;
        if (errorDescription)
            *errorDescription = QString();
    }
    if (value)
        *value = *read;
    return true;
}

QString VeltoNumberFormatter::localizedDecimalSeparatorVelto()
{
    static const QString separator = [] {
        const QString s = VeltoNumberFormatter().locale().decimalPoint();
        return s == u"."_s ? QString() : s;
    }();
    return separator;
}
