// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file UserDefaults+VeltoSecureURL.h
 * \brief Additions to VeltoUserDefaults: secure URLs kept across launches under keys of the caller's
 * choice (recent folders, chosen places), with one live object per key shared by every reader.
 *
 * The value stored under a key is the secure URL's global serialization (VeltoSecureURL::
 * serializationStorableGlobally()), as data. Objects read or stored are kept in one process-wide evicting
 * cache, "com.velto.cache.userDefaults.secureURLs", keyed by the key alone (whichever store it came
 * from), so that repeated reads share one object and with it its open counts and resolution. The cache
 * may drop an entry at any time; the next read then rebuilds an equal object from the store.
 *
 * \code
 * auto defaults = VeltoUserDefaults::standardUserDefaults();
 * if (!velto::setVeltoSecureURL(*defaults, folder, u"recentFolder"_s, &error))
 *     qWarning() << error.descriptionForUserVelto();
 * const auto recent = velto::veltoSecureURLForKey(*defaults, u"recentFolder"_s);
 * \endcode
 *
 * Safe on any thread.
 */

#include "VeltoCache.h"
#include "VeltoSecureURL.h"
#include "VeltoUserDefaults.h"
#include "veltocore_export.h"

namespace velto {

/// secureURLCacheVelto: the process-wide cache of secure URLs read from and stored in user defaults.
[[nodiscard]] VELTOCORE_EXPORT VeltoCache<std::shared_ptr<VeltoSecureURL>> &secureURLCacheVelto();

/**
 * veltoSecureURLForKey: the cached object of \a key, else one made from the data stored under \a key
 * (VeltoSecureURL::initWithSerializedData(), then cached); nullptr, caching nothing, for an empty key or
 * a key with no value.
 */
[[nodiscard]] VELTOCORE_EXPORT std::shared_ptr<VeltoSecureURL> veltoSecureURLForKey(const VeltoUserDefaults &defaults,
                                                                                   const QString &key);

/**
 * setVeltoSecureURL: caches \a url under \a key and stores its global serialization there; nullptr
 * removes both. An empty key changes nothing.
 * \return false, with \a error, when the store could not be written, or when \a url gives no
 * serialization (VeltoCoreErrorDomain 1, "Security-scoped serialization data is nil."): the cache then
 * holds the new object while the store keeps its previous value.
 */
[[nodiscard]] VELTOCORE_EXPORT bool setVeltoSecureURL(VeltoUserDefaults &defaults, const std::shared_ptr<VeltoSecureURL> &url,
                                                      const QString &key, VeltoError *error = nullptr);

} // namespace velto
