// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFileManager.h"
#include "fileaccess.h"

#include "Url+VeltoAdditions.h"
#include "VeltoRandom.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

bool makeFile(const QString &path, QFileDevice::Permissions permissions = QFileDevice::ReadOwner | QFileDevice::WriteOwner,
              const QByteArray &contents = "contents")
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size() && file.setPermissions(permissions);
}

bool setMode(const QString &path, mode_t mode)
{
    return ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

// The log lines of the library written while it is alive, warnings and information alike.
class LogCapture
{
public:
    LogCapture() { previous = qInstallMessageHandler(&LogCapture::handle); }
    ~LogCapture() { qInstallMessageHandler(previous); }
    static inline QStringList lines;

private:
    static void handle(QtMsgType, const QMessageLogContext &, const QString &message) { lines << message; }
    QtMessageHandler previous = nullptr;
};

} // namespace

class FileManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void folders();
    void applicationSupportFolders();
    void effectivelyEmptyFolders();
    void tildeAbbreviation_data();
    void tildeAbbreviation();
    void accessChecks_data();
    void accessChecks();
    void writeTestOpensTheFile();
    void posixPermissions_data();
    void posixPermissions();
    void hiddenItems();
    void uniqueNames_data();
    void uniqueNames();
    void uniqueNamesTurnRandom();
    void uniqueNamesGiveUp();
    void uniquePathsAndTemporaryItems();

private:
    QString m_home;
    QTemporaryDir m_fakeHome;
    QTemporaryDir m_shared; // reachable by the helper's other user
};

void FileManagerTest::initTestCase()
{
    QVERIFY(m_fakeHome.isValid() && m_shared.isValid());
    qputenv("HOME", QFile::encodeName(m_fakeHome.path()));
    const passwd *entry = getpwuid(getuid());
    if (!entry)
        QSKIP("no password entry for this user");
    m_home = QFile::decodeName(entry->pw_dir);
    QCoreApplication::setOrganizationDomain(u"tests.velto.com"_s);
    QCoreApplication::setApplicationName(u"FileManagerTest"_s);
    qunsetenv("FLATPAK_ID");
    QVERIFY(setMode(m_shared.path(), 0755));
}

void FileManagerTest::cleanupTestCase()
{
    // Folders the access rows closed must open again for the temporary folder to go.
    QDirIterator items(m_shared.path(), QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    (void)setMode(m_shared.path() + u"/closed"_s, 0755);
    while (items.hasNext())
        (void)setMode(items.next(), 0755);
}

void FileManagerTest::folders()
{
    QCOMPARE(VeltoFileManager::userHomeFolderURL().toLocalFile(), m_home + u'/');
    QCOMPARE(VeltoFileManager::userLibraryFolderURL().toLocalFile(), m_home + u"/.var/"_s);
    QCOMPARE(VeltoFileManager::sandboxContainersFolderURL().toLocalFile(), m_home + u"/.var/app/"_s);
    const QString container = m_home + u"/.var/app/com.velto.tests.FileManagerTest/"_s;
    QCOMPARE(VeltoFileManager::applicationSandboxFolderURL().toLocalFile(), container);
    // Kept for the life of the process, whatever the application becomes.
    QCoreApplication::setOrganizationDomain(u"other.example.org"_s);
    QCOMPARE(VeltoFileManager::applicationSandboxFolderURL().toLocalFile(), container);
    QCoreApplication::setOrganizationDomain(u"tests.velto.com"_s);

    QVERIFY(VeltoFileManager::isFileInsideSandboxAtURL(QUrl::fromLocalFile(container + u"data/notes.txt"_s)));
    QVERIFY(VeltoFileManager::isFileInsideSandboxAtURL(QUrl::fromLocalFile(container)));
    QVERIFY(!VeltoFileManager::isFileInsideSandboxAtURL(QUrl::fromLocalFile(m_home + u"/Documents/notes.txt"_s)));
    QVERIFY(!VeltoFileManager::isFileInsideSandboxAtURL(QUrl(u"https://example.com/"_s)));
    QVERIFY(VeltoFileManager::isItemInsideDocumentRevisionsFolderAtURL(QUrl::fromLocalFile(u"/.DocumentRevisions-V100/a"_s)));
    QVERIFY(!VeltoFileManager::isItemInsideDocumentRevisionsFolderAtURL(QUrl::fromLocalFile(u"/DocumentRevisions/a"_s)));
}

void FileManagerTest::applicationSupportFolders()
{
    QTemporaryDir data;
    qputenv("XDG_DATA_HOME", QFile::encodeName(data.path()));
    const QString product = data.path() + u"/FileManagerTest/"_s;
    QCOMPARE(VeltoFileManager::applicationSupportProductFolderURLWithCreate(false).toLocalFile(), product);
    QVERIFY(!QFileInfo::exists(product));
    QCOMPARE(VeltoFileManager::applicationSupportProductFolderURL().toLocalFile(), product);
    QVERIFY(QFileInfo(product).isDir());
    VeltoError error;
    const QUrl caches = VeltoFileManager::applicationSupportSubfolderURLWithName(u"Caches/Thumbnails"_s, true, &error);
    QCOMPARE(caches.toLocalFile(), product + u"Caches/Thumbnails/"_s);
    QVERIFY(QFileInfo(caches.toLocalFile()).isDir());
    QVERIFY(error.isNull());

    // A data folder that cannot be made: the URL still comes back, with the error, and one log line per process.
    QVERIFY(makeFile(data.filePath(u"blocker"_s)));
    qputenv("XDG_DATA_HOME", QFile::encodeName(data.filePath(u"blocker/data"_s)));
    const QString blocked = data.filePath(u"blocker/data/FileManagerTest/"_s);
    {
        LogCapture capture;
        QCOMPARE(VeltoFileManager::applicationSupportProductFolderURLWithCreate(true, &error).toLocalFile(), blocked);
        QCOMPARE(error.domain(), VeltoPOSIXErrorDomain);
        QCOMPARE(error.code(), ENOTDIR);
        VeltoError again;
        (void)VeltoFileManager::applicationSupportProductFolderURLWithCreate(true, &again);
        QCOMPARE(again, error);
        QCOMPARE(LogCapture::lines.filter(u"App Support"_s),
                 QStringList{u"* could not create App Support folder: "_s + error.description()});
    }
    VeltoError subfolderError;
    QVERIFY(VeltoFileManager::applicationSupportSubfolderURLWithName(u"Caches"_s, true, &subfolderError).isEmpty());
    QCOMPARE(subfolderError.code(), ENOTDIR);
    QCOMPARE(VeltoFileManager::applicationSupportSubfolderURLWithName(u"Caches"_s, false).toLocalFile(), blocked + u"Caches/"_s);
    QVERIFY(QFileInfo(data.filePath(u"blocker"_s)).isFile()); // nothing was made in its place
    qunsetenv("XDG_DATA_HOME");
}

void FileManagerTest::effectivelyEmptyFolders()
{
    QTemporaryDir root;
    const QDir folder(root.path());
    const auto empty = [&folder](const QString &name) {
        return VeltoFileManager::isFolderEffectivelyEmptyVeltoAtURL(QUrl::fromLocalFile(folder.filePath(name)));
    };
    QVERIFY(folder.mkpath(u"empty"_s) && folder.mkpath(u"settings"_s) && folder.mkpath(u"more"_s) && folder.mkpath(u"hidden"_s));
    QVERIFY(makeFile(folder.filePath(u"settings/.DS_Store"_s)));
    QVERIFY(makeFile(folder.filePath(u"more/.DS_Store"_s)) && makeFile(folder.filePath(u"more/a"_s)));
    QVERIFY(makeFile(folder.filePath(u"hidden/.directory"_s)));
    QVERIFY(makeFile(folder.filePath(u"file"_s)));
    QVERIFY(empty(u"empty"_s));
    QVERIFY(empty(u"settings"_s));
    QVERIFY(!empty(u"more"_s));
    QVERIFY(!empty(u"hidden"_s));
    QVERIFY(!empty(u"file"_s));
    QVERIFY(!empty(u"missing"_s));
}

void FileManagerTest::tildeAbbreviation_data()
{
    QTest::addColumn<QString>("path"); // "H" stands for the real home folder
    QTest::addColumn<QString>("abbreviated");
    QTest::addColumn<QString>("expanded");

    QTest::newRow("home") << u"H"_s << u"~"_s << u"H"_s;
    QTest::newRow("inside") << u"H/Documents/a.txt"_s << u"~/Documents/a.txt"_s << u"H/Documents/a.txt"_s;
    QTest::newRow("sibling with a longer name") << u"H2/x"_s << u"H2/x"_s << u"H2/x"_s;
    QTest::newRow("elsewhere") << u"/etc/hosts"_s << u"/etc/hosts"_s << u"/etc/hosts"_s;
    QTest::newRow("tilde alone") << u"~"_s << u"~"_s << u"H"_s;
    QTest::newRow("tilde path") << u"~/Documents/"_s << u"~/Documents/"_s << u"H/Documents"_s;
    QTest::newRow("another user's form") << u"~bob/x"_s << u"~bob/x"_s << u"H/bob/x"_s;
    QTest::newRow("empty") << u""_s << u""_s << u""_s;
}

void FileManagerTest::tildeAbbreviation()
{
    QFETCH(QString, path);
    QFETCH(QString, abbreviated);
    QFETCH(QString, expanded);
    const auto real = [this](QString text) { return text.startsWith(u'H') ? text.replace(0, 1, m_home) : text; };
    QCOMPARE(VeltoFileManager::pathByAbbreviatingRealHomeWithTilde(real(path)), real(abbreviated));
    QCOMPARE(VeltoFileManager::pathByExpandingTildeToRealHome(real(path)), real(expanded));
}

void FileManagerTest::accessChecks_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("readable"); // the helper's answers
    QTest::addColumn<QString>("writable");
    QTest::addColumn<QString>("writableTested");

    const QString readOnly = u"false NSCocoaErrorDomain 513 The file is read-only."_s;
    QTest::newRow("read and write") << u"rw.txt"_s << u"true"_s << u"true"_s << u"true"_s;
    QTest::newRow("read only") << u"r.txt"_s << u"true"_s << readOnly << readOnly;
    QTest::newRow("write only") << u"w.txt"_s << u"false NSCocoaErrorDomain 257 permission was denied: %1/w.txt"_s
                                << u"true"_s << u"true"_s;
    QTest::newRow("no permission") << u"none.txt"_s << u"false NSCocoaErrorDomain 257 permission was denied: %1/none.txt"_s
                                   << readOnly << readOnly;
    QTest::newRow("listable folder") << u"listable"_s << u"true"_s << readOnly << readOnly;
    QTest::newRow("folder that cannot be listed")
        << u"unlistable"_s << u"false NSPOSIXErrorDomain 13 Permission denied [NSPOSIXErrorDomain code 13]"_s << u"true"_s
        << u"true"_s;
    QTest::newRow("inside a closed folder") << u"closed/inside.txt"_s
                                            << u"false NSCocoaErrorDomain 257 permission was denied: %1/closed/inside.txt"_s
                                            << readOnly << readOnly;
    QTest::newRow("missing") << u"missing.txt"_s << u"false NSCocoaErrorDomain 260 the file does not exist: %1/missing.txt"_s
                             << readOnly << readOnly;
}

void FileManagerTest::accessChecks()
{
    QFETCH(QString, item);
    QFETCH(QString, readable);
    QFETCH(QString, writable);
    QFETCH(QString, writableTested);
    const QDir shared(m_shared.path());
    if (!QFileInfo::exists(shared.filePath(u"rw.txt"_s))) {
        QVERIFY(makeFile(shared.filePath(u"rw.txt"_s)) && setMode(shared.filePath(u"rw.txt"_s), 0666));
        QVERIFY(makeFile(shared.filePath(u"r.txt"_s)) && setMode(shared.filePath(u"r.txt"_s), 0444));
        QVERIFY(makeFile(shared.filePath(u"w.txt"_s)) && setMode(shared.filePath(u"w.txt"_s), 0222));
        QVERIFY(makeFile(shared.filePath(u"none.txt"_s)) && setMode(shared.filePath(u"none.txt"_s), 0));
        QVERIFY(shared.mkpath(u"listable"_s) && setMode(shared.filePath(u"listable"_s), 0555));
        QVERIFY(shared.mkpath(u"unlistable"_s) && setMode(shared.filePath(u"unlistable"_s), 0333));
        QVERIFY(shared.mkpath(u"closed"_s) && makeFile(shared.filePath(u"closed/inside.txt"_s))
                && setMode(shared.filePath(u"closed/inside.txt"_s), 0666) && setMode(shared.filePath(u"closed"_s), 0));
    }
    const QString helper = QStringLiteral(VELTO_FILE_ACCESS_HELPER);
    if (runFileAccessHelper(helper, {u"readable"_s, m_shared.path()}) != u"true")
        QSKIP("the helper's user cannot reach the temporary folder (TMPDIR)");
    const QString path = shared.filePath(item);
    QCOMPARE(runFileAccessHelper(helper, {u"readable"_s, path}), readable.replace(u"%1"_s, m_shared.path()));
    QCOMPARE(runFileAccessHelper(helper, {u"writable"_s, path, u"0"_s}), writable);
    QCOMPARE(runFileAccessHelper(helper, {u"writable"_s, path, u"1"_s}), writableTested);
}

void FileManagerTest::writeTestOpensTheFile()
{
    QTemporaryDir root;
    const QString file = root.filePath(u"kept.txt"_s);
    QVERIFY(makeFile(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner, "unchanged"));
    const QDateTime modified = QFileInfo(file).lastModified();
    QVERIFY(VeltoFileManager::isWritableItemVeltoAtURL(QUrl::fromLocalFile(file), true));
    QFile check(file);
    QVERIFY(check.open(QIODevice::ReadOnly));
    QCOMPARE(check.readAll(), QByteArray("unchanged"));
    QCOMPARE(QFileInfo(file).lastModified(), modified);

    // A pipe nobody reads: writable by its mode, yet it cannot be opened for writing.
    const QString pipe = root.filePath(u"pipe"_s);
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0666), 0);
    QVERIFY(VeltoFileManager::isWritableItemVeltoAtURL(QUrl::fromLocalFile(pipe), false));
    VeltoError error;
    QVERIFY(!VeltoFileManager::isWritableItemVeltoAtURL(QUrl::fromLocalFile(pipe), true, &error));
    QCOMPARE(error.domain(), VeltoPOSIXErrorDomain);
    QCOMPARE(error.code(), ENXIO);
    // A folder is not opened.
    QVERIFY(VeltoFileManager::isWritableItemVeltoAtURL(QUrl::fromLocalFile(root.path()), true));
}

void FileManagerTest::posixPermissions_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("ownedByMe"); // else by another user (needs root to give the file away)
    QTest::addColumn<bool>("myGroup");   // one of the checking process's supplementary groups, or another
    QTest::addColumn<bool>("read");
    QTest::addColumn<bool>("write");

    QTest::newRow("others may read") << 0004 << false << false << true << false;
    QTest::newRow("others may write") << 0002 << false << false << false << true;
    QTest::newRow("owner bits, mine") << 0600 << true << false << true << true;
    QTest::newRow("owner bits, another owner") << 0600 << false << false << false << false;
    QTest::newRow("group bits, my group") << 0040 << false << true << true << false;
    QTest::newRow("group bits, another group") << 0060 << false << false << false << false;
    QTest::newRow("owner bits, but only the group's") << 0020 << true << false << false << false;
    QTest::newRow("nothing, even for the owner") << 0000 << true << true << false << false;
}

void FileManagerTest::posixPermissions()
{
    QFETCH(int, mode);
    QFETCH(bool, ownedByMe);
    QFETCH(bool, myGroup);
    QFETCH(bool, read);
    QFETCH(bool, write);
    // Under root the check runs in the helper as "nobody" with one supplementary group, and the file
    // is given to whichever owner and group the row names. Otherwise it runs here, where only our own
    // user and groups can be given.
    const bool root = geteuid() == 0;
    const gid_t helperGroup = 4242;
    const gid_t otherGroup = 4343;
    std::vector<gid_t> myGroups;
    if (!root) {
        myGroups.resize(size_t(std::max(::getgroups(0, nullptr), 0)));
        myGroups.resize(size_t(std::max(::getgroups(int(myGroups.size()), myGroups.data()), 0)));
        if (!ownedByMe || !myGroup || myGroups.empty())
            QSKIP("another owner or group, or a process without supplementary groups, needs root");
    }
    const QString file = m_shared.filePath(u"posix-%1"_s.arg(QString::fromUtf8(QTest::currentDataTag())));
    QVERIFY(makeFile(file));
    const uid_t owner = root ? (ownedByMe ? HelperUser : 0) : ::getuid();
    const gid_t group = root ? (myGroup ? helperGroup : otherGroup) : myGroups.front();
    QCOMPARE(::chown(QFile::encodeName(file).constData(), owner, group), 0);
    QVERIFY(setMode(file, mode_t(mode)));
    const QString expected = u"read %1 write %2"_s.arg(int(read)).arg(int(write));
    if (root) {
        QCOMPARE(runFileAccessHelper(QStringLiteral(VELTO_FILE_ACCESS_HELPER), {u"posix"_s, file}, {helperGroup}), expected);
    } else {
        QCOMPARE(VeltoFileManager::hasPosixPermissionToRead(true, QUrl::fromLocalFile(file)), read);
        QCOMPARE(VeltoFileManager::hasPosixPermissionToRead(false, QUrl::fromLocalFile(file)), write);
    }
    QVERIFY(!VeltoFileManager::hasPosixPermissionToRead(true, QUrl::fromLocalFile(m_shared.filePath(u"missing"_s))));
}

void FileManagerTest::hiddenItems()
{
    QTemporaryDir root;
    const QDir folder(root.path());
    QVERIFY(makeFile(folder.filePath(u".hidden"_s), QFileDevice::ReadOwner | QFileDevice::WriteOwner, "listed\n  spaced  \n"));
    const auto hidden = [&folder](const QString &name) {
        return VeltoFileManager::isHiddenItemVeltoAtURL(QUrl::fromLocalFile(folder.filePath(name)));
    };
    QVERIFY(hidden(u".profile"_s));
    QVERIFY(hidden(u"listed"_s));
    QVERIFY(hidden(u"spaced"_s));
    QVERIFY(!hidden(u"shown"_s));
    QVERIFY(!hidden(u"list"_s));
    QVERIFY(!VeltoFileManager::isHiddenItemVeltoAtURL(QUrl::fromLocalFile(u"/"_s)));
    QVERIFY(!VeltoFileManager::isHiddenItemVeltoAtURL(QUrl(u"https://example.com/.x"_s)));
}

void FileManagerTest::uniqueNames_data()
{
    QTest::addColumn<QStringList>("existing"); // "name->" makes a dangling symbolic link
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("unique");

    QTest::newRow("free") << QStringList() << u"report.txt"_s << u" (%d)"_s << u"report.txt"_s;
    QTest::newRow("taken") << QStringList{u"report.txt"_s} << u"report.txt"_s << u" (%d)"_s << u"report (2).txt"_s;
    QTest::newRow("no extension, no dot") << QStringList{u"notes"_s} << u"notes"_s << u" (%d)"_s << u"notes (2)"_s;
    QTest::newRow("dot file has no extension") << QStringList{u".profile"_s} << u".profile"_s << u" (%d)"_s << u".profile (2)"_s;
    QTest::newRow("last extension only") << QStringList{u"a.tar.gz"_s} << u"a.tar.gz"_s << u" (%d)"_s << u"a.tar (2).gz"_s;
    QTest::newRow("counter goes on") << QStringList{u"a.txt"_s, u"a (2).txt"_s, u"a (3).txt"_s} << u"a.txt"_s << u" (%d)"_s
                                     << u"a (4).txt"_s;
    QTest::newRow("a gap is not filled") << QStringList{u"a.txt"_s, u"a (3).txt"_s} << u"a.txt"_s << u" (%d)"_s << u"a (2).txt"_s;
    QTest::newRow("a dangling link takes the name") << QStringList{u"a.txt->"_s} << u"a.txt"_s << u" (%d)"_s << u"a (2).txt"_s;
    QTest::newRow("other suffix") << QStringList{u"b.md"_s} << u"b.md"_s << u"-%d-copy"_s << u"b-2-copy.md"_s;
    QTest::newRow("empty name") << QStringList() << QString() << u" (%d)"_s << QString();
    QTest::newRow("a path, not a name") << QStringList() << u"../escape.txt"_s << u" (%d)"_s << QString();
    QTest::newRow("dot dot") << QStringList() << u".."_s << u" (%d)"_s << QString();
}

void FileManagerTest::uniqueNames()
{
    QFETCH(QStringList, existing);
    QFETCH(QString, name);
    QFETCH(QString, suffix);
    QFETCH(QString, unique);
    QTemporaryDir root;
    const QDir folder(root.path());
    for (const QString &item : existing) {
        if (item.endsWith(u"->"))
            QVERIFY(QFile::link(folder.filePath(u"nowhere"_s), folder.filePath(item.chopped(2))));
        else
            QVERIFY(makeFile(folder.filePath(item)));
    }
    const QStringList before = folder.entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    const QString result = VeltoFileManager::uniqueFileNameWithSuffix(name, suffix, root.path());
    QCOMPARE(result, unique);
    QCOMPARE(result.isNull(), unique.isNull());
    if (suffix == u" (%d)") {
        QCOMPARE(VeltoFileManager::uniqueFileNameInFolder(name, root.path()), unique);
        QCOMPARE(VeltoFileManager::uniqueFileNameInFolderAtURL(name, QUrl::fromLocalFile(root.path())), unique);
    }
    // Finding a name makes nothing.
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot), before);
}

void FileManagerTest::uniqueNamesTurnRandom()
{
    QTemporaryDir root;
    QVERIFY(makeFile(root.filePath(u"a.txt"_s)));
    for (int counter = 2; counter <= 99; ++counter)
        QVERIFY(makeFile(root.filePath(u"a (%1).txt"_s.arg(counter))));
    const QString unique = VeltoFileManager::uniqueFileNameInFolder(u"a.txt"_s, root.path());
    const QRegularExpressionMatch match = QRegularExpression(u"^a \\((-?\\d+)\\)\\.txt$"_s).match(unique);
    QVERIFY2(match.hasMatch(), qPrintable(unique));
    const qint64 number = match.captured(1).toLongLong();
    QVERIFY2(number < 2 || number > 99, qPrintable(unique));
    QVERIFY(!QFileInfo::exists(root.filePath(unique)));
}

void FileManagerTest::uniqueNamesGiveUp()
{
    // A suffix without "%d" makes the same candidate every time: after 198 tries there is no name.
    QTemporaryDir root;
    QVERIFY(makeFile(root.filePath(u"a.txt"_s)) && makeFile(root.filePath(u"a copy.txt"_s)));
    QVERIFY(VeltoFileManager::uniqueFileNameWithSuffix(u"a.txt"_s, u" copy"_s, root.path()).isNull());
}

void FileManagerTest::uniquePathsAndTemporaryItems()
{
    QTemporaryDir root;
    const QString taken = root.filePath(u"taken.txt"_s);
    QVERIFY(makeFile(taken));
    QCOMPARE(VeltoFileManager::uniqueFilePathForPath(root.filePath(u"free.txt"_s)), root.filePath(u"free.txt"_s));
    QCOMPARE(VeltoFileManager::uniqueFilePathForPath(taken), root.filePath(u"taken (2).txt"_s));
    QVERIFY(VeltoFileManager::uniqueFilePathForPath(QString()).isNull());
    const QUrl folder = QUrl::fromLocalFile(root.path());
    QCOMPARE(VeltoFileManager::uniqueFileURLWithFileName(u"taken.txt"_s, folder).toLocalFile(), root.filePath(u"taken (2).txt"_s));
    QCOMPARE(VeltoFileManager::uniqueFileURLWithFileName(u"new.txt"_s, folder).toLocalFile(), root.filePath(u"new.txt"_s));
    QVERIFY(VeltoFileManager::uniqueFileURLWithFileName(u"a/b"_s, folder).isEmpty());

    // The temporary folder comes from TMPDIR and is made when missing.
    const QByteArray savedTemporary = qgetenv("TMPDIR");
    const QString temporary = root.filePath(u"tmp/nested"_s);
    qputenv("TMPDIR", QFile::encodeName(temporary));
    VeltoError error;
    QCOMPARE(VeltoFileManager::temporaryItemURLWithLastPathComponent(u"export.zip"_s, &error).toLocalFile(),
             temporary + u"/export.zip"_s);
    QVERIFY(error.isNull());
    QVERIFY(QFileInfo(temporary).isDir());
    QVERIFY(makeFile(temporary + u"/export.zip"_s));
    QCOMPARE(VeltoFileManager::tempFilePathWithFileName(u"export.zip"_s), temporary + u"/export (2).zip"_s);
    // A temporary folder that cannot be made.
    qputenv("TMPDIR", QFile::encodeName(taken + u"/tmp"_s));
    QVERIFY(VeltoFileManager::temporaryItemURLWithLastPathComponent(u"x"_s, &error).isEmpty());
    QCOMPARE(error.domain(), VeltoPOSIXErrorDomain);
    QCOMPARE(error.code(), ENOTDIR);
    QVERIFY(VeltoFileManager::tempFilePathWithFileName(u"x"_s).isNull());
    qputenv("TMPDIR", savedTemporary);
    if (savedTemporary.isNull())
        qunsetenv("TMPDIR");
}

QTEST_GUILESS_MAIN(FileManagerTest)
#include "filemanagertest.moc"
