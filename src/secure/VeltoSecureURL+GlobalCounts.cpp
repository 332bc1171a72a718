// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The open-URL registry: which places hold a sandbox grant now and how many starts of access each
// stands for, so that references to one place share one grant and a file inside an open folder is
// reached through the folder's grant. One process-wide recursive lock guards the list; callers hold
// their secure URL's lock first, and nothing here calls back into a secure URL's locked operations.

#include "VeltoSecureURL.h"

#include "Url+VeltoAdditions.h"
#include "VeltoBookmarkPlatform.h"
#include "VeltoFileManager.h"
#include "VeltoLogSink.h"
#include "VeltoOpenURLInfo.h"

using namespace Qt::StringLiterals;

void VeltoSecureURL::accessGlobalOpenURLInfos(const std::function<void(OpenURLInfoList &infos)> &block)
{
    // Never destroyed: a reference may give back its access during static destruction.
    static auto *const registryLock = new std::recursive_mutex;
    static auto *const infos = new OpenURLInfoList;
    std::lock_guard lock(*registryLock);
    block(*infos);
}

std::shared_ptr<VeltoOpenURLInfo> VeltoSecureURL::incrementGlobalAccessCountForSecureURL(const std::shared_ptr<VeltoSecureURL> &secureURL,
                                                                                        const QUrl &accessedURL)
{
    std::shared_ptr<VeltoOpenURLInfo> counted;
    accessGlobalOpenURLInfos([&](OpenURLInfoList &infos) {
        // From the end: the most recently opened entry of the place wins.
        for (auto entry = infos.crbegin(); entry != infos.crend() && !counted; ++entry) {
            if (velto::isFileEqualNodeAsURL((*entry)->accessedURL(), accessedURL))
                counted = *entry;
        }
        if (counted) {
            ++counted->m_accessCount;
            return;
        }
        bool granted = openSandboxAccessForURL(accessedURL);
        if (!granted) {
            // Refused: an open folder around it may reach it; failing that, a file readable anyway is tolerated.
            counted = matchExistingOpenInfoForURL(accessedURL);
            granted = !counted && VeltoFileManager::isReadableItemAtURL(accessedURL);
        }
        if (granted) {
            counted = std::make_shared<VeltoOpenURLInfo>(secureURL, accessedURL);
            infos.append(counted);
        }
        if (counted)
            ++counted->m_accessCount;
    });
    return counted;
}

void VeltoSecureURL::decrementGlobalAccessCountForSecureURL(const VeltoSecureURL *, const std::shared_ptr<VeltoOpenURLInfo> &token)
{
    if (!token)
        return;
    accessGlobalOpenURLInfos([&](OpenURLInfoList &infos) {
        if (token->m_accessCount-- != 1)
            return;
        // Also for an entry whose start the platform refused but that was tolerated as readable.
        closeSandboxAccessForURL(token->accessedURL());
        infos.removeOne(token);
    });
}

bool VeltoSecureURL::openSandboxAccessForURL(const QUrl &url)
{
    return VeltoBookmarkPlatform::installed()->startAccessingSecurityScopedResource(url);
}

void VeltoSecureURL::closeSandboxAccessForURL(const QUrl &url)
{
    VeltoBookmarkPlatform::installed()->stopAccessingSecurityScopedResource(url);
}

std::shared_ptr<VeltoOpenURLInfo> VeltoSecureURL::matchExistingOpenInfoForURL(const QUrl &url, QString *subpath)
{
    std::shared_ptr<VeltoOpenURLInfo> closest;
    QString remaining;
    accessGlobalOpenURLInfos([&](OpenURLInfoList &infos) {
        for (const std::shared_ptr<VeltoOpenURLInfo> &info : std::as_const(infos)) {
            const QString below = velto::fileSubpathDescendingFromEnclosingFolderURL(url, info->accessedURL());
            if (!below.isNull() && (!closest || below.size() < remaining.size())) {
                closest = info;
                remaining = below;
            }
        }
    });
    if (subpath)
        *subpath = remaining;
    return closest;
}

std::shared_ptr<VeltoSecureURL> VeltoSecureURL::matchExistingOpenSecureURLForURL(const QUrl &url, QString *subpath)
{
    const std::shared_ptr<VeltoOpenURLInfo> info = matchExistingOpenInfoForURL(url, subpath);
    return info ? info->secureURL() : nullptr;
}

QList<QUrl> VeltoSecureURL::openURLs()
{
    QList<QUrl> urls;
    accessGlobalOpenURLInfos([&urls](OpenURLInfoList &infos) {
        for (const std::shared_ptr<VeltoOpenURLInfo> &info : std::as_const(infos))
            urls << info->accessedURL();
    });
    return urls;
}

void VeltoSecureURL::debugState()
{
    accessGlobalOpenURLInfos([](OpenURLInfoList &infos) {
        VeltoLogSink::write(u"OPEN SECURE URLs: "_s);
        for (const std::shared_ptr<VeltoOpenURLInfo> &info : std::as_const(infos)) {
            VeltoLogSink::write(u"*****************\n%1\n(open access count %2)"_s.arg(
                velto::filePathForUserDisplay(info->accessedURL()), QString::number(info->accessCount())));
        }
    });
}
