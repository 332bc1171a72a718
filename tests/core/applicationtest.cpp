// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoApplication.h"
#include "VeltoDocument.h"
#include "VeltoWindowController.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

// A host's window controller: its window is made on demand.
class Controller : public VeltoWindowController
{
public:
    explicit Controller(bool loaded, VeltoDocument *document = nullptr) : m_document(document)
    {
        if (loaded)
            (void)window();
    }
    bool isWindowLoaded() const override { return m_window != nullptr; }
    QObject *window() override
    {
        if (!m_window) {
            m_window = std::make_unique<QObject>();
            attachWindow(m_window.get());
        }
        return m_window.get();
    }
    VeltoDocument *document() const override { return m_document; }

    std::unique_ptr<QObject> m_window;

private:
    VeltoDocument *m_document;
};

// A host's document with one controller per character of \a states: '1' window loaded, '0' not yet.
class Document : public VeltoDocument
{
public:
    explicit Document(const QString &states)
    {
        for (QChar state : states)
            m_controllers.push_back(std::make_unique<Controller>(state == u'1', this));
    }
    QList<VeltoWindowController *> windowControllers() const override
    {
        QList<VeltoWindowController *> list;
        for (const auto &controller : m_controllers)
            list.append(controller.get());
        return list;
    }

    std::vector<std::unique_ptr<Controller>> m_controllers;
};

constexpr char PrintSandboxFlag[] = "--print-sandbox-flag";

} // namespace

class ApplicationTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void sandboxFlagFromTheEnvironment_data();
    void sandboxFlagFromTheEnvironment();
    void sandboxFlagIsDecidedOnce();
    void infoDictionaryFillsInFromTheApplication();
    void urlForInfoDictionaryKey_data();
    void urlForInfoDictionaryKey();
    void visibleDocuments_data();
    void visibleDocuments();
    void windowControllerOfAWindow();
    void terminatingFlagFollowsAboutToQuit(); // last: it quits the event loop once
};

void ApplicationTest::initTestCase()
{
    if (QFileInfo::exists(u"/.flatpak-info"_s) || qEnvironmentVariableIsSet("SNAP"))
        QSKIP("this test runs inside a real sandbox; the flag cannot be false here");
}

void ApplicationTest::sandboxFlagFromTheEnvironment_data()
{
    QTest::addColumn<QStringList>("variables"); // NAME=VALUE pairs added to a clean environment
    QTest::addColumn<QString>("flag");

    QTest::newRow("none") << QStringList() << u"false"_s;
    QTest::newRow("container id, empty value") << QStringList{u"APP_SANDBOX_CONTAINER_ID="_s} << u"true"_s;
    QTest::newRow("container id") << QStringList{u"APP_SANDBOX_CONTAINER_ID=com.velto.Writer"_s} << u"true"_s;
    QTest::newRow("a snap") << QStringList{u"SNAP=/snap/writer/12"_s} << u"true"_s;
    QTest::newRow("similar names do not count")
        << QStringList{u"APP_SANDBOX_CONTAINER=x"_s, u"SNAPSHOT=1"_s, u"FLATPAK_ID=com.velto.Writer"_s} << u"false"_s;
}

void ApplicationTest::sandboxFlagFromTheEnvironment()
{
    QFETCH(QStringList, variables);
    QFETCH(QString, flag);
    // Each environment needs a process of its own: the flag is decided once per process.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : {u"APP_SANDBOX_CONTAINER_ID"_s, u"SNAP"_s})
        environment.remove(name);
    for (const QString &variable : variables)
        environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    QProcess child;
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(PrintSandboxFlag)});
    QVERIFY(child.waitForFinished(30000));
    QCOMPARE(child.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(child.readAllStandardOutput()), flag);
}

void ApplicationTest::sandboxFlagIsDecidedOnce()
{
    const QByteArray saved = qgetenv("APP_SANDBOX_CONTAINER_ID");
    const bool before = VeltoApplication::isRunningInsideSandbox();
    if (before)
        qunsetenv("APP_SANDBOX_CONTAINER_ID");
    else
        qputenv("APP_SANDBOX_CONTAINER_ID", "late");
    QCOMPARE(VeltoApplication::isRunningInsideSandbox(), before);
    if (before)
        qputenv("APP_SANDBOX_CONTAINER_ID", saved);
    else
        qunsetenv("APP_SANDBOX_CONTAINER_ID");
}

void ApplicationTest::infoDictionaryFillsInFromTheApplication()
{
    qunsetenv("FLATPAK_ID");
    QCoreApplication::setApplicationName(u"Writer"_s);
    QCoreApplication::setApplicationVersion(u"3.4.5"_s);
    QCoreApplication::setOrganizationDomain(u"tools.velto.com"_s);
    QVariantMap info = VeltoApplication::infoDictionary();
    QCOMPARE(info.value(VeltoInfoBundleNameKey).toString(), u"Info Test"_s); // the file wins
    QCOMPARE(info.value(VeltoInfoBundleVersionKey).toString(), u"3.4.5"_s);
    QCOMPARE(info.value(VeltoInfoBundleIdentifierKey).toString(), u"com.velto.tools.Writer"_s);
    QCOMPARE(info.value(u"NumberURL"_s).toInt(), 42);

    qputenv("FLATPAK_ID", "org.example.Writer");
    QCOMPARE(VeltoApplication::infoDictionary().value(VeltoInfoBundleIdentifierKey).toString(), u"org.example.Writer"_s);
    qunsetenv("FLATPAK_ID");
    QCoreApplication::setOrganizationDomain(QString());
    QVERIFY(!VeltoApplication::infoDictionary().contains(VeltoInfoBundleIdentifierKey));
}

void ApplicationTest::urlForInfoDictionaryKey_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("url");

    const QString maker = VeltoMakerWebSiteAddress;
    QTest::newRow("web address") << u"SupportURL"_s << u"https://support.example.org/help?topic=files#saving"_s;
    QTest::newRow("mail address") << u"MailURL"_s << u"mailto:help@example.org"_s;
    QTest::newRow("missing key") << u"NoSuchKey"_s << maker;
    QTest::newRow("text that is no URL") << u"SpacedURL"_s << maker;
    QTest::newRow("empty text") << u"EmptyURL"_s << maker;
    QTest::newRow("a number") << u"NumberURL"_s << maker;
    QTest::newRow("empty key") << QString() << maker;
}

void ApplicationTest::urlForInfoDictionaryKey()
{
    QFETCH(QString, key);
    QFETCH(QString, url);
    QCOMPARE(VeltoApplication::veltoURLForInfoDictionaryKey(key).toString(), url);
}

void ApplicationTest::visibleDocuments_data()
{
    // One string per document, one character per window controller: '1' loaded, '0' not loaded, "-" a
    // null document.
    QTest::addColumn<QStringList>("documents");
    QTest::addColumn<QList<int>>("visible");

    QTest::newRow("empty") << QStringList() << QList<int>();
    QTest::newRow("all shown") << QStringList{u"1"_s, u"01"_s, u"10"_s} << QList<int>{0, 1, 2};
    QTest::newRow("one not loaded") << QStringList{u"1"_s, u"0"_s, u"1"_s} << QList<int>{0, 2};
    QTest::newRow("no controllers") << QStringList{u""_s, u"1"_s} << QList<int>{1};
    QTest::newRow("none loaded") << QStringList{u"00"_s, u"0"_s} << QList<int>();
    QTest::newRow("first and last go") << QStringList{u"0"_s, u"1"_s, u"11"_s, u""_s} << QList<int>{1, 2};
    QTest::newRow("null document") << QStringList{u"1"_s, u"-"_s} << QList<int>{0};
}

void ApplicationTest::visibleDocuments()
{
    QFETCH(QStringList, documents);
    QFETCH(QList<int>, visible);
    std::vector<std::unique_ptr<Document>> owned;
    QList<VeltoDocument *> ordered;
    for (const QString &states : documents) {
        if (states == u"-") {
            ordered.append(nullptr);
            continue;
        }
        owned.push_back(std::make_unique<Document>(states));
        ordered.append(owned.back().get());
    }
    const QList<VeltoDocument *> result = VeltoApplication::orderedVisibleDocumentsVelto(ordered);
    QList<VeltoDocument *> expected;
    for (int index : visible)
        expected.append(ordered.at(index));
    QCOMPARE(result, expected);
    // Nothing removed: the caller's own list comes back, not a copy.
    if (!ordered.isEmpty())
        QCOMPARE(result.isSharedWith(ordered), visible.size() == ordered.size());
}

void ApplicationTest::windowControllerOfAWindow()
{
    // The first loaded controller's window is the document's window for sheets, in the controllers' order.
    Document document(u"01"_s);
    Controller &first = *document.m_controllers.at(0);
    Controller &second = *document.m_controllers.at(1);
    QCOMPARE(document.windowForSheet(), second.m_window.get());
    QObject *window = first.window();
    QCOMPARE(document.windowForSheet(), window);
    QCOMPARE(VeltoWindowController::windowControllerForWindow(window), &first);
    QVERIFY(!VeltoWindowController::windowControllerForWindow(nullptr));
    QVERIFY(!Document(u""_s).windowForSheet());

    // The record ends when another window is attached, or when the controller goes first.
    QObject replacement;
    first.attachWindow(&replacement);
    QVERIFY(!VeltoWindowController::windowControllerForWindow(window));
    QCOMPARE(VeltoWindowController::windowControllerForWindow(&replacement), &first);
    {
        Controller temporary(false);
        temporary.attachWindow(&replacement);
    }
    QVERIFY(!VeltoWindowController::windowControllerForWindow(&replacement));
    // A window that goes first takes the record with it; its controller outlives it safely.
    second.m_window.reset();
}

void ApplicationTest::terminatingFlagFollowsAboutToQuit()
{
    QVERIFY(!VeltoApplication::isTerminatingVelto());
    bool seenBeforeQuitting = true;
    QTimer::singleShot(0, qApp, [&] {
        seenBeforeQuitting = VeltoApplication::isTerminatingVelto();
        QCoreApplication::quit();
    });
    QCoreApplication::exec(); // returns after announcing aboutToQuit
    QVERIFY(!seenBeforeQuitting);
    QVERIFY(VeltoApplication::isTerminatingVelto());
    bool seenFromAnotherThread = false;
    std::thread([&] { seenFromAnotherThread = VeltoApplication::isTerminatingVelto(); }).join();
    QVERIFY(seenFromAnotherThread);
}

int main(int argc, char *argv[])
{
    // The child the sandbox test starts: it only reports the flag its environment gives.
    if (argc == 2 && qstrcmp(argv[1], PrintSandboxFlag) == 0) {
        std::fputs(VeltoApplication::isRunningInsideSandbox() ? "true" : "false", stdout);
        return 0;
    }
    QCoreApplication app(argc, argv);
    ApplicationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "applicationtest.moc"
