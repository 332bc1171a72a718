// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Secure URLs on real files, with the sandbox simulated (tests/support/sandboxsimulation.h): capture,
// resolution and refresh, counted access through the open-URL registry, subpaths, document-scoped
// references, alias files, user defaults, and references stored by another process.

#include "sandboxsimulation.h"
#include "veltotest.h"

#include "UserDefaults+VeltoSecureURL.h"
#include "VTBookmarkRecord_p.h"
#include "VeltoFileManager.h"
#include "VeltoOpenURLInfo.h"
#include "VeltoSecureURL.h"
#include "VeltoSecureURLSerialization.h"
#include "VeltoSecureURL_Doc.h"
#include "VeltoSecureURL_Subpath.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSaveFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

QUrl file(const QString &path)
{
    return QUrl::fromLocalFile(path);
}

bool save(const QString &path, const QByteArray &contents = "text")
{
    QSaveFile saved(path); // a new file renamed over the old one, as editors save
    return saved.open(QIODevice::WriteOnly) && saved.write(contents) == contents.size() && saved.commit();
}

std::shared_ptr<VeltoSecureURL> capture(const QString &path, bool readOnly = false)
{
    return VeltoSecureURL::initCapturingBookmarkForURL(file(path), readOnly);
}

// The registry's count for the place at \a path; 0 when it has no entry.
qint64 countOf(const QString &path)
{
    qint64 count = 0;
    VeltoSecureURL::accessGlobalOpenURLInfos([&](VeltoSecureURL::OpenURLInfoList &infos) {
        for (const auto &info : std::as_const(infos))
            count += info->accessedURL() == file(path) ? info->accessCount() : 0;
    });
    return count;
}

} // namespace

// The error presenter of accessWithFlagsErrorPresenter(): keeps what it is given.
class ErrorKeeper : public QObject
{
    Q_OBJECT
public:
    VeltoError kept;
public slots:
    void presentError(const VeltoError &error) { kept = error; }
};

class SecureURLTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        root = std::make_unique<QTemporaryDir>();
        folder = root->filePath(u"folder"_s);
        inner = folder + u"/inner"_s;
        a = folder + u"/a.txt"_s;
        b = inner + u"/b.txt"_s;
        QVERIFY(QDir().mkpath(inner) && save(a) && save(b));
        sandbox = SandboxSimulation::install();
    }

    void cleanup()
    {
        // Every test gives back all it opened.
        QCOMPARE(VeltoSecureURL::openURLs(), QList<QUrl>());
        QCOMPARE(sandbox->openGrants(), 0);
        VeltoBookmarkPlatform::install(nullptr);
    }

    void sharedPlacesShareOneGrant()
    {
        const auto first = capture(a);
        const auto second = capture(a);
        QVERIFY(first && second && first != second);
        QCOMPARE(first->startAccessingWithFlags({}), file(a));
        QCOMPARE(capture(a), first); // a capture of an open place is that object, its count unchanged
        QCOMPARE(first->openCount(), 1);
        QVERIFY(capture(a, true) != first); // other flags, another object
        QCOMPARE(second->startAccessingWithFlags({}), file(a));
        QCOMPARE(countOf(a), 2);
        first->stopAccessing();
        QCOMPARE(countOf(a), 1);
        QCOMPARE(sandbox->calls(a), u"1 started, 0 stopped, 1 open"_s);
        second->stopAccessing();
        QCOMPARE(sandbox->calls(a), u"1 started, 1 stopped, 0 open"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"stopAccessing: no access is open for VeltoSecureURL<"_s));
        second->stopAccessing();
    }

    void refusalsFallBackAsTheRulesSay()
    {
        // Refused inside an open folder: counted on the folder's entry.
        sandbox->refuse(a);
        const auto folderURL = capture(folder);
        const auto fileURL = capture(a);
        QCOMPARE(folderURL->startAccessingWithFlags({}), file(folder));
        QCOMPARE(fileURL->startAccessingWithFlags({}), file(a));
        QCOMPARE(VeltoSecureURL::openURLs(), QList<QUrl>{file(folder)});
        QCOMPARE(countOf(folder), 2);
        fileURL->stopAccessing();
        QCOMPARE(countOf(folder), 1);
        folderURL->stopAccessing();
        // Refused with nothing open around it but readable: an entry of its own, whose last stop still reaches the sandbox.
        QCOMPARE(fileURL->startAccessingWithFlags({}), file(a));
        QCOMPARE(VeltoSecureURL::openURLs(), QList<QUrl>{file(a)});
        fileURL->stopAccessing();
        QCOMPARE(sandbox->calls(a), u"2 started, 1 stopped, 0 open"_s);
        // Refused and gone by the time the sandbox answered: denied, and the placeholder still takes a stop.
        // Through a folder's bookmark, the text names the folder too.
        sandbox->refuse(inner, [this] { QDir(inner).removeRecursively(); });
        const auto denied = VeltoSecureURL::initUsingParentFolderSecureURL(capture(inner), file(b));
        VeltoError error;
        QVERIFY(denied->startAccessingWithFlags({}, &error).isEmpty());
        QVERIFY(error.isErrorDomainVelto(VeltoPOSIXErrorDomain, 1));
        QCOMPARE(error.localizedDescription(), u"The Mac system sandbox denied secureurltest access to the file:\n\n%1\n\n"
                                               "Authorization attempted using bookmark data for:\n%2"_s.arg(b, inner));
        QCOMPARE(denied->lastResolutionSuccessful(), -1);
        QCOMPARE(denied->openCount(), 1);
        denied->stopAccessing();
        QCOMPARE(denied->openCount(), 0);
        QCOMPARE(sandbox->calls(inner), u"1 started, 0 stopped, 0 open"_s);
    }

    void matchingPrefersTheInnermostPlace()
    {
        const auto outer = capture(folder);
        const auto middle = capture(inner);
        const auto own = capture(b);
        QVERIFY(!outer->startAccessingWithFlags({}).isEmpty() && !middle->startAccessingWithFlags({}).isEmpty());
        QString subpath;
        QCOMPARE(VeltoSecureURL::matchExistingOpenSecureURLForURL(file(b), &subpath), middle);
        QCOMPARE(subpath, u"b.txt"_s);
        QCOMPARE(VeltoSecureURL::matchExistingOpenSecureURLForURL(file(folder + u"/INNER/B.TXT/c"_s), &subpath), middle);
        QCOMPARE(subpath, u"B.TXT/c"_s); // letter case ignored, the URL's own kept
        QVERIFY(!own->startAccessingWithFlags({}).isEmpty());
        QCOMPARE(VeltoSecureURL::matchExistingOpenSecureURLForURL(file(b), &subpath), own);
        QCOMPARE(subpath, u""_s);
        QVERIFY(!VeltoSecureURL::matchExistingOpenInfoForURL(file(root->path()), &subpath));
        QVERIFY(subpath.isNull());
        QTest::ignoreMessage(QtInfoMsg, "OPEN SECURE URLs: ");
        for (const QString &place : {folder, inner, b})
            QTest::ignoreMessage(QtInfoMsg, qPrintable(u"*****************\n%1\n(open access count 1)"_s.arg(place)));
        VeltoSecureURL::debugState();
        for (const auto &url : {own, middle, outer})
            url->stopAccessing();
    }

    void subpathReferences()
    {
        const auto parent = capture(folder);
        QVERIFY(!parent->startAccessingWithFlags({}).isEmpty());
        // A file that cannot be captured inside an open folder is reached through it; the capture's error stays.
        const QString later = folder + u"/later.txt"_s;
        VeltoError error;
        const auto viaFolder = std::dynamic_pointer_cast<VeltoSecureURL_Subpath>(
            VeltoSecureURL::initCapturingBookmarkForURL(file(later), true, &error));
        QVERIFY(viaFolder);
        QCOMPARE(error.localizedDescription(), u"Bookmark data could not be captured for a file.\n\n%1\n\nUnderlying error: "
                                               "the file does not exist: %1"_s.arg(later));
        QCOMPARE(viaFolder->subpathFragment(), u"later.txt"_s);
        QCOMPARE(viaFolder->captureFlags(), parent->captureFlags());
        QCOMPARE(viaFolder->unresolvedFilePath(), later);
        QVERIFY(save(later));
        QCOMPARE(viaFolder->startAccessingWithFlags({}), file(later));
        QCOMPARE(countOf(folder), 2); // counted on the folder
        viaFolder->stopAccessing();
        // Its target deleted: nothing, -1, and the folder is still handed out.
        QVERIFY(QFile::remove(later));
        QUrl bookmarked;
        QVERIFY(viaFolder->resolvedURLWithFlagsGetBookmarkedURL({}, &bookmarked, &error).isEmpty());
        QCOMPARE(bookmarked, file(folder));
        QCOMPARE(viaFolder->lastResolutionSuccessful(), -1);
        QVERIFY(error.isErrorNoSuchFileVelto());
        // A stored subpath comes back as a subpath.
        QCOMPARE(VeltoSecureURL::initWithSerializedData(viaFolder->serializationStorableGlobally())->subpathFragment(), u"later.txt"_s);
        parent->stopAccessing();

        // The three ways a parent can fail its child.
        QVERIFY(!VeltoSecureURL::initUsingParentFolderSecureURL(capture(folder), file(root->path()), &error));
        QCOMPARE(error.localizedDescription(),
                 u"Parent folder:\n%1\n\nDoes not actually enclose the target:\n%2"_s.arg(folder, root->path()));
        const auto empty = VeltoSecureURL::initWithSerializedData(QByteArray());
        QVERIFY(!VeltoSecureURL::initUsingParentFolderSecureURL(empty, file(a), &error));
        QCOMPARE(error.localizedDescription(), u"Parent folder does not have bookmark data:\n\n"_s + empty->description());
        const auto gone = capture(inner);
        QVERIFY(QDir(inner).removeRecursively());
        QVERIFY(!VeltoSecureURL::initUsingParentFolderSecureURL(gone, file(b), &error));
        QVERIFY(error.isErrorDomainVelto(VeltoCoreErrorDomain, VeltoCoreErrorSecurityScope));
        QCOMPARE(error.localizedDescription(), u"Parent folder resolves to nil for targetted file:\n\n"_s + b);
    }

    void accessFormsAlwaysStop()
    {
        const auto url = capture(a);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, url->accessWithFlags({}, nullptr, [](const QUrl &) {
            throw std::runtime_error("block failed");
        }));
        QCOMPARE(url->openCount(), 0);
        std::function<void()> completion;
        QVERIFY(url->accessWithFlagsAsyncUsing({}, nullptr, [&](const QUrl &, const std::function<void()> &done) { completion = done; }));
        QCOMPARE(countOf(a), 1);
        completion();
        completion(); // once is enough
        QCOMPARE(url->openCount(), 0);
        QVERIFY(url->isAccessibleWithFlags({}));

        QVERIFY(QFile::remove(a));
        QStringList seen;
        QVERIFY(!url->accessWithFlagsUsing({}, [&](const QUrl &to, const VeltoError &error) {
            seen << to.toString() << QString::number(error.code());
        }));
        QCOMPARE(seen, (QStringList{QString(), u"260"_s}));
        ErrorKeeper keeper;
        QVERIFY(!url->accessWithFlagsErrorPresenter({}, &keeper, {}));
        QVERIFY(keeper.kept.isErrorNoSuchFileVelto());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^\\*\\*\\* the file does not exist: "_s));
        QVERIFY(!url->accessWithFlagsErrorPresenter(VeltoSecureURLAccessAllowUI, nullptr, {}));
        QCOMPARE(url->openCount(), 0);
    }

    void releasedWhileOpenGivesGrantsBack()
    {
        const auto first = capture(folder);
        QVERIFY(!first->startAccessingWithFlags({}).isEmpty());
        auto second = capture(folder, true);
        auto viaFolder = VeltoSecureURL::initUsingParentFolderSecureURL(first, file(b));
        QVERIFY(!second->startAccessingWithFlags({}).isEmpty() && !second->startAccessingWithFlags({}).isEmpty());
        QVERIFY(!viaFolder->startAccessingWithFlags({}).isEmpty());
        QCOMPARE(countOf(folder), 4);
        second.reset();
        viaFolder.reset();
        QCOMPARE(countOf(folder), 1);
        QCOMPARE(sandbox->calls(folder), u"1 started, 0 stopped, 1 open"_s);
        first->stopAccessing();
    }

    void outsideTheSandboxNothingIsCounted()
    {
        const auto readOnly = capture(a, true);
        QCOMPARE(readOnly->captureFlags(), VeltoSecureURLCaptureReadOnly);
        // Inside, a read-only capture still asks for a grant that reads and writes.
        QCOMPARE(VTBookmarkRecord::decoded(readOnly->appleBookmarkData())->options, VeltoBookmarkCreationWithSecurityScope);
        // The running program's own folder is never counted.
        const auto own = capture(QCoreApplication::applicationFilePath());
        QVERIFY(own->captureFlags().testFlag(VeltoSecureURLCaptureUnscoped));
        QCOMPARE(VTBookmarkRecord::decoded(own->appleBookmarkData())->options, 0u);
        QVERIFY(!own->startAccessingWithFlags({}).isEmpty());
        QCOMPARE(own->openCount(), 1);
        QVERIFY(VeltoSecureURL::openURLs().isEmpty());
        own->stopAccessing();

        sandbox = SandboxSimulation::install(false);
        const auto outside = capture(a);
        QCOMPARE(VTBookmarkRecord::decoded(outside->appleBookmarkData())->options, 0u);
        QCOMPARE(outside->startAccessingWithFlags({}), file(a));
        outside->stopAccessing();
        QCOMPARE(sandbox->calls(a), u"0 started, 0 stopped, 0 open"_s);
    }

    void namesDescriptionAndEquality()
    {
        const auto url = capture(a);
        QCOMPARE(url->unresolvedFileName(), u"a.txt"_s);
        QVERIFY(QRegularExpression(u"^VeltoSecureURL<0x[0-9a-f]+> open count 0, for \\{unresolved bookmark for %1\\}$"_s
                                       .arg(QRegularExpression::escape(a)))
                    .match(url->description()).hasMatch());
        QCOMPARE(url->resolvedURL(), file(a));
        QVERIFY(url->description().endsWith(u"open count 0, for "_s + a));
        QVERIFY(VeltoSecureURL::initUsingParentFolderSecureURL(capture(folder), file(b))->description().startsWith(u"VeltoSecureURL_Subpath<"_s));
        QCOMPARE(capture(u"/"_s)->unresolvedFilePath(), QString());

        // Same path: equal, unless one failed to resolve; then their bookmarks decide.
        const auto same = capture(a);
        const auto relative = VeltoSecureURL_Doc::initDocumentScopedCapturingBookmarkForURL(file(a), false, file(b));
        QVERIFY(*url == *same && *url == *relative);
        url->setLastResolvedURL(file(a), -1);
        QVERIFY(*url == *same && !(*url == *relative) && !(*url == *capture(b)));
    }

    void errorTexts()
    {
        VeltoError error;
        QVERIFY(VeltoSecureURL::bookmarkDataForTargetURL(QUrl(), QUrl(), 0, &error).isNull());
        QCOMPARE(error.localizedDescription(), u"Trying to capture security-scoped bookmark data for nil target URL."_s);
        QVERIFY(error.isErrorDomainVelto(VeltoPOSIXErrorDomain, 22));

        // Unreadable bookmark data: the invalid-data text, with the file's path when the object knows one.
        const auto garbage = VeltoSecureURL::initWithSerializedData("not a bookmark");
        QVERIFY(garbage->resolvedURLWithFlags({}, &error).isEmpty());
        QVERIFY(error.isErrorDomainVelto(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData));
        QCOMPARE(error.localizedDescription(), u"Bookmark data previously captured for a file is invalid."_s);
        garbage->setLastResolvedURL(file(a));
        QVERIFY(garbage->resolveBookmarkedURLUncachedWithFlags({}, &error).isEmpty());
        QCOMPARE(error.localizedDescription(), u"Bookmark data previously captured for a file is invalid.\nFile path: "_s + a);
        garbage->setLastResolvedURL(file(a + u".gone"_s));
        QVERIFY(garbage->resolveBookmarkedURLUncachedWithFlags({}, &error).isEmpty());
        QCOMPARE(error.code(), VeltoCocoaErrorFileReadNoSuchFile); // the file's own reachability error
        const auto namedOnly = VeltoSecureURL_Subpath::initWithAppleBookmarkData("not a bookmark", u"x/notes.txt"_s);
        QVERIFY(namedOnly->resolvedURLWithFlags({}, &error).isEmpty());
        QCOMPARE(error.localizedDescription(), u"Bookmark data previously captured for a file is invalid.\nFile: notes.txt"_s);

        // Data that cannot be read is still what the object stores.
        QCOMPARE(VeltoSecureURL::initWithSerializedData("VeltoDatabplist00 cut")->serializationStorableGlobally(), "VeltoDatabplist00 cut");

        QVERIFY(!VeltoSecureURL::readFinderAliasFromURL(file(a), &error));
        QCOMPARE(error.localizedDescription(), u"File alias is missing security-scoped bookmark data in extended attributes."_s);
    }

    void aliasFiles()
    {
        const auto url = capture(a, true);
        const QString alias = root->filePath(u"a."_s + VeltoSecureURL_AliasFileExtension);
        VeltoError error;
        QVERIFY2(url->writeFinderAliasToURL(file(alias), &error), qPrintable(error.description()));
        QByteArray attribute;
        QVERIFY(VeltoFileManager::readExtendedAttribute(VeltoSecureURL_AliasAttributeName, nullptr, &attribute, file(alias)));
        QCOMPARE(attribute, url->serializationStorableGlobally());
        const auto platform = VeltoBookmarkPlatform::installed();
        QCOMPARE(VTBookmarkRecord::decoded(platform->bookmarkDataWithContentsOfURL(file(alias)))->options,
                 VeltoBookmarkCreationSuitableForBookmarkFile);
        const auto back = VeltoSecureURL::readFinderAliasFromURL(file(alias));
        QCOMPARE(back->resolvedURL(), file(a));
        QCOMPARE(back->captureFlags(), VeltoSecureURLCaptureReadOnly);
        QVERIFY(platform->bookmarkDataWithContentsOfURL(file(a), &error).isNull());
        QCOMPARE(error.code(), VeltoCocoaErrorFileReadCorruptFile);
        QVERIFY(!url->writeFinderAliasToURL(file(root->filePath(u"missing/x.alias"_s)), &error));
        QCOMPARE(error.code(), VeltoCocoaErrorFileWriteUnknown);
    }

    void correctionsAndSubfolders()
    {
        const auto url = capture(a);
        const auto other = capture(b, true);
        QVERIFY(!url->startAccessingWithFlags({}).isEmpty());
        const QByteArray before = url->appleBookmarkData();
        url->setCorrectedSecureURL(other);
        QCOMPARE(url->appleBookmarkData(), before); // never while in use
        url->stopAccessing();
        url->setCorrectedSecureURL(other);
        QCOMPARE(url->appleBookmarkData(), other->serializationStorableGlobally());
        QCOMPARE(url->lastResolvedURL(), file(b));
        QCOMPARE(url->lastResolutionSuccessful(), 1);

        const auto parent = capture(folder);
        VeltoError error;
        QVERIFY(!parent->secureURLForSubfolderWithName(u"made"_s, false, &error));
        QVERIFY(error.isNull());
        QCOMPARE(parent->secureURLForSubfolderWithName(u"made/deeper"_s, true, &error)->resolvedURL(), file(folder + u"/made/deeper"_s));
        QCOMPARE(parent->secureURLForSubfolderWithName(u"inner"_s, false)->resolvedURL(), file(inner));
    }

    void documentScopedReferences()
    {
        const QString document = folder + u"/report.doc"_s;
        QVERIFY(!VeltoSecureURL_Doc::initDocumentScopedWithSerializedData("x", QUrl()));
        QVERIFY(!VeltoSecureURL_Doc::initWithSerializedData("x"));
        const auto url = VeltoSecureURL_Doc::initDocumentScopedCapturingBookmarkForURL(file(b), false, file(document));
        QCOMPARE(VTBookmarkRecord::decoded(url->appleBookmarkData())->documentRelativePath, u"inner/b.txt"_s);
        const QByteArray stored = url->serializationStorableInDocumentWithURL(file(document));
        QCOMPARE(url->serializationStorableInDocumentWithURL(QUrl()), QByteArray());
        QCOMPARE(VTBookmarkRecord::decoded(url->serializationStorableGlobally())->documentRelativePath, QString());
        // The document moves with its files: found beside it.
        const QString moved = root->filePath(u"moved"_s);
        QVERIFY(QFile::rename(folder, moved));
        const auto back = VeltoSecureURL_Doc::initDocumentScopedWithSerializedData(stored, file(moved + u"/report.doc"_s));
        QCOMPARE(back->resolvedURL(), file(moved + u"/inner/b.txt"_s));
        QVERIFY(VeltoSecureURL::initWithSerializedData(stored)->resolvedURL().isEmpty()); // without its document, lost
    }

    void userDefaultsShareOneObjectPerKey()
    {
        VeltoTestDefaults defaults;
        velto::secureURLCacheVelto().removeAllObjects();
        QCOMPARE(velto::secureURLCacheVelto().name(), u"com.velto.cache.userDefaults.secureURLs"_s);
        const auto url = capture(a);
        QVERIFY(velto::setVeltoSecureURL(*defaults.store, url, u"recent"_s));
        QCOMPARE(defaults->objectForKey(u"recent"_s).toByteArray(), url->serializationStorableGlobally());
        QCOMPARE(velto::veltoSecureURLForKey(*defaults.store, u"recent"_s), url);
        velto::secureURLCacheVelto().removeAllObjects(); // as memory pressure would
        const auto rebuilt = velto::veltoSecureURLForKey(*defaults.store, u"recent"_s);
        QVERIFY(rebuilt != url && *rebuilt == *url);
        QCOMPARE(velto::veltoSecureURLForKey(*defaults.store, u"recent"_s), rebuilt);
        // No serialization: cached, while the store keeps what it had.
        const auto empty = VeltoSecureURL::initWithSerializedData(QByteArray());
        VeltoError error;
        QVERIFY(!velto::setVeltoSecureURL(*defaults.store, empty, u"recent"_s, &error));
        QCOMPARE(error.localizedDescription(), u"Security-scoped serialization data is nil."_s);
        QCOMPARE(velto::veltoSecureURLForKey(*defaults.store, u"recent"_s), empty);
        QCOMPARE(defaults->objectForKey(u"recent"_s).toByteArray(), url->serializationStorableGlobally());
        QVERIFY(velto::setVeltoSecureURL(*defaults.store, nullptr, u"recent"_s));
        QVERIFY(!defaults->objectForKey(u"recent"_s).isValid() && !velto::veltoSecureURLForKey(*defaults.store, u"recent"_s));
    }

    void anotherProcessesReference_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("expected"); // the path found, relative to the folder; empty when none
        QTest::addColumn<bool>("stale");
        QTest::newRow("unchanged") << "" << "a.txt" << false;
        QTest::newRow("renamed in its folder") << "mv a.txt b.txt" << "b.txt" << true;
        QTest::newRow("replaced by an atomic save") << "save a.txt" << "a.txt" << true;
        QTest::newRow("saved keeping a backup") << "mv a.txt a.txt~|save a.txt" << "a.txt" << true;
        QTest::newRow("moved into a subfolder") << "mv a.txt inner/c.txt" << "inner/c.txt" << true;
        QTest::newRow("moved to another folder") << "mv a.txt ../elsewhere.txt" << "" << false;
        QTest::newRow("deleted") << "rm a.txt" << "" << false;
    }

    void anotherProcessesReference()
    {
        QFETCH(QString, change);
        QFETCH(QString, expected);
        QFETCH(bool, stale);
        QProcess helper;
        helper.start(QStringLiteral(VELTO_BOOKMARK_HELPER), {a});
        QVERIFY(helper.waitForFinished(30000) && helper.exitCode() == 0);
        const QByteArray stored = QByteArray::fromBase64(helper.readAllStandardOutput().trimmed());
        const QDir at(folder);
        for (const QString &step : change.split(u'|', Qt::SkipEmptyParts)) {
            const QStringList words = step.split(u' ');
            QVERIFY(words[0] == u"mv" ? QFile::rename(at.filePath(words[1]), at.filePath(words[2]))
                    : words[0] == u"rm" ? QFile::remove(at.filePath(words[1])) : save(at.filePath(words[1])));
        }
        const auto url = VeltoSecureURL::initWithSerializedData(stored);
        VeltoError error;
        const QUrl resolved = url->resolvedURLWithFlags({}, &error);
        QCOMPARE(resolved.toLocalFile(), expected.isEmpty() ? QString() : QDir::cleanPath(at.filePath(expected)));
        QCOMPARE(url->appleBookmarkData() != VeltoSecureURLSerialization::initWithSerializationData(stored)->appleBookmarkData(), stale);
        QCOMPARE(url->serializationStorableGlobally(), stored); // a refreshed bookmark keeps the bytes it was made from
        if (expected.isEmpty()) {
            QCOMPARE(error.localizedDescription(), u"the file does not exist: "_s + a);
            QCOMPARE(url->lastResolutionSuccessful(), -1);
        }
    }

private:
    std::unique_ptr<QTemporaryDir> root;
    std::shared_ptr<SandboxSimulation> sandbox;
    QString folder, a, inner, b;
};

QTEST_GUILESS_MAIN(SecureURLTest)
#include "secureurltest.moc"
