// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTWatchedFileInfo_p.h"
#include "VeltoFileWatcher.h"

#include "watchertestsupport.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 EveryAction = 0x7f;

} // namespace

// A delegate recording "action path" for each call.
class Listener : public QObject
{
    Q_OBJECT

public:
    QStringList heard;
    VeltoFileWatcher *watcherSeen = nullptr;
    bool offMainThread = false;

public slots:
    void fileWatcher(VeltoFileWatcher *watcher, quint32 action, const QString &path)
    {
        watcherSeen = watcher;
        offMainThread = offMainThread || QThread::currentThread() != QCoreApplication::instance()->thread();
        heard << u"%1 %2"_s.arg(action).arg(path);
    }
};

class FileWatcherTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void delegateHearsEachActionBit();
    void onlyTheMostRecentTokenOfAPathHears();
    void removingATokenEndsTheFirstRegistrationOfItsPath();
    void actionsChooseTheKindsAndHigherBitsAreIgnored_data();
    void actionsChooseTheKindsAndHigherBitsAreIgnored();
    void followingAtomicSaves();
    void missingFilesGetNoToken();
    void description();

private:
    // Changes the sentinel and waits for it: what the other process changed before has been heard by then.
    [[nodiscard]] bool settle(VeltoFileWatcher &watcher, Listener &listener)
    {
        if (!sentinelToken)
            sentinelToken = watcher.addFileAtPath(sentinel, VeltoFileWatcherActionAttributeChange, &listener);
        const QString heard = u"%1 %2"_s.arg(VeltoFileWatcherActionAttributeChange).arg(sentinel);
        const bool settled = runFileChanger({u"chmod"_s, sentinel, u"600"_s}).isEmpty()
            && runEventLoopUntil([&] { return listener.heard.contains(heard); });
        listener.heard.removeAll(heard);
        return settled;
    }
    QString entry(quint32 action, const QString &path) const { return u"%1 %2"_s.arg(action).arg(path); }
    // A watcher of the test's own; destroying it (at the end of the test) logs the queue's farewell.
    std::unique_ptr<VeltoFileWatcher> makeWatcher()
    {
        QTest::ignoreMessage(QtWarningMsg, "*** FWKQueue thread termination disabled!");
        return std::make_unique<VeltoFileWatcher>();
    }

    std::unique_ptr<QTemporaryDir> dir;
    std::shared_ptr<VTWatchedFileInfo> sentinelToken;
    QString watched, sentinel;
};

void FileWatcherTest::init()
{
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
    watched = dir->filePath(u"watched.txt"_s);
    sentinel = dir->filePath(u"sentinel"_s);
    for (const QString &file : {watched, sentinel}) {
        QFile out(file);
        QVERIFY(out.open(QIODevice::WriteOnly) && out.write("hello world\n") == 12);
    }
    sentinelToken.reset();
}

void FileWatcherTest::delegateHearsEachActionBit()
{
    const auto watcher = makeWatcher();
    Listener listener;
    const auto token = watcher->addFileAtPath(watched, EveryAction, &listener);
    QVERIFY(token);
    QCOMPARE(token->path(), watched);
    QCOMPARE(token->delegate(), &listener);
    QCOMPARE(runFileChanger({u"append"_s, watched, u"more"_s}), QString());
    QVERIFY(settle(*watcher, listener));
    QCOMPARE(listener.heard, (QStringList{entry(VeltoFileWatcherActionWrite, watched),
                                          entry(VeltoFileWatcherActionSizeIncrease, watched)}));
    QCOMPARE(listener.watcherSeen, watcher.get());
    QVERIFY(!listener.offMainThread);

    listener.heard.clear();
    QCOMPARE(runFileChanger({u"unlink"_s, watched}), QString());
    QVERIFY(settle(*watcher, listener));
    QCOMPARE(listener.heard, (QStringList{entry(VeltoFileWatcherActionDelete, watched),
                                          entry(VeltoFileWatcherActionLinkCountChange, watched)}));
}

void FileWatcherTest::onlyTheMostRecentTokenOfAPathHears()
{
    const auto watcher = makeWatcher();
    Listener first, second;
    QVERIFY(watcher->addFileAtPath(watched, VeltoFileWatcherActionWrite, &first));
    QVERIFY(watcher->addFileAtPath(watched, VeltoFileWatcherActionWrite, &second));
    QCOMPARE(runFileChanger({u"append"_s, watched, u"x"_s}), QString());
    QVERIFY(settle(*watcher, second));
    QVERIFY(first.heard.isEmpty());
    // Two registrations, two reports, both to the newest token's delegate.
    QCOMPARE(second.heard, QStringList(2, entry(VeltoFileWatcherActionWrite, watched)));
}

void FileWatcherTest::removingATokenEndsTheFirstRegistrationOfItsPath()
{
    const auto watcher = makeWatcher();
    // The first token asks for attribute changes, the second for writes. Removing the second ends the
    // path's first registration (attributes): the writes registration stays, and its changes now go to
    // the first token's delegate, the only one left.
    Listener first, second;
    const auto attributes = watcher->addFileAtPath(watched, VeltoFileWatcherActionAttributeChange, &first);
    const auto writes = watcher->addFileAtPath(watched, VeltoFileWatcherActionWrite, &second);
    watcher->removeFileWithToken(writes);
    watcher->removeFileWithToken(writes); // gone already: nothing
    watcher->removeFileWithToken(nullptr);
    QCOMPARE(runFileChanger({u"chmod"_s, watched, u"600"_s}), QString());
    QVERIFY(settle(*watcher, first));
    QCOMPARE(runFileChanger({u"append"_s, watched, u"x"_s}), QString());
    QVERIFY(settle(*watcher, first));
    QCOMPARE(first.heard, QStringList{entry(VeltoFileWatcherActionWrite, watched)});
    QVERIFY(second.heard.isEmpty());
    watcher->removeFileWithToken(attributes);
}

void FileWatcherTest::actionsChooseTheKindsAndHigherBitsAreIgnored_data()
{
    QTest::addColumn<quint32>("actions");
    QTest::addColumn<QList<quint32>>("expected");
    // The changes: a chmod, an append, a hard link and a rename, each settled before the next.
    QTest::newRow("everything") << EveryAction
                                << QList<quint32>{VeltoFileWatcherActionAttributeChange, VeltoFileWatcherActionWrite,
                                                  VeltoFileWatcherActionSizeIncrease,
                                                  VeltoFileWatcherActionLinkCountChange, VeltoFileWatcherActionRename};
    QTest::newRow("rename and links") << quint32(VeltoFileWatcherActionRename | VeltoFileWatcherActionLinkCountChange)
                                      << QList<quint32>{VeltoFileWatcherActionLinkCountChange, VeltoFileWatcherActionRename};
    QTest::newRow("write and bits above 64") << quint32(VeltoFileWatcherActionWrite | 128 | 0x80000000)
                                             << QList<quint32>{VeltoFileWatcherActionWrite};
    QTest::newRow("only bits above 64") << quint32(128 | 256 | 0xffff0000) << QList<quint32>{};
}

void FileWatcherTest::actionsChooseTheKindsAndHigherBitsAreIgnored()
{
    const auto watcher = makeWatcher();
    QFETCH(quint32, actions);
    QFETCH(QList<quint32>, expected);
    Listener listener;
    QVERIFY(watcher->addFileAtPath(watched, actions, &listener));
    const QList<QStringList> changes{
        {u"chmod"_s, watched, u"600"_s},
        {u"append"_s, watched, u"x"_s},
        {u"link"_s, watched, dir->filePath(u"other"_s)},
        {u"rename"_s, watched, dir->filePath(u"moved"_s)},
    };
    for (const QStringList &change : changes) {
        QCOMPARE(runFileChanger(change), QString());
        QVERIFY(settle(*watcher, listener));
    }
    QStringList expectedEntries;
    for (quint32 action : expected)
        expectedEntries << entry(action, watched);
    QCOMPARE(listener.heard, expectedEntries);
}

void FileWatcherTest::followingAtomicSaves()
{
    const auto watcher = makeWatcher();
    Listener listener;
    QVERIFY(watcher->addFileAtPath(watched, VeltoFileWatcherActionWrite | VeltoFileWatcherActionDelete, &listener,
                                   VeltoFileWatcher::Option::FollowAtomicSaves));
    QCOMPARE(runFileChanger({u"save"_s, watched, u"new contents"_s}), QString());
    QVERIFY(settle(*watcher, listener));
    QCOMPARE(runFileChanger({u"write"_s, watched, u"NEW"_s}), QString());
    QVERIFY(settle(*watcher, listener));
    QCOMPARE(listener.heard, QStringList(2, entry(VeltoFileWatcherActionWrite, watched)));
}

void FileWatcherTest::missingFilesGetNoToken()
{
    const auto watcher = makeWatcher();
    Listener listener;
    VeltoError error;
    QVERIFY(!watcher->addFileAtPath(dir->filePath(u"missing"_s), EveryAction, &listener, {}, &error));
    QCOMPARE(error.code(), ENOENT);
    QVERIFY(!watcher->addFileAtPath(QString(), EveryAction, &listener));
    QCOMPARE(watcher->description(), u"VeltoFileWatcher<0x%1> ()"_s.arg(quintptr(watcher.get()), 0, 16));
}

void FileWatcherTest::description()
{
    const auto watcher = makeWatcher();
    Listener listener;
    QVERIFY(watcher->addFileAtPath(watched, EveryAction, &listener));
    QVERIFY(watcher->addFileAtPath(sentinel, EveryAction, &listener));
    QCOMPARE(watcher->description(),
             u"VeltoFileWatcher<0x%1> (\"%2\", \"%3\")"_s.arg(quintptr(watcher.get()), 0, 16).arg(watched, sentinel));
    QVERIFY(VeltoFileWatcher::instance());
    QCOMPARE(VeltoFileWatcher::instance(), VeltoFileWatcher::instance());
}

QTEST_GUILESS_MAIN(FileWatcherTest)
#include "filewatchertest.moc"
