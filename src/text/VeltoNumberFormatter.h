// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoNumberFormatter.h
 * \brief VeltoNumberFormatter: locale-aware number text with an optional unit name ("2.5 cm", "0 cm")
 * and a display limit on decimals that trims by the text's own rules.
 *
 * \code
 * VeltoNumberFormatter width(u"cm"_s, true);      // decimal style, suffix " cm", zero shown as "0 cm"
 * width.setMaximumDecimalDigitsVelto(2);
 * width.stringForObjectValue(1.237);              // "1.24 cm"
 * QVariant value;
 * if (width.getObjectValue(&value, u"12cm"_s))    // typed without the space: still 12
 *     ...
 * \endcode
 *
 * The formatting is our own on QLocale (no ICU): the locale's digits, minus sign, decimal and grouping
 * separators. Numbers are rounded half-to-even on their shortest decimal form (0.125 → "0.12" with two
 * fraction digits). For locale-neutral text use QString::number instead.
 *
 * A VeltoNumberFormatter is a value: copies share their state until one of them changes. One instance
 * may be read from several threads; changing it while another thread formats is not safe.
 */

#include "VeltoFormatter.h"
#include "veltocore_export.h"

#include <QSharedDataPointer>
#include <QVariantMap>

class VELTOCORE_EXPORT VeltoNumberFormatter : public VeltoFormatter
{
public:
    /// NumberStyle: NoStyle writes whole numbers without grouping (0 fraction digits); DecimalStyle
    /// groups the integer part and shows 0 to 3 fraction digits.
    enum class NumberStyle { NoStyle, DecimalStyle };

    /// Archive key of maximumDecimalDigitsVelto().
    static constexpr QLatin1StringView DigitsArchiveKey{"veltoDigits"};

    /// A NoStyle formatter in currentLocaleVelto(), without suffixes, zero symbol or decimal limit.
    VeltoNumberFormatter();
    /**
     * initWithVeltoUnitName: DecimalStyle when \a allowDecimals, else NoStyle; the locale is
     * currentLocaleVelto(); a non-empty \a unitName is applied with setSuffixesForVeltoUnitName().
     */
    VeltoNumberFormatter(const QString &unitName, bool allowDecimals);
    /// Copies every setting, maximumDecimalDigitsVelto() included.
    VeltoNumberFormatter(const VeltoNumberFormatter &other);
    VeltoNumberFormatter(VeltoNumberFormatter &&other) noexcept;
    VeltoNumberFormatter &operator=(const VeltoNumberFormatter &other);
    VeltoNumberFormatter &operator=(VeltoNumberFormatter &&other) noexcept;
    ~VeltoNumberFormatter() override;

    /**
     * initWithCoder: a formatter made with the default constructor, then given every setting found in
     * \a archive (as encodeWithCoder() writes it). A key that is missing or holds a value of the wrong
     * kind leaves that setting at its default; an empty archive gives a default formatter.
     */
    [[nodiscard]] static VeltoNumberFormatter initWithCoder(const QVariantMap &archive);
    /// encodeWithCoder: writes the settings into \a archive; maximumDecimalDigitsVelto() as an integer
    /// under "veltoDigits". Other keys of \a archive are left alone.
    void encodeWithCoder(QVariantMap &archive) const;

    /// numberStyle: NoStyle unless set.
    [[nodiscard]] NumberStyle numberStyle() const;
    /// setNumberStyle: changes the style and resets the fraction digits to the style's (0/0 or 0/3).
    void setNumberStyle(NumberStyle style);
    /// locale: the locale whose digits and separators are used.
    [[nodiscard]] QLocale locale() const;
    void setLocale(const QLocale &locale);
    /// minimumFractionDigits: fraction digits always shown (padded with zeros).
    [[nodiscard]] int minimumFractionDigits() const;
    /// setMinimumFractionDigits: negative counts as 0; raises the maximum when it is smaller.
    void setMinimumFractionDigits(int digits);
    /// maximumFractionDigits: the number is rounded half-to-even to this many fraction digits.
    [[nodiscard]] int maximumFractionDigits() const;
    /// setMaximumFractionDigits: negative counts as 0; lowers the minimum when it is larger.
    void setMaximumFractionDigits(int digits);
    /// positiveSuffix: appended to positive numbers (and to zero without a zero symbol); empty by default.
    [[nodiscard]] QString positiveSuffix() const;
    void setPositiveSuffix(const QString &suffix);
    /// negativeSuffix: appended to negative numbers; empty by default.
    [[nodiscard]] QString negativeSuffix() const;
    void setNegativeSuffix(const QString &suffix);
    /// zeroSymbol: the whole text for zero; null (the default) formats zero like any number.
    [[nodiscard]] QString zeroSymbol() const;
    void setZeroSymbol(const QString &symbol);

    /// maximumDecimalDigitsVelto: how many decimals the text keeps (see stringForObjectValue()); 0 = all.
    [[nodiscard]] quint64 maximumDecimalDigitsVelto() const;
    void setMaximumDecimalDigitsVelto(quint64 digits);

    /**
     * setSuffixesForVeltoUnitName: a non-empty \a unitName sets both suffixes to " " + unit and the zero
     * symbol to "0 " + unit; an empty one clears the suffixes and sets the zero symbol to "0".
     */
    void setSuffixesForVeltoUnitName(const QString &unitName);

    /// stringFromNumber: the same text as stringForObjectValue(); null for a value that is not a number.
    [[nodiscard]] QString stringFromNumber(const QVariant &number) const;
    /**
     * stringWithoutVeltoUnitNameFromNumber: stringFromNumber() without the unit: when the zero symbol
     * begins with "0 ", its part after the "0" (" cm") is cut off the end of the text if it is there.
     */
    [[nodiscard]] QString stringWithoutVeltoUnitNameFromNumber(const QVariant &number) const;

    /**
     * stringForObjectValue: the number's text (style, locale, suffixes, zero symbol), then reworked
     * when maximumDecimalDigitsVelto() (m) is not 0: decimals beyond m are cut, trailing zeros among the
     * kept ones dropped (with the separator when no decimal is left), and the text rounded up only when
     * the first removed digit is 7, 8 or 9. With m = 2: 1.237 → "1.24", 1.2000 → "1.2", 1.236 → "1.23",
     * 99.997 → "100.0". bool and every integer and floating type are numbers; any other value (a numeric
     * string included) gives a null string. NaN is "NaN", infinities "∞" and "-∞" with the suffixes.
     */
    [[nodiscard]] QString stringForObjectValue(const QVariant &value) const override;
    /**
     * getObjectValue: reads the whole text strictly: the zero symbol, or an optional minus sign (the
     * locale's or "-"), digits (the locale's or ASCII) with the locale's grouping separators (DecimalStyle
     * only) and one decimal separator, then the positive or negative suffix when one is set. Whole texts
     * give a qint64, others a double. When that fails, a suffix that starts with a space is also accepted
     * without the space ("12cm" for " cm"). On failure \a *errorDescription is "Invalid number".
     */
    [[nodiscard]] bool getObjectValue(QVariant *value, const QString &string,
                                      QString *errorDescription = nullptr) const override;

    /**
     * localizedDecimalSeparatorVelto: the decimal separator of currentLocaleVelto() as it was the first
     * time this was called in the process, or a null string when that separator is ".". Computed once
     * (thread-safe) and never refreshed, so set the locale override before the first call.
     */
    [[nodiscard]] static QString localizedDecimalSeparatorVelto();

private:
    class Private;
    QSharedDataPointer<Private> d;
};
