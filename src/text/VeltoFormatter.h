// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoFormatter.h
 * \brief VeltoFormatter: the common interface of the library's formatters (numbers, file sizes, dates),
 * which turn a value into display text and back, and the process-wide locale they are all made with.
 *
 * \code
 * VeltoFormatter::setDefaultVeltoLocale(QLocale(u"de_DE"_s));   // at start-up, before formatters are made
 * VeltoNumberFormatter centimetres(u"cm"_s, true);                // uses de_DE: "2,5 cm"
 * \endcode
 *
 * Use a formatter directly when you need one text; keep one when the same rules format many values.
 */

#include "veltocore_export.h"

#include <QLocale>
#include <QString>
#include <QVariant>

#include <optional>

/**
 * \brief VeltoFormatter: an abstract value ↔ text converter. Subclasses say which values they accept;
 * every formatter the library makes takes its locale from currentLocaleVelto() when it is made.
 */
class VELTOCORE_EXPORT VeltoFormatter
{
public:
    virtual ~VeltoFormatter();

    /// stringForObjectValue: the display text of \a value; a null string for a value this formatter
    /// does not format.
    [[nodiscard]] virtual QString stringForObjectValue(const QVariant &value) const = 0;

    /**
     * getObjectValue: reads \a string into \a *value (when \a value is not null). Returns false when the
     * text cannot be read; \a *value is then left as it was and \a *errorDescription (when not null)
     * says why.
     */
    [[nodiscard]] virtual bool getObjectValue(QVariant *value, const QString &string,
                                              QString *errorDescription = nullptr) const = 0;

    /// defaultVeltoLocale: the process-wide locale override, empty when none is set. Thread-safe.
    [[nodiscard]] static std::optional<QLocale> defaultVeltoLocale();
    /**
     * setDefaultVeltoLocale: replaces the override (empty removes it). Formatters already made keep
     * their locale. Thread-safe, but meant to be called at start-up before any formatter is made.
     */
    static void setDefaultVeltoLocale(std::optional<QLocale> locale);
    /// currentLocaleVelto: the override when set, else QLocale() (the user's current locale).
    [[nodiscard]] static QLocale currentLocaleVelto();

protected:
    VeltoFormatter() = default;
    VeltoFormatter(const VeltoFormatter &) = default;
    VeltoFormatter &operator=(const VeltoFormatter &) = default;
    VeltoFormatter(VeltoFormatter &&) = default;
    VeltoFormatter &operator=(VeltoFormatter &&) = default;
};
