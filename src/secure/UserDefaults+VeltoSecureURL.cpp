// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "UserDefaults+VeltoSecureURL.h"

#include "VeltoSecureURLSerialization.h"

using namespace Qt::StringLiterals;

namespace velto {

VeltoCache<std::shared_ptr<VeltoSecureURL>> &secureURLCacheVelto()
{
    static auto *const cache = VeltoCache<std::shared_ptr<VeltoSecureURL>>::newStaticCacheVeltoWithName(u"userDefaults.secureURLs"_s).release();
    return *cache;
}

std::shared_ptr<VeltoSecureURL> veltoSecureURLForKey(const VeltoUserDefaults &defaults, const QString &key)
{
    if (key.isEmpty())
        return nullptr;
    if (const auto cached = secureURLCacheVelto().objectForKey(key))
        return *cached;
    const QVariant stored = defaults.objectForKey(key);
    if (!stored.isValid())
        return nullptr;
    const auto url = VeltoSecureURL::initWithSerializedData(stored.toByteArray());
    secureURLCacheVelto().setObject(url, key);
    return url;
}

bool setVeltoSecureURL(VeltoUserDefaults &defaults, const std::shared_ptr<VeltoSecureURL> &url, const QString &key,
                       VeltoError *error)
{
    if (key.isEmpty())
        return true;
    if (!url) {
        secureURLCacheVelto().removeObjectForKey(key);
        return defaults.removeObjectForKey(key, error);
    }
    secureURLCacheVelto().setObject(url, key);
    const QByteArray stored = url->serializationStorableGlobally();
    if (stored.isNull()) {
        if (error)
            *error = VeltoSecureURLSerialization::missingDataError();
        return false;
    }
    return defaults.setObject(stored, key, error);
}

} // namespace velto
