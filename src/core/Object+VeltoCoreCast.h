// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Object+VeltoCoreCast.h
 * \brief Taking a value of unknown type safely: the object itself if it is of the asked type, else nothing.
 *
 * \code
 * if (auto *view = velto::conditionalCastVelto<QWidget>(sender)) ...
 * if (auto name = velto::conditionalCastVelto<QString>(plist.value(u"name"_s))) ...
 * \endcode
 */

#include <QObject>
#include <QVariant>

#include <optional>

namespace velto {

/// conditionalCastVelto: \a object when it is a T or of a subclass of T, else nullptr (also for nullptr).
template <typename T>
[[nodiscard]] T *conditionalCastVelto(QObject *object)
{
    return qobject_cast<T *>(object);
}

/// conditionalCastVelto: \a object when it is a T or of a subclass of T, else nullptr (also for nullptr).
template <typename T>
[[nodiscard]] const T *conditionalCastVelto(const QObject *object)
{
    return qobject_cast<const T *>(object);
}

/**
 * conditionalCastVelto: the value held by \a value when its type is exactly T, else nothing (also for a
 * null QVariant). No conversion is attempted: a string "12" is not an int.
 */
template <typename T>
[[nodiscard]] std::optional<T> conditionalCastVelto(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<T>())
        return std::nullopt;
    return value.value<T>();
}

} // namespace velto
