// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Object+VeltoDispatch.h
 * \brief Calling a QObject's method chosen at run time by name: "does it implement X", calls with up to
 * three object arguments or one scalar argument, and scalar or object results.
 *
 * A selector is the name of a slot or Q_INVOKABLE method (signals are not called). Where a class declares
 * several methods of that name, the one of the most derived class with the most parameters is used (the
 * full form of a method with default arguments). Lookups are cached per class, so repeated calls do not
 * parse signatures again.
 *
 * Object arguments are QVariants; an invalid QVariant stands for "no object". A parameter of type QVariant
 * receives the argument as it is; a QObject-pointer parameter receives the argument's QObject when it is
 * of the parameter's class and null otherwise; any other parameter receives the argument converted with
 * QMetaType::convert, or a default value when it cannot be converted.
 *
 * \code
 * velto::performSelectorIfResponds(delegate, "documentDidChange", QVariant::fromValue(document));
 * \endcode
 */

#include "veltocore_export.h"

#include <QObject>
#include <QVariant>

namespace velto {

/// respondsToSelectorVelto: whether \a object has a method named \a selector; false for null arguments.
[[nodiscard]] VELTOCORE_EXPORT bool respondsToSelectorVelto(const QObject *object, const char *selector);

/**
 * instancesRespondToSelectorVelto: whether objects of the class \a metaObject describes have a method named
 * \a selector (the class test behind respondsToSelectorVelto(), for callers that decide once per class);
 * false for null arguments.
 */
[[nodiscard]] VELTOCORE_EXPORT bool instancesRespondToSelectorVelto(const QMetaObject *metaObject, const char *selector);

/// parameterCountForSelectorVelto: the parameter count of the method that a call by \a selector uses; -1 when none.
[[nodiscard]] VELTOCORE_EXPORT int parameterCountForSelectorVelto(const QObject *object, const char *selector);

/**
 * performSelectorIfResponds: calls \a selector with up to three object arguments (extra arguments beyond the
 * method's parameters are dropped, missing ones arrive as null) only when \a object implements it.
 * \return the method's result as a QVariant (a method returning QVariant gives its own); invalid for a method
 * returning nothing or not implemented.
 */
VELTOCORE_EXPORT QVariant performSelectorIfResponds(QObject *object, const char *selector,
                                                    const QVariant &first = {}, const QVariant &second = {},
                                                    const QVariant &third = {});

/// boolForPerformSelector: calls it and returns whether the low byte of the result is non-zero; false when not implemented.
[[nodiscard]] VELTOCORE_EXPORT bool boolForPerformSelector(QObject *object, const char *selector,
                                                           const QVariant &argument = {});
/// floatForPerformSelector: calls it and returns its numeric result as a double; 0 when not implemented or not numeric.
[[nodiscard]] VELTOCORE_EXPORT double floatForPerformSelector(QObject *object, const char *selector,
                                                              const QVariant &argument = {});
/// intForPerformSelector: calls it and returns its numeric result as a signed word; 0 when not implemented or not numeric.
[[nodiscard]] VELTOCORE_EXPORT qint64 intForPerformSelector(QObject *object, const char *selector,
                                                            const QVariant &argument = {});

/**
 * performSelectorWithFloat: calls \a selector with one scalar argument (converted to the parameter's type).
 * \return the raw 8 bytes of the result read as a signed word when the result is exactly 8 bytes long
 * (qint64, double, a pointer); 0 otherwise, and 0 when not implemented.
 */
VELTOCORE_EXPORT qint64 performSelectorWithFloat(QObject *object, const char *selector, double value);
/// performSelectorWithInt: as performSelectorWithFloat() with a signed word argument.
VELTOCORE_EXPORT qint64 performSelectorWithInt(QObject *object, const char *selector, qint64 value);
/// performSelectorWithBool: as performSelectorWithFloat() with a boolean argument.
VELTOCORE_EXPORT qint64 performSelectorWithBool(QObject *object, const char *selector, bool value);

} // namespace velto
