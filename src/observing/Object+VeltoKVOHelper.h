// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Object+VeltoKVOHelper.h
 * \brief Watching a QObject's notifying property on behalf of an observer, through the observer's
 * VeltoKVOHelper.
 *
 * \code
 * velto::addObserverVelto(document, this, u"title"_s, VeltoKeyValueObservingOptionNew, "titleChanged");
 * // slot: void titleChanged(QObject *document, const QVariantMap &change);
 * velto::removeObserverVelto(document, this, u"title"_s);   // or just let `this` be destroyed
 * \endcode
 */

#include "VeltoKVOHelper.h"

namespace velto {

/// addObserverVelto: \a observer watches \a keyPath of \a watched; changes call the method \a selector (first request wins).
VELTOCORE_EXPORT void addObserverVelto(QObject *watched, QObject *observer, const QString &keyPath,
                                       VeltoKeyValueObservingOptions options, const char *selector);
/// addObserverVeltoNotifyUsing: the same with a callable (first request wins).
VELTOCORE_EXPORT void addObserverVeltoNotifyUsing(QObject *watched, QObject *observer, const QString &keyPath,
                                                  VeltoKeyValueObservingOptions options, const VeltoKVONotifyBlock &block);
/// hasObserverVelto: whether \a observer's helper holds a registration for (\a watched, \a keyPath); creates no helper.
[[nodiscard]] VELTOCORE_EXPORT bool hasObserverVelto(QObject *watched, QObject *observer, const QString &keyPath);
/// removeObserverVelto: undoes one request of \a observer for (\a watched, \a keyPath); nothing when it has no helper.
VELTOCORE_EXPORT void removeObserverVelto(QObject *watched, QObject *observer, const QString &keyPath);

} // namespace velto
