// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSecureURL.h"

#include "Object+VeltoDispatch.h"
#include "String+VeltoPaths.h"
#include "Url+VeltoAdditions.h"
#include "VTSymbols_p.h"
#include "VeltoAlertPresenter.h"
#include "VeltoApplication.h"
#include "VeltoBookmarkPlatform.h"
#include "VeltoCore.h"
#include "VeltoCoreLogging_p.h"
#include "VeltoFileManager.h"
#include "VeltoLocalization.h"
#include "VeltoOpenURLInfo.h"
#include "VeltoSecureURLSerialization.h"
#include "VeltoSecureURL_Subpath.h"

#include <QFileInfo>
#include <QScopeGuard>

#include <atomic>
#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

using Lock = std::lock_guard<std::recursive_mutex>;

QString localized(const char *key)
{
    return VeltoLocalizeInBundle(QString::fromUtf8(key), VeltoCoreBundle().get());
}

void fail(VeltoError *error, const VeltoError &failure)
{
    if (error)
        *error = failure;
}

std::shared_ptr<VeltoBookmarkPlatform> platform()
{
    return VeltoBookmarkPlatform::installed();
}

VeltoError securityScopeError(const QString &text)
{
    return VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorSecurityScope, text);
}

QUrl childURL(const QUrl &folder, const QString &name)
{
    return folder.isEmpty() ? QUrl() : QUrl::fromLocalFile(velto::stringByAppendingPathComponentVelto(folder.toLocalFile(), name));
}

} // namespace

class VeltoSecureURL::Private
{
public:
    mutable std::recursive_mutex lock;
    std::atomic<qint32> captureFlags{0};
    std::atomic<qint32> lastResolutionSuccessful{0};
    // Guarded by the lock:
    QByteArray bookmarkData;
    QByteArray serializationData;
    QUrl resolvedURL;
    QUrl staleURL;
    QList<std::shared_ptr<VeltoOpenURLInfo>> openTokens; // nullptr: a start that opened nothing
    // Set before the object is handed out, then only read:
    VeltoError initError;
};

VeltoSecureURL::VeltoSecureURL(ConstructionKey) : d(std::make_unique<Private>()) {}

VeltoSecureURL::~VeltoSecureURL()
{
    while (openCount() > 0)
        stopAccessing();
}

std::recursive_mutex &VeltoSecureURL::lock() const
{
    return d->lock;
}

bool VeltoSecureURL::isSecurityScopingFunctional()
{
    return platform()->isSecurityScopingFunctional();
}

bool VeltoSecureURL::isSecurityScopingViableAndGetError(VeltoError *)
{
    // The platform interface always has a start of access, so viability is functionality.
    return isSecurityScopingFunctional();
}

VeltoSecureURLCaptureFlags VeltoSecureURL::captureFlagsForURL(const QUrl &url, bool readOnly)
{
    static const QUrl installation = QUrl::fromLocalFile(QFileInfo(u"/proc/self/exe"_s).canonicalPath());
    VeltoSecureURLCaptureFlags flags = readOnly ? VeltoSecureURLCaptureReadOnly : VeltoSecureURLCaptureFlags();
    if (VeltoFileManager::isFileInsideSandboxAtURL(url) || velto::isFileInDescendentOfFolderAtURL(url, installation))
        flags |= VeltoSecureURLCaptureUnscoped;
    return flags;
}

quint32 VeltoSecureURL::bookmarkDataCreationOptionsForCaptureFlags(VeltoSecureURLCaptureFlags flags)
{
    const bool scoped = platform()->isSandboxed() && !flags.testFlag(VeltoSecureURLCaptureUnscoped);
    return scoped ? quint32(VeltoBookmarkCreationWithSecurityScope) : 0u;
}

QByteArray VeltoSecureURL::bookmarkDataForTargetURL(const QUrl &target, const QUrl &documentURL, quint32 options,
                                                    VeltoError *error)
{
    if (target.isEmpty()) {
        fail(error, VeltoError::posixError(EINVAL, u"Trying to capture security-scoped bookmark data for nil target URL."_s));
        return QByteArray();
    }
    VeltoError platformError;
    const QByteArray bookmark = platform()->bookmarkData(target, options, documentURL, &platformError);
    if (bookmark.isNull() && error) {
        QString text = localized("_Bookmark data could not be captured for a file.") + u"\n\n"_s
                       + velto::filePathForUserDisplay(target);
        VeltoError unreadable;
        if (!VeltoFileManager::isReadableItemAtURL(target, &unreadable))
            text += u"\n\nUnderlying error: "_s + unreadable.descriptionForUserVelto();
        else if (!platformError.isNull())
            text += u"\n\nUnderlying error: "_s + platformError.description();
        *error = securityScopeError(text);
    }
    return bookmark;
}

std::shared_ptr<VeltoSecureURL> VeltoSecureURL::readFinderAliasFromURL(const QUrl &aliasURL, VeltoError *error)
{
    QByteArray stored;
    if (!VeltoFileManager::readExtendedAttribute(VeltoSecureURL_AliasAttributeName, nullptr, &stored, aliasURL, error))
        return nullptr;
    if (stored.isEmpty()) {
        fail(error, VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData,
                                                u"File alias is missing security-scoped bookmark data in extended attributes."_s));
        return nullptr;
    }
    return initWithSerializedData(stored);
}

std::shared_ptr<VeltoSecureURL> VeltoSecureURL::initCapturingBookmarkForURL(const QUrl &url, bool readOnly, VeltoError *error)
{
    const VeltoSecureURLCaptureFlags flags = captureFlagsForURL(url, readOnly);
    std::shared_ptr<VeltoSecureURL> enclosing;
    if (platform()->isSandboxed()) {
        QString subpath;
        enclosing = matchExistingOpenSecureURLForURL(url, &subpath);
        // Two captures of a place that is open already are one object.
        if (enclosing && subpath.isEmpty() && enclosing->captureFlags() == flags)
            return enclosing;
    }
    const auto made = std::make_shared<VeltoSecureURL>(ConstructionKey());
    if (made->captureBookmarkForURL(url, flags, error))
        return made;
    // The file may still be reached through an open folder; the capture's error stays for the caller.
    return enclosing ? initUsingParentFolderSecureURL(enclosing, url) : nullptr;
}

std::shared_ptr<VeltoSecureURL_Subpath> VeltoSecureURL::initUsingParentFolderSecureURL(const std::shared_ptr<VeltoSecureURL> &parent,
                                                                                      const QUrl &targetURL, VeltoError *error)
{
    if (!parent || parent->appleBookmarkData().isNull()) {
        fail(error, securityScopeError(u"Parent folder does not have bookmark data:\n\n"_s
                                       + (parent ? parent->description() : u"(null)"_s)));
        return nullptr;
    }
    QUrl folder;
    (void)parent->resolvedURLWithFlagsGetBookmarkedURL(VeltoSecureURLAccessAllowMounting, &folder);
    if (folder.isEmpty()) {
        fail(error, securityScopeError(u"Parent folder resolves to nil for targetted file:\n\n"_s
                                       + velto::filePathForUserDisplay(targetURL)));
        return nullptr;
    }
    const QString subpath = velto::fileSubpathDescendingFromEnclosingFolderURL(targetURL, folder);
    if (subpath.isNull()) {
        fail(error, securityScopeError(u"Parent folder:\n%1\n\nDoes not actually enclose the target:\n%2"_s.arg(
                                           velto::filePathForUserDisplay(folder), velto::filePathForUserDisplay(targetURL))));
        return nullptr;
    }
    const auto made = VeltoSecureURL_Subpath::initWithAppleBookmarkData(parent->appleBookmarkData(), subpath);
    made->setCaptureFlags(parent->captureFlags());
    return made;
}

std::shared_ptr<VeltoSecureURL> VeltoSecureURL::initWithSerializedData(const QByteArray &data)
{
    return initWithSerializedDataInto(std::make_shared<VeltoSecureURL>(ConstructionKey()), data);
}

std::shared_ptr<VeltoSecureURL> VeltoSecureURL::initWithSerializedDataInto(std::shared_ptr<VeltoSecureURL> receiver,
                                                                           const QByteArray &data)
{
    VeltoError failure;
    const std::optional<VeltoSecureURLSerialization> record = VeltoSecureURLSerialization::initWithSerializationData(data, &failure);
    if (record && !record->subpathFragment().isNull())
        receiver = VeltoSecureURL_Subpath::initWithAppleBookmarkData(record->appleBookmarkData(), record->subpathFragment());
    receiver->d->serializationData = data;
    if (record) {
        receiver->d->bookmarkData = record->appleBookmarkData();
        receiver->d->captureFlags = record->captureFlags();
    } else {
        receiver->d->initError = failure;
    }
    return receiver;
}

std::shared_ptr<VeltoSecureURL> VeltoSecureURL::copy()
{
    return shared_from_this();
}

VeltoSecureURLCaptureFlags VeltoSecureURL::captureFlags() const
{
    return VeltoSecureURLCaptureFlags::fromInt(d->captureFlags);
}

void VeltoSecureURL::setCaptureFlags(VeltoSecureURLCaptureFlags flags)
{
    d->captureFlags = flags.toInt();
}

QByteArray VeltoSecureURL::appleBookmarkData() const
{
    Lock lock(d->lock);
    return d->bookmarkData;
}

void VeltoSecureURL::setAppleBookmarkData(const QByteArray &data)
{
    Lock lock(d->lock);
    d->bookmarkData = data;
}

QByteArray VeltoSecureURL::serializationData() const
{
    Lock lock(d->lock);
    return d->serializationData;
}

void VeltoSecureURL::setSerializationData(const QByteArray &data)
{
    Lock lock(d->lock);
    d->serializationData = data;
}

qint32 VeltoSecureURL::lastResolutionSuccessful() const
{
    return d->lastResolutionSuccessful;
}

QUrl VeltoSecureURL::documentURL() const
{
    return QUrl();
}

QString VeltoSecureURL::subpathFragment() const
{
    return QString();
}

qsizetype VeltoSecureURL::openCount() const
{
    Lock lock(d->lock);
    return d->openTokens.size();
}

bool VeltoSecureURL::isEqualToVeltoSecureURL(const VeltoSecureURL &other) const
{
    const QUrl mine = fileURL();
    const QUrl theirs = other.fileURL();
    if (!mine.isLocalFile())
        return mine == theirs;
    if (mine.toLocalFile() != theirs.toLocalFile())
        return false;
    // A reference whose resolution failed may point elsewhere now: only equal bookmarks are then the same.
    if (lastResolutionSuccessful() != -1 && other.lastResolutionSuccessful() != -1)
        return true;
    return appleBookmarkData() == other.appleBookmarkData();
}

bool operator==(const VeltoSecureURL &url, const VeltoSecureURL &other)
{
    return &url == &other || url.isEqualToVeltoSecureURL(other);
}

QString VeltoSecureURL::description() const
{
    Lock lock(d->lock);
    QString target;
    if (!d->resolvedURL.isEmpty()) {
        target = velto::filePathForUserDisplay(d->resolvedURL);
    } else {
        const auto values = platform()->resourceValues(d->bookmarkData);
        target = u"{unresolved bookmark for %1}"_s.arg(
            VeltoFileManager::pathByAbbreviatingRealHomeWithTilde(values ? values->path : QString()));
    }
    if (const QString fragment = subpathFragment(); !fragment.isNull())
        target += u" (SUBPATH: %1)"_s.arg(fragment);
    return u"%1<%2> open count %3, for %4"_s.arg(VTSymbols::typeName(typeid(*this)), QString::asprintf("%p", static_cast<const void *>(this)),
                                                 QString::number(d->openTokens.size()), target);
}

QUrl VeltoSecureURL::lastResolvedURL() const
{
    Lock lock(d->lock);
    return d->resolvedURL;
}

QUrl VeltoSecureURL::lastResolvedBookmarkedURL() const
{
    return lastResolvedURL();
}

void VeltoSecureURL::setLastResolvedURL(const QUrl &url)
{
    setLastResolvedURL(url, url.isEmpty() ? 0 : 1);
}

void VeltoSecureURL::setLastResolvedURL(const QUrl &url, qint32 success)
{
    Lock lock(d->lock);
    d->resolvedURL = url;
    d->staleURL = url;
    d->lastResolutionSuccessful = success;
}

void VeltoSecureURL::clearResolvedURL()
{
    setLastResolvedURL(QUrl(), 0);
}

QString VeltoSecureURL::unresolvedFileName() const
{
    const auto values = platform()->resourceValues(appleBookmarkData());
    return values ? values->name : QString();
}

QString VeltoSecureURL::unresolvedFilePath() const
{
    if (const QUrl resolved = lastResolvedURL(); !resolved.isEmpty())
        return resolved.toLocalFile();
    const auto values = platform()->resourceValues(appleBookmarkData());
    return values && values->path != u"/" ? values->path : QString();
}

QUrl VeltoSecureURL::fileURL() const
{
    Lock lock(d->lock);
    if (!d->resolvedURL.isEmpty())
        return d->resolvedURL;
    if (d->staleURL.isEmpty())
        d->staleURL = velto::fileURLWithVeltoPath(unresolvedFilePath());
    return d->staleURL;
}

QString VeltoSecureURL::filePath() const
{
    const QUrl resolved = lastResolvedURL();
    return resolved.isEmpty() ? unresolvedFilePath() : resolved.toLocalFile();
}

QString VeltoSecureURL::fileName() const
{
    const QUrl resolved = lastResolvedURL();
    return resolved.isEmpty() ? unresolvedFileName() : resolved.fileName();
}

QUrl VeltoSecureURL::resolvedURL()
{
    return resolvedURLWithFlags({});
}

QUrl VeltoSecureURL::resolvedURLWithFlags(VeltoSecureURLAccessFlags flags, VeltoError *error)
{
    return resolvedURLWithFlagsGetBookmarkedURL(flags, nullptr, error);
}

QUrl VeltoSecureURL::resolvedURLWithFlagsGetBookmarkedURL(VeltoSecureURLAccessFlags flags, QUrl *bookmarkedURL, VeltoError *error)
{
    Lock lock(d->lock);
    QUrl url = d->resolvedURL;
    if (url.isEmpty() || !platform()->checkResourceIsReachable(url)) {
        url = resolveBookmarkedURLUncachedWithFlags(flags, error);
        setLastResolvedURL(url, url.isEmpty() ? -1 : 1);
    }
    if (bookmarkedURL)
        *bookmarkedURL = url;
    return url;
}

QUrl VeltoSecureURL::resolveBookmarkedURLUncachedWithFlags(VeltoSecureURLAccessFlags flags, VeltoError *error)
{
    Lock lock(d->lock);
    if (!d->initError.isNull()) {
        fail(error, d->initError);
        return QUrl();
    }
    const auto system = platform();
    VeltoBookmarkResolutionOptions options = 0;
    if (!flags.testFlag(VeltoSecureURLAccessAllowUI))
        options |= VeltoBookmarkResolutionWithoutUI;
    if (!flags.testFlag(VeltoSecureURLAccessAllowMounting))
        options |= VeltoBookmarkResolutionWithoutMounting;
    if (!captureFlags().testFlag(VeltoSecureURLCaptureUnscoped) && system->isSandboxed() && system->isSecurityScopingFunctional())
        options |= VeltoBookmarkResolutionWithSecurityScope;
    bool stale = false;
    VeltoError failure;
    const QUrl url = system->resolveBookmarkData(d->bookmarkData, options, documentURL(), &stale, &failure);
    if (!url.isEmpty() && stale) {
        // The cached serialization stays: a later global serialization still gives the bytes we were made from.
        const QByteArray fresh = bookmarkDataForTargetURL(url, documentURL(), bookmarkDataCreationOptionsForCaptureFlags(captureFlags()));
        if (!fresh.isNull())
            d->bookmarkData = fresh;
        qCDebug(lcVeltoSecure) << "stale bookmark data made again for" << url << (fresh.isNull() ? "(failed)" : "");
    }
    if (url.isEmpty()) {
        if (failure.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadCorruptFile))
            failure = errorForInvalidBookmarkData();
        fail(error, failure);
    }
    return url;
}

VeltoError VeltoSecureURL::errorForInvalidBookmarkData() const
{
    const QUrl url = fileURL();
    VeltoError unreachable;
    if (!url.isEmpty() && !platform()->checkResourceIsReachable(url, &unreachable))
        return unreachable;
    QString text = localized("_Bookmark data previously captured for a file is invalid.");
    if (!url.isEmpty())
        text += u"\nFile path: "_s + velto::filePathForUserDisplay(url);
    else if (const QString name = fileName(); !name.isEmpty())
        text += u"\nFile: "_s + name;
    return VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData, text);
}

bool VeltoSecureURL::captureBookmarkForURL(const QUrl &url, VeltoSecureURLCaptureFlags flags, VeltoError *error)
{
    Lock lock(d->lock);
    d->bookmarkData = bookmarkDataForTargetURL(url, documentURL(), bookmarkDataCreationOptionsForCaptureFlags(flags), error);
    setLastResolvedURL(QUrl(), 0);
    d->captureFlags = flags.toInt();
    return !d->bookmarkData.isNull();
}

QUrl VeltoSecureURL::startAccessingWithFlags(VeltoSecureURLAccessFlags flags, VeltoError *error)
{
    const std::shared_ptr<VeltoSecureURL> self = shared_from_this();
    Lock lock(d->lock);
    const QUrl prior = d->resolvedURL;
    QUrl bookmarked;
    QUrl url = resolvedURLWithFlagsGetBookmarkedURL(flags, &bookmarked, error);
    if (!platform()->isSandboxed())
        return url;
    std::shared_ptr<VeltoOpenURLInfo> token;
    if (!captureFlags().testFlag(VeltoSecureURLCaptureUnscoped) && isSecurityScopingViableAndGetError() && !url.isEmpty()) {
        token = incrementGlobalAccessCountForSecureURL(self, bookmarked);
        if (!token && !prior.isEmpty()) {
            // The cached URL may have been out of date: resolve afresh and ask once more.
            setLastResolvedURL(QUrl(), 0);
            url = resolvedURLWithFlagsGetBookmarkedURL(flags, &bookmarked, error);
            if (!url.isEmpty())
                token = incrementGlobalAccessCountForSecureURL(self, bookmarked);
        }
        if (!token) {
            fail(error, sandboxDeniedError(url, bookmarked));
            d->lastResolutionSuccessful = -1;
            url = QUrl();
        }
    }
    d->openTokens.append(token);
    return url;
}

VeltoError VeltoSecureURL::sandboxDeniedError(const QUrl &url, const QUrl &bookmarkedURL) const
{
    const QString application = VeltoApplication::infoDictionary().value(VeltoInfoBundleNameKey).toString();
    QString text = localized("_The Mac system sandbox denied %@ access to the file:").replace(u"%@"_s, application)
                   + u"\n\n"_s + velto::filePathForUserDisplay(url);
    if (!velto::isFileEquivalentPathAsURL(url, bookmarkedURL)) {
        text += u"\n\n%1\n%2"_s.arg(localized("_Authorization attempted using bookmark data for:"),
                                    velto::filePathForUserDisplay(bookmarkedURL));
    }
    return VeltoError::posixError(EPERM, text);
}

void VeltoSecureURL::stopAccessing()
{
    // The token may hold the last reference to this object: keep it alive until the lock is released.
    const std::shared_ptr<VeltoSecureURL> self = weak_from_this().lock();
    std::shared_ptr<VeltoOpenURLInfo> token;
    Lock lock(d->lock);
    if (d->openTokens.isEmpty()) {
        if (platform()->isSandboxed())
            qCWarning(lcVeltoSecure, "VeltoSecureURL::stopAccessing: no access is open for %s", qPrintable(description()));
        return;
    }
    token = d->openTokens.takeLast();
    decrementGlobalAccessCountForSecureURL(this, token);
}

bool VeltoSecureURL::accessWithFlags(VeltoSecureURLAccessFlags flags, VeltoError *error, const AccessBlock &block)
{
    const std::shared_ptr<VeltoSecureURL> self = shared_from_this();
    const QUrl url = startAccessingWithFlags(flags, error);
    // Every start is matched by a stop, also when the block throws.
    const auto stop = qScopeGuard([this] { stopAccessing(); });
    if (!url.isEmpty() && block)
        block(url);
    return !url.isEmpty();
}

bool VeltoSecureURL::accessWithFlagsAsyncUsing(VeltoSecureURLAccessFlags flags, VeltoError *error, const AsyncAccessBlock &block)
{
    const std::shared_ptr<VeltoSecureURL> self = shared_from_this();
    const QUrl url = startAccessingWithFlags(flags, error);
    if (url.isEmpty() || !block) {
        stopAccessing();
        return !url.isEmpty();
    }
    const auto completed = std::make_shared<std::atomic<bool>>(false);
    block(url, [self, completed] {
        if (!completed->exchange(true))
            self->stopAccessing();
    });
    return true;
}

bool VeltoSecureURL::accessWithFlagsErrorPresenter(VeltoSecureURLAccessFlags flags, QObject *presenter, const AccessBlock &block)
{
    VeltoError failure;
    if (accessWithFlags(flags, &failure, block))
        return true;
    if (velto::respondsToSelectorVelto(presenter, "presentError"))
        velto::performSelectorIfResponds(presenter, "presentError", QVariant::fromValue(failure));
    else if (flags.testFlag(VeltoSecureURLAccessAllowUI))
        VeltoAlertPresenter::show(failure);
    return false;
}

bool VeltoSecureURL::accessWithFlagsUsing(VeltoSecureURLAccessFlags flags, const ResultBlock &block)
{
    VeltoError failure;
    const bool opened = accessWithFlags(flags, &failure, [&block](const QUrl &url) {
        if (block)
            block(url, VeltoError());
    });
    if (!opened && block)
        block(QUrl(), failure);
    return opened;
}

bool VeltoSecureURL::isAccessibleWithFlags(VeltoSecureURLAccessFlags flags)
{
    return accessWithFlags(flags, nullptr, AccessBlock());
}

QByteArray VeltoSecureURL::serializationStorableGlobally()
{
    return serializationGeneratedForStoringInURL(QUrl());
}

QByteArray VeltoSecureURL::serializationStorableInDocumentWithURL(const QUrl &documentURL)
{
    return documentURL.isEmpty() ? QByteArray() : serializationGeneratedForStoringInURL(documentURL);
}

QByteArray VeltoSecureURL::serializationGeneratedForStoringInURL(const QUrl &place)
{
    if (place == documentURL()) {
        Lock lock(d->lock);
        if (d->serializationData.isNull())
            d->serializationData = serializationGeneratedWithAppleBookmarkData(d->bookmarkData);
        return d->serializationData;
    }
    // Another place (another document, or anywhere for a document's reference): new bookmark data.
    QByteArray stored;
    accessWithFlags({}, nullptr, [&](const QUrl &url) {
        const QByteArray bookmark = bookmarkDataForTargetURL(url, place, bookmarkDataCreationOptionsForCaptureFlags(captureFlags()));
        if (!bookmark.isNull())
            stored = serializationGeneratedWithAppleBookmarkData(bookmark);
    });
    return stored;
}

QByteArray VeltoSecureURL::serializationGeneratedWithAppleBookmarkData(const QByteArray &bookmark) const
{
    VeltoSecureURLSerialization record;
    record.setAppleBookmarkData(bookmark);
    record.setCaptureFlags(captureFlags().toInt());
    record.setSubpathFragment(subpathFragment());
    return record.generatedSerializationData();
}

bool VeltoSecureURL::writeFinderAliasToURL(const QUrl &aliasURL, VeltoError *error)
{
    QByteArray bookmark;
    VeltoError failure;
    accessWithFlags(VeltoSecureURLAccessAllowUI | VeltoSecureURLAccessAllowMounting, &failure, [&](const QUrl &url) {
        bookmark = bookmarkDataForTargetURL(url, QUrl(), VeltoBookmarkCreationSuitableForBookmarkFile, &failure);
    });
    if (bookmark.isNull() || !platform()->writeBookmarkDataToURL(bookmark, aliasURL, &failure)) {
        fail(error, failure);
        return false;
    }
    const QByteArray stored = serializationStorableGlobally();
    if (stored.isNull()) {
        fail(error, VeltoSecureURLSerialization::missingDataError());
        return false;
    }
    return VeltoFileManager::writeExtendedAttribute(VeltoSecureURL_AliasAttributeName, stored, aliasURL, error);
}

void VeltoSecureURL::setCorrectedSecureURL(const std::shared_ptr<VeltoSecureURL> &other)
{
    if (!other)
        return;
    const QUrl document = documentURL();
    const QByteArray stored = document.isEmpty() ? other->serializationStorableGlobally()
                                                 : other->serializationStorableInDocumentWithURL(document);
    // Asked before taking this object's lock, so that two objects correcting each other cannot deadlock.
    const QUrl resolved = other->resolvedURL();
    Lock lock(d->lock);
    if (!d->openTokens.isEmpty())
        return; // a reference in use is never re-targeted
    d->bookmarkData = stored; // the serialization bytes, not the raw bookmark: kept exactly so
    setLastResolvedURL(resolved, resolved.isEmpty() ? -1 : 1);
}

std::shared_ptr<VeltoSecureURL> VeltoSecureURL::secureURLForSubfolderWithName(const QString &name, bool create, VeltoError *error)
{
    if (!create && !platform()->checkResourceIsReachable(childURL(resolvedURL(), name)))
        return nullptr;
    std::shared_ptr<VeltoSecureURL> made;
    accessWithFlags({}, error, [&](const QUrl &url) {
        const QUrl child = childURL(url, name);
        if (create && !platform()->checkResourceIsReachable(child) && !VeltoFileManager::createDirectoryAtURL(child, error))
            return;
        made = initCapturingBookmarkForURL(child, false, error);
    });
    return made;
}
