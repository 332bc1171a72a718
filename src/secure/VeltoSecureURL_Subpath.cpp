// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSecureURL_Subpath.h"

#include "String+VeltoPaths.h"
#include "VeltoBookmarkPlatform.h"

using Lock = std::lock_guard<std::recursive_mutex>;

class VeltoSecureURL_Subpath::Private
{
public:
    // Guarded by the object's lock:
    QString fragment;
    QUrl bookmarkedURL;
};

VeltoSecureURL_Subpath::VeltoSecureURL_Subpath(ConstructionKey key) : VeltoSecureURL(key), s(std::make_unique<Private>()) {}

VeltoSecureURL_Subpath::~VeltoSecureURL_Subpath() = default;

std::shared_ptr<VeltoSecureURL_Subpath> VeltoSecureURL_Subpath::initWithAppleBookmarkData(const QByteArray &folderBookmark,
                                                                                         const QString &fragment)
{
    const auto made = std::make_shared<VeltoSecureURL_Subpath>(ConstructionKey());
    made->setAppleBookmarkData(folderBookmark);
    made->s->fragment = fragment;
    return made;
}

QString VeltoSecureURL_Subpath::subpathFragment() const
{
    Lock guard(lock());
    return s->fragment;
}

void VeltoSecureURL_Subpath::setSubpathFragment(const QString &fragment)
{
    Lock guard(lock());
    s->fragment = fragment;
}

QUrl VeltoSecureURL_Subpath::lastResolvedBookmarkedURL() const
{
    Lock guard(lock());
    return s->bookmarkedURL;
}

void VeltoSecureURL_Subpath::setLastResolvedBookmarkedURL(const QUrl &url)
{
    Lock guard(lock());
    s->bookmarkedURL = url;
}

void VeltoSecureURL_Subpath::clearResolvedURL()
{
    setLastResolvedBookmarkedURL(QUrl());
    VeltoSecureURL::clearResolvedURL();
}

QString VeltoSecureURL_Subpath::unresolvedFileName() const
{
    return subpathFragment().section(u'/', -1, -1, QString::SectionSkipEmpty);
}

QString VeltoSecureURL_Subpath::unresolvedFilePath() const
{
    if (const QUrl resolved = lastResolvedURL(); !resolved.isEmpty())
        return resolved.toLocalFile();
    const QString folder = VeltoSecureURL::unresolvedFilePath();
    return folder.isNull() ? QString() : velto::stringByAppendingPathComponentVelto(folder, subpathFragment());
}

QUrl VeltoSecureURL_Subpath::resolvedURLWithFlagsGetBookmarkedURL(VeltoSecureURLAccessFlags flags, QUrl *bookmarkedURL, VeltoError *error)
{
    Lock guard(lock());
    const auto platform = VeltoBookmarkPlatform::installed();
    const QUrl cachedTarget = lastResolvedURL();
    if (!cachedTarget.isEmpty() && !s->bookmarkedURL.isEmpty() && platform->checkResourceIsReachable(cachedTarget)
        && platform->checkResourceIsReachable(s->bookmarkedURL)) {
        if (bookmarkedURL)
            *bookmarkedURL = s->bookmarkedURL;
        return cachedTarget;
    }
    const QUrl folder = resolveBookmarkedURLUncachedWithFlags(flags, error);
    QUrl target;
    if (!folder.isEmpty()) {
        target = QUrl::fromLocalFile(velto::stringByAppendingPathComponentVelto(folder.toLocalFile(), s->fragment));
        if (!platform->checkResourceIsReachable(target, error))
            target = QUrl();
    }
    if (target.isEmpty()) {
        setLastResolvedURL(QUrl(), -1); // the folder found last time stays
    } else {
        setLastResolvedURL(target, 1);
        s->bookmarkedURL = folder;
    }
    if (bookmarkedURL)
        *bookmarkedURL = folder;
    return target;
}
