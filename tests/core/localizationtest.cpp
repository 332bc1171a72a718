// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoBundle.h"
#include "VeltoCore.h"
#include "VeltoLocalization.h"
#include "VeltoUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <functional>
#include <thread>

using namespace Qt::StringLiterals;

// A class defined in the test executable: its bundle is the application's main bundle.
class LocalClass : public QObject
{
    Q_OBJECT
};

// Runs body(t) on count threads released together, and waits for all of them.
static void runTogether(int count, const std::function<void(int)> &body)
{
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < count; ++t) {
        threads.emplace_back([&, t] {
            ++ready;
            while (ready.load() < count) {
            }
            body(t);
        });
    }
    for (auto &thread : threads)
        thread.join();
}

class LocalizationTest : public QObject
{
    Q_OBJECT

private slots:
    // Runs first, before anything in this process has asked for the library object or its bundle.
    void instanceAndBundleAreMadeOnceUnderConcurrentFirstUse()
    {
        constexpr int ThreadCount = 8;
        std::vector<VeltoCore *> instances(ThreadCount);
        std::vector<const VeltoBundle *> bundles(ThreadCount);
        runTogether(ThreadCount, [&](int t) {
            instances[t] = VeltoCore::instance();
            bundles[t] = VeltoCoreBundle().get();
        });
        QVERIFY(instances.front() && bundles.front());
        QCOMPARE(std::count(instances.begin(), instances.end(), instances.front()), ThreadCount);
        QCOMPARE(std::count(bundles.begin(), bundles.end(), bundles.front()), ThreadCount);
        QVERIFY(!VeltoCore::instance()->isDebugBuild());
    }

    void initTestCase()
    {
        QVERIFY(folder.isValid());
        VeltoUserDefaults::setStandardUserDefaults(
            std::make_shared<VeltoUserDefaults>(folder.filePath(u"defaults.plist"_s)));
    }

    void init()
    {
        QVERIFY(VeltoUserDefaults::standardUserDefaults()->setObject(QStringList{u"en-US"_s}, VeltoBundle::PreferredLanguagesKey));
    }

    void frameworkBundleIsMadeOnceAndHoldsEveryKey()
    {
        const auto bundle = VeltoCoreBundle();
        QVERIFY(bundle);
        QCOMPARE(bundle.get(), VeltoCore::instance()->frameworkBundle().get());
        QCOMPARE(bundle.get(), VeltoBundle::bundleForClass(&VeltoCore::staticMetaObject).get());
        QCOMPARE(bundle->localizations(), QStringList{u"en"_s});

        // The embedded table maps every key to itself without its leading underscore.
        QFile table(u":/velto/VeltoCore/strings/en/Localizable.json"_s);
        QVERIFY(table.open(QIODevice::ReadOnly));
        const QJsonObject entries = QJsonDocument::fromJson(table.readAll()).object();
        QVERIFY(entries.size() >= 14);
        for (auto it = entries.begin(); it != entries.end(); ++it) {
            QVERIFY(it.key().startsWith(u'_'));
            QCOMPARE(it->toString(), it.key().mid(1));
            QCOMPARE(VeltoLocalizeInBundle(it.key(), bundle.get()), it.key().mid(1));
        }
        QVERIFY(entries.contains(u"_The file is read-only."_s));
        QCOMPARE(VeltoLocalizeExpectFailUsingClass(u"_%lu MB"_s, &VeltoCore::staticMetaObject), u"%lu MB"_s);
    }

    void missingKeysGiveTheKeyOrNullNeverTheSentinel()
    {
        // Lookups are exact: no underscore is added or stripped.
        const auto bundle = VeltoCoreBundle();
        QCOMPARE(VeltoLocalizeInBundle(u"Choose Folder"_s, bundle.get()), u"Choose Folder"_s);
        QCOMPARE(VeltoLocalizeUsingClass(u"Choose Folder"_s, &VeltoCore::staticMetaObject), u"Choose Folder"_s);
        QVERIFY(VeltoLocalizeExpectFailInBundle(u"Choose Folder"_s, bundle.get()).isNull());
        QVERIFY(VeltoLocalizeExpectFailUsingClass(u"Choose Folder"_s, &VeltoCore::staticMetaObject).isNull());
        QCOMPARE(VeltoLocalizeInBundle(QString(VeltoLocalizedStringNotFound), bundle.get()),
                 QString(VeltoLocalizedStringNotFound)); // the key itself, as for any missing key
    }

    void withoutABundleOnlyTheClassProbeGivesNull()
    {
        QCOMPARE(VeltoLocalizeInBundle(u"_Choose Folder"_s, nullptr), u"_Choose Folder"_s);
        QCOMPARE(VeltoLocalizeUsingClass(u"_Choose Folder"_s, nullptr), u"_Choose Folder"_s);
        QCOMPARE(VeltoLocalizeExpectFailInBundle(u"_x"_s, nullptr), u"_x"_s);
        QVERIFY(VeltoLocalizeExpectFailUsingClass(u"_x"_s, nullptr).isNull());
        // QObject lives in the Qt library, which has no bundle.
        QVERIFY(!VeltoBundle::bundleForClass(&QObject::staticMetaObject));
        QVERIFY(!VeltoBundle::bundleForClass(nullptr));
        // A class of the executable belongs to the main bundle, which holds none of the library's strings.
        QCOMPARE(VeltoBundle::bundleForClass(&LocalClass::staticMetaObject).get(), VeltoBundle::mainBundle().get());
        QVERIFY(VeltoLocalizeExpectFailUsingClass(u"_Choose Folder"_s, &LocalClass::staticMetaObject).isNull());
    }

    void registeredBundleServesItsBinary()
    {
        const QString root = makeBundle(u"Registered"_s, {{u"en/Localizable"_s, R"({"_Hello": "Hello there"})"}});
        const auto bundle = std::make_shared<const VeltoBundle>(root);
        QVERIFY(!VeltoBundle::registerBundleForBinaryContaining(nullptr, bundle));
        QVERIFY(VeltoBundle::registerBundleForBinaryContaining(&LocalClass::staticMetaObject, bundle));
        QCOMPARE(VeltoLocalizeUsingClass(u"_Hello"_s, &LocalClass::staticMetaObject), u"Hello there"_s);
        QCOMPARE(VeltoLocalizeUsingClass(u"_Hello"_s, &staticMetaObject), u"Hello there"_s); // same binary
        QVERIFY(VeltoBundle::registerBundleForBinaryContaining(&LocalClass::staticMetaObject, VeltoBundle::mainBundle()));
        QCOMPARE(VeltoLocalizeUsingClass(u"_Hello"_s, &LocalClass::staticMetaObject), u"_Hello"_s);
    }

    void languageFollowsThePreferences_data()
    {
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("text");
        QTest::newRow("region falls back to language") << QStringList{u"de-AT"_s, u"en"_s} << u"de"_s << u"Ordner wählen"_s;
        QTest::newRow("first available wins, any case, underscore tag")
            << QStringList{u"fr"_s, u"pt_br"_s, u"de"_s} << u"pt-BR"_s << u"Escolher pasta"_s;
        QTest::newRow("none available: development language") << QStringList{u"fr"_s, u"ja"_s} << u"en"_s
                                                              << u"Choose Folder"_s;
    }

    void languageFollowsThePreferences()
    {
        QFETCH(QStringList, preferred);
        static const QString root = makeBundle(u"Translated"_s, {
            {u"en/Localizable"_s, R"({"_Choose Folder": "Choose Folder"})"},
            {u"de/Localizable"_s, R"({"_Choose Folder": "Ordner wählen"})"},
            {u"pt-BR/Localizable"_s, R"({"_Choose Folder": "Escolher pasta"})"},
        });
        QVERIFY(VeltoUserDefaults::standardUserDefaults()->setObject(preferred, VeltoBundle::PreferredLanguagesKey));
        QCOMPARE(VeltoBundle::preferredLanguages(), preferred);
        const VeltoBundle bundle(root);
        QCOMPARE(bundle.localizations(), (QStringList{u"de"_s, u"en"_s, u"pt-BR"_s}));
        QTEST(bundle.localizationLanguage(), "language");
        QTEST(VeltoLocalizeInBundle(u"_Choose Folder"_s, &bundle), "text");
    }

    void systemLanguagesWhenNoneAreStored()
    {
        // ctest runs the tests with LC_ALL=C.UTF-8 and no LANGUAGE: the C locale names no language, and
        // its messages are English.
        QVERIFY(VeltoUserDefaults::standardUserDefaults()->removeObjectForKey(VeltoBundle::PreferredLanguagesKey));
        QCOMPARE(VeltoBundle::preferredLanguages(), QStringList{u"en"_s});
        QVERIFY(VeltoUserDefaults::standardUserDefaults()->setObject(QStringList(), VeltoBundle::PreferredLanguagesKey));
        QCOMPARE(VeltoBundle::preferredLanguages(), QStringList{u"en"_s}); // an empty stored list counts as none
    }

    void namedTablesAndDefaultValues()
    {
        const QString root = makeBundle(u"Tables"_s, {{u"en/Localizable"_s, R"({"_A": "a"})"},
                                                      {u"en/Menus"_s, R"({"_File": "File menu"})"}});
        const VeltoBundle bundle(root);
        QCOMPARE(bundle.localizedString(u"_File"_s, {}, u"Menus"_s), u"File menu"_s);
        QCOMPARE(bundle.localizedString(u"_File"_s, {}), u"_File"_s);         // not in the default table
        QCOMPARE(bundle.localizedString(u"_File"_s, u"fallback"_s), u"fallback"_s);
        QCOMPARE(bundle.localizedString(u"_A"_s, {}, u"NoSuchTable"_s), u"_A"_s);

        const VeltoBundle missing(folder.filePath(u"does-not-exist"_s));
        QVERIFY(missing.localizations().isEmpty());
        QVERIFY(VeltoLocalizeExpectFailInBundle(u"_A"_s, &missing).isNull());
    }

    void malformedTableIsReportedAndReadsEmpty()
    {
        const QString root = makeBundle(u"Broken"_s, {{u"en/Localizable"_s, R"({"_A": "a", "_B": 3, )"},
                                                      {u"en/Typed"_s, R"({"_A": "a", "_B": 3})"}});
        const VeltoBundle bundle(root);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Localizable.json is not a JSON object"_s));
        QCOMPARE(VeltoLocalizeInBundle(u"_A"_s, &bundle), u"_A"_s);
        QCOMPARE(VeltoLocalizeInBundle(u"_A"_s, &bundle), u"_A"_s); // reported once, kept empty
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"value of \"_B\" is not a string"_s));
        QCOMPARE(bundle.localizedString(u"_A"_s, {}, u"Typed"_s), u"a"_s);
        QCOMPARE(bundle.localizedString(u"_B"_s, {}, u"Typed"_s), u"_B"_s);
    }

    void concurrentFirstLookupsAgree()
    {
        const VeltoBundle bundle(makeBundle(u"Threads"_s, {{u"en/Localizable"_s, R"({"_A": "a", "_B": "b"})"}}));
        std::atomic<int> wrong{0};
        runTogether(8, [&](int) {
            for (int i = 0; i < 200; ++i)
                wrong += VeltoLocalizeInBundle(u"_A"_s, &bundle) != u"a"_s;
        });
        QCOMPARE(wrong.load(), 0);
    }

private:
    QString makeBundle(const QString &name, const QMap<QString, QByteArray> &tables);
    QTemporaryDir folder;
};

QString LocalizationTest::makeBundle(const QString &name, const QMap<QString, QByteArray> &tables)
{
    const QString root = QDir(folder.path()).filePath(name);
    for (auto it = tables.begin(); it != tables.end(); ++it) {
        const QString path = u"%1/strings/%2.json"_s.arg(root, it.key());
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(it.value()) != it.value().size())
            qFatal("cannot write %s", qPrintable(path));
    }
    return root;
}

QTEST_GUILESS_MAIN(LocalizationTest)
#include "localizationtest.moc"
