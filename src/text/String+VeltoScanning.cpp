// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoScanning.h"

#include "String+VeltoSearching.h"
#include "VTTextUtil_p.h"
#include "VeltoCharacterSet.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

namespace velto {

namespace {

// Below this length a string is scanned whole; from it on only a short stretch from the index is.
constexpr qsizetype WindowedFromLength = 51;
constexpr qsizetype HexWindow = 11;
constexpr qsizetype IntWindow = 22;
constexpr qsizetype FloatWindow = 47;

enum class Grammar { Hex, Int, Float };

// The parts of one scanned number, as views into the scanned text.
struct Lexed
{
    qsizetype consumed = 0; // units from the start, leading whitespace included; 0 when nothing scanned
    bool negative = false;
    bool hasPoint = false;
    bool negativeExponent = false;
    QStringView integer;  // digits before the point (hex digits for Hex)
    QStringView fraction; // digits after the point
    QStringView exponent; // digits of the exponent
};

bool isDigit(QChar c) noexcept
{
    return c >= u'0' && c <= u'9';
}

bool isHexDigit(QChar c) noexcept
{
    return isDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

bool isSign(QStringView s, qsizetype i) noexcept
{
    return i < s.size() && (s[i] == u'+' || s[i] == u'-');
}

qsizetype endOfDigits(QStringView s, qsizetype i, bool hex) noexcept
{
    while (i < s.size() && (hex ? isHexDigit(s[i]) : isDigit(s[i])))
        ++i;
    return i;
}

Lexed lex(QStringView s, Grammar grammar)
{
    Lexed n;
    const VeltoCharacterSet &whitespace = VeltoCharacterSet::whitespaceAndNewlineCharacterSet();
    qsizetype i = 0;
    while (i < s.size() && whitespace.contains(s[i].unicode()))
        ++i;

    if (grammar == Grammar::Hex) {
        if (i + 2 < s.size() && s[i] == u'0' && (s[i + 1] == u'x' || s[i + 1] == u'X') && isHexDigit(s[i + 2]))
            i += 2;
        const qsizetype end = endOfDigits(s, i, true);
        if (end == i)
            return {};
        n.integer = s.sliced(i, end - i);
        n.consumed = end;
        return n;
    }

    if (isSign(s, i))
        n.negative = s[i++] == u'-';
    const qsizetype integerEnd = endOfDigits(s, i, false);
    n.integer = s.sliced(i, integerEnd - i);
    i = integerEnd;
    if (grammar == Grammar::Int) {
        if (n.integer.isEmpty())
            return {};
        n.consumed = i;
        return n;
    }

    if (i < s.size() && s[i] == u'.') {
        const qsizetype fractionEnd = endOfDigits(s, i + 1, false);
        if (n.integer.isEmpty() && fractionEnd == i + 1)
            return {};
        n.hasPoint = true;
        n.fraction = s.sliced(i + 1, fractionEnd - i - 1);
        i = fractionEnd;
    } else if (n.integer.isEmpty()) {
        return {};
    }
    if (i < s.size() && (s[i] == u'e' || s[i] == u'E')) {
        qsizetype j = i + 1;
        bool negativeExponent = false;
        if (isSign(s, j))
            negativeExponent = s[j++] == u'-';
        const qsizetype exponentEnd = endOfDigits(s, j, false);
        if (exponentEnd > j) {
            n.exponent = s.sliced(j, exponentEnd - j);
            n.negativeExponent = negativeExponent;
            i = exponentEnd;
        }
    }
    n.consumed = i;
    return n;
}

/// The value of \a digits in \a base, or \a limit (with \a overflow set) when it would pass \a limit.
quint64 saturatingValue(QStringView digits, unsigned base, quint64 limit, bool *overflow = nullptr)
{
    quint64 value = 0;
    for (QChar c : digits) {
        const unsigned unit = c.unicode();
        const unsigned digit = isDigit(c) ? unit - u'0' : (unit | 0x20) - u'a' + 10;
        if (value > (limit - digit) / base) {
            if (overflow)
                *overflow = true;
            return limit;
        }
        value = value * base + digit;
    }
    return value;
}

qint32 toInt32(const Lexed &n)
{
    constexpr quint64 maxMagnitude = quint64(std::numeric_limits<qint32>::max());
    const quint64 magnitude = saturatingValue(n.integer, 10, n.negative ? maxMagnitude + 1 : maxMagnitude);
    return n.negative ? qint32(-qint64(magnitude)) : qint32(magnitude);
}

double toDouble(const Lexed &n)
{
    std::string text;
    text.reserve(size_t(n.integer.size() + n.fraction.size() + n.exponent.size() + 5));
    if (n.negative)
        text += '-';
    text += n.integer.isEmpty() ? std::string("0") : n.integer.toLatin1().toStdString();
    if (!n.fraction.isEmpty())
        text += '.' + n.fraction.toLatin1().toStdString();
    if (!n.exponent.isEmpty())
        text += (n.negativeExponent ? "e-" : "e") + n.exponent.toLatin1().toStdString();

    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    Q_UNUSED(end);
    if (error == std::errc::result_out_of_range) {
        // Too large or too small for a double; the decimal magnitude tells which.
        const qint64 exponent = qint64(saturatingValue(n.exponent, 10, 1'000'000'000));
        const auto nonZero = [](QChar c) { return c != u'0'; };
        const auto firstSignificant = std::find_if(n.integer.begin(), n.integer.end(), nonZero);
        qint64 magnitude = n.negativeExponent ? -exponent : exponent;
        if (firstSignificant != n.integer.end())
            magnitude += n.integer.end() - firstSignificant;
        else
            magnitude -= std::find_if(n.fraction.begin(), n.fraction.end(), nonZero) - n.fraction.begin();
        value = magnitude > 0 ? std::numeric_limits<double>::max() : 0.0;
        if (n.negative)
            value = -value;
    }
    return value;
}

template <typename T, typename Convert>
T scanAtIndex(QStringView string, quint64 index, VeltoRange *effectiveRange, Grammar grammar, qsizetype window,
              Convert convert)
{
    if (effectiveRange)
        *effectiveRange = {index, 0};
    if (index >= quint64(string.size()))
        return T(0);
    QStringView rest = string.sliced(qsizetype(index));
    if (string.size() >= WindowedFromLength)
        rest = rest.first(std::min(window, rest.size()));
    const Lexed n = lex(rest, grammar);
    if (n.consumed == 0)
        return T(0);
    if (effectiveRange)
        effectiveRange->length = quint64(n.consumed);
    return convert(n);
}

QStringView trimmed(QStringView s)
{
    const VeltoRange kept = VTTrimmedRange(s, VeltoCharacterSet::allWhitespaceCharacterSet(), {0, quint64(s.size())});
    return s.sliced(qsizetype(kept.location), qsizetype(kept.length));
}

// The number of a currency text with its symbol and thousands commas taken out; "-$1,234.5" gives "-1234.5".
QString withoutCurrencyNotation(QStringView text)
{
    const auto isCurrency = [](QChar c) { return c.category() == QChar::Symbol_Currency; };
    const qsizetype signLength = isSign(text, 0) ? 1 : 0;
    QString number;
    if (text.size() > signLength && isCurrency(text[signLength]))
        number = text.first(signLength).toString() + trimmed(text.sliced(signLength + 1)).toString();
    else if (!text.isEmpty() && isCurrency(text.back()))
        number = trimmed(text.chopped(1)).toString();
    else
        number = text.toString();

    QString result;
    result.reserve(number.size());
    for (qsizetype i = 0; i < number.size(); ++i) {
        const bool groups = number[i] == u',' && i > 0 && isDigit(number[i - 1]) && i + 3 < number.size()
            && isDigit(number[i + 1]) && isDigit(number[i + 2]) && isDigit(number[i + 3])
            && (i + 4 == number.size() || !isDigit(number[i + 4]));
        if (!groups)
            result += number[i];
    }
    return result;
}

} // namespace

quint32 hexIntValue(QStringView string)
{
    return hexIntValueAtIndex(string, 0);
}

quint32 hexIntValueAtIndex(QStringView string, quint64 index, VeltoRange *effectiveRange)
{
    return scanAtIndex<quint32>(string, index, effectiveRange, Grammar::Hex, HexWindow, [](const Lexed &n) {
        return quint32(saturatingValue(n.integer, 16, std::numeric_limits<quint32>::max()));
    });
}

qint32 intValueAtIndex(QStringView string, quint64 index, VeltoRange *effectiveRange)
{
    return scanAtIndex<qint32>(string, index, effectiveRange, Grammar::Int, IntWindow, toInt32);
}

double floatValueAtIndex(QStringView string, quint64 index, VeltoRange *effectiveRange)
{
    return scanAtIndex<double>(string, index, effectiveRange, Grammar::Float, FloatWindow, toDouble);
}

VeltoParsedNumberKind parseInt(QStringView string, qint64 *intValue, double *doubleValue, VeltoRange range,
                               bool currency)
{
    if (!isRangeInsideVelto(range, quint64(string.size())))
        return VeltoParsedNumberKind::None;
    QStringView text = trimmed(string.sliced(qsizetype(range.location), qsizetype(range.length)));
    QString withoutCurrency;
    if (currency) {
        withoutCurrency = withoutCurrencyNotation(text);
        text = withoutCurrency;
    }
    const Lexed n = lex(text, Grammar::Float);
    if (n.consumed == 0 || n.consumed != text.size())
        return VeltoParsedNumberKind::None;

    if (!n.hasPoint && n.exponent.isEmpty()) {
        constexpr quint64 maxMagnitude = quint64(std::numeric_limits<qint64>::max());
        bool overflow = false;
        const quint64 magnitude =
            saturatingValue(n.integer, 10, n.negative ? maxMagnitude + 1 : maxMagnitude, &overflow);
        if (!overflow) {
            const qint64 value = n.negative ? qint64(0 - magnitude) : qint64(magnitude);
            if (intValue)
                *intValue = value;
            if (doubleValue)
                *doubleValue = double(value);
            return VeltoParsedNumberKind::Integer;
        }
    }
    if (doubleValue)
        *doubleValue = toDouble(n);
    return VeltoParsedNumberKind::Double;
}

QString stringWithVeltoInt(qint64 value)
{
    return QString::number(value);
}

} // namespace velto
