// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFileSizeFormatter.h"

#include "VTNumberConversion_p.h"
#include "VeltoBundle.h"
#include "VeltoCore.h"
#include "VeltoLocalization.h"
#include "VeltoNumberFormatter.h"

#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

QString localizedFormat(const QString &key)
{
    return VeltoLocalizeInBundle(key, VeltoCoreBundle().get());
}

QString withCount(const QString &key, quint64 count)
{
    return localizedFormat(key).replace(u"%lu"_s, QString::number(count));
}

struct ReadUnit
{
    QLatin1StringView key;
    quint64 multiplier;
};

constexpr std::array<ReadUnit, 4> ReadUnits{{{"_%lu bytes"_L1, 1},
                                             {"_%lu K"_L1, 1'000},
                                             {"_%lu MB"_L1, 1'000'000},
                                             {"_%lu GB"_L1, 1'000'000'000}}};

// The number of the platform's integerValue: white space, an optional sign, then digits.
qint64 leadingInteger(QStringView s)
{
    qsizetype i = 0;
    while (i < s.size() && s.at(i).isSpace())
        ++i;
    bool negative = false;
    if (i < s.size() && (s.at(i) == u'-' || s.at(i) == u'+'))
        negative = s.at(i++) == u'-';
    qint64 value = 0;
    for (; i < s.size() && s.at(i) >= u'0' && s.at(i) <= u'9'; ++i) {
        const int digit = s.at(i).unicode() - u'0';
        if (value > (std::numeric_limits<qint64>::max() - digit) / 10)
            return negative ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
        value = value * 10 + digit;
    }
    return negative ? -value : value;
}

} // namespace

VeltoFileSizeFormatter VeltoFileSizeFormatter::fileSizeFormatter()
{
    return VeltoFileSizeFormatter();
}

QString VeltoFileSizeFormatter::localizedStringForFileSize(quint64 size)
{
    static constexpr std::array<QLatin1StringView, 6> Symbols{"KB"_L1, "MB"_L1, "GB"_L1, "TB"_L1, "PB"_L1, "EB"_L1};
    if (size > 0 && size < 1'000)
        size = 1'000;
    std::size_t unit = 0;
    double base = 1'000;
    while (unit + 1 < Symbols.size() && double(size) >= base * 1'000) {
        ++unit;
        base *= 1'000;
    }
    auto decimalsOf = [](std::size_t u) { return u == 0 ? 0 : (u == 1 ? 1 : 2); };
    auto rounded = [&] {
        const double scale = std::pow(10.0, decimalsOf(unit));
        return std::nearbyint(double(size) / base * scale) / scale; // to nearest, ties to even
    };
    double value = rounded();
    if (value >= 1'000 && unit + 1 < Symbols.size()) {
        ++unit;
        base *= 1'000;
        value = rounded();
    }
    VeltoNumberFormatter number;
    number.setNumberStyle(VeltoNumberFormatter::NumberStyle::DecimalStyle);
    number.setMaximumFractionDigits(decimalsOf(unit));
    return u"%1 %2"_s.arg(number.stringFromNumber(value), Symbols[unit]);
}

QString VeltoFileSizeFormatter::localizedStringForByteCount(quint64 count)
{
    if (count == 0)
        return withCount(u"_%lu K"_s, 0);
    if (count <= 1'024)
        return withCount(u"_%lu K"_s, 1);
    if (count <= 1'048'575)
        return withCount(u"_%lu K"_s, count >> 10);
    if (count <= 1'073'741'823)
        return withCount(u"_%lu MB"_s, count >> 20);
    return withCount(u"_%lu GB"_s, count >> 30);
}

quint64 VeltoFileSizeFormatter::fileSizeFromLocalizedString(const QString &string)
{
    const qint64 number = leadingInteger(string);
    if (number <= 0)
        return 0;
    const quint64 multiplier = unitForString(string);
    if (quint64(number) > std::numeric_limits<quint64>::max() / multiplier)
        return std::numeric_limits<quint64>::max();
    return quint64(number) * multiplier;
}

quint64 VeltoFileSizeFormatter::unitForString(const QString &string, VeltoRange *unitRange)
{
    for (const ReadUnit &unit : ReadUnits) {
        // The format is "%lu" and a space before the unit: four characters to drop.
        const QString unitText = localizedFormat(unit.key).mid(4);
        if (unitText.isEmpty())
            continue;
        const qsizetype at = string.indexOf(unitText, 0, Qt::CaseInsensitive);
        if (at >= 0) {
            if (unitRange)
                *unitRange = {quint64(at), quint64(string.size() - at)};
            return unit.multiplier;
        }
    }
    if (unitRange)
        *unitRange = {quint64(string.size()), 0};
    return 1;
}

quint64 VeltoFileSizeFormatter::steppedFileSize(quint64 value, StepDirection direction)
{
    const quint64 step = value < 1'000 ? 1 : value < 1'000'000 ? 1'000 : value < 1'000'000'000 ? 1'000'000
                                                                                              : 1'000'000'000;
    if (direction == StepDirection::Up)
        return value > std::numeric_limits<quint64>::max() - step ? value : value + step;
    return value < step ? 0 : value - step;
}

QString VeltoFileSizeFormatter::stringForObjectValue(const QVariant &value) const
{
    if (!VTNumberConversion::isNumber(value))
        return {};
    quint64 size = 0;
    if (VTNumberConversion::isUnsigned(value))
        size = value.toULongLong();
    else if (VTNumberConversion::isFloating(value))
        size = value.toDouble() > 0 ? VTNumberConversion::truncatedUnsigned(value.toDouble()) : 0;
    else
        size = quint64(qMax<qint64>(value.toLongLong(), 0));
    return localizedStringForFileSize(size);
}

bool VeltoFileSizeFormatter::getObjectValue(QVariant *value, const QString &string, QString *) const
{
    if (value)
        *value = QVariant(fileSizeFromLocalizedString(string));
    return true;
}
