// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLocalization.h"

#include "VeltoBundle.h"

namespace {

// The translation of key, or a null string when the bundle's default table lacks it.
QString lookUp(const QString &key, const VeltoBundle &bundle)
{
    const QString sentinel = VeltoLocalizedStringNotFound;
    QString text = bundle.localizedString(key, sentinel);
    return text == sentinel ? QString() : text;
}

} // namespace

QString VeltoLocalizeInBundle(const QString &key, const VeltoBundle *bundle)
{
    if (bundle == nullptr)
        return key;
    const QString text = lookUp(key, *bundle);
    return text.isNull() ? key : text;
}

QString VeltoLocalizeUsingClass(const QString &key, const QMetaObject *metaObject)
{
    return VeltoLocalizeInBundle(key, VeltoBundle::bundleForClass(metaObject).get());
}

QString VeltoLocalizeExpectFailInBundle(const QString &key, const VeltoBundle *bundle)
{
    if (bundle == nullptr)
        return key;
    return lookUp(key, *bundle);
}

QString VeltoLocalizeExpectFailUsingClass(const QString &key, const QMetaObject *metaObject)
{
    const auto bundle = VeltoBundle::bundleForClass(metaObject);
    return bundle ? lookUp(key, *bundle) : QString();
}
