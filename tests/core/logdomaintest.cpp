#include "VeltoLogDomain.h"
#include "VeltoLogDomainOption_BOOL.h"
#include "VeltoLogDomainOption_PlistObject.h"
#include "VeltoUserDefaults.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct WatchRecord
{
    QStringList properties;
    QList<VeltoLogDomain *> domains;
    VeltoLogDomain::PropertyWatcher watcher()
    {
        return [this](VeltoLogDomain *domain, const QString &property) {
            domains.append(domain);
            properties.append(property);
        };
    }
};

} // namespace

class LogDomainTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void newDomainRegistersItsSwitchFirstAndReadsNothing();
    void keysFollowTheDomainAndPropertyNames();
    void absentKeysLeaveVariablesAndWatcherAlone();
    void loadingTurnsLoggingOnAndReportsOnlyChanges_data();
    void loadingTurnsLoggingOnAndReportsOnlyChanges();
    void setIsEnabledReportsRealChangesOnly();
    void objectOptionsCompareByIdentity();
    void loadCallsTheWatcherInRegistrationOrder();
    void saveWritesEveryOptionAndRemovesEmptyObjects();
    void saveThenLoadRoundTripsThroughTheFile();
    void duplicateNamesAndBaseOptions();
    void accessors();

private:
    std::unique_ptr<QTemporaryDir> folder;
    std::shared_ptr<VeltoUserDefaults> defaults;
};

void LogDomainTest::init()
{
    folder = std::make_unique<QTemporaryDir>();
    defaults = std::make_shared<VeltoUserDefaults>(folder->filePath(u"defaults.plist"_s));
    VeltoUserDefaults::setStandardUserDefaults(defaults);
}

void LogDomainTest::cleanup()
{
    VeltoUserDefaults::setStandardUserDefaults(nullptr);
    defaults.reset();
}

void LogDomainTest::newDomainRegistersItsSwitchFirstAndReadsNothing()
{
    defaults->setObject(true, u"com.velto.debug.Layout.isEnabled"_s);
    bool enabled = false;
    VeltoLogDomain domain(u"Layout"_s, &enabled);
    QVERIFY(!domain.isEnabled()); // the constructor does not read the defaults
    QCOMPARE(domain.options().size(), 1);
    QCOMPARE(domain.options().first()->optionName(), u"isEnabled"_s);
    QCOMPARE(domain.options().first()->optionValuePointer(), &enabled);
    QCOMPARE(domain.enabledPointerIvar(), &enabled);
    QVERIFY(dynamic_cast<VeltoLogDomainOption_BOOL *>(domain.options().first().get()));
}

void LogDomainTest::keysFollowTheDomainAndPropertyNames()
{
    bool enabled = false;
    VeltoLogDomain domain(u"Layout"_s, &enabled);
    QCOMPARE(domain.userDefaultsKeyForProperty(VeltoLogDomainPropertyName_isEnabled), u"com.velto.debug.Layout.isEnabled"_s);
    domain.setDomainName(u"Text Layout"_s);
    QCOMPARE(domain.userDefaultsKeyForProperty(u"showsRuns"_s), u"com.velto.debug.Text Layout.showsRuns"_s);
}

void LogDomainTest::absentKeysLeaveVariablesAndWatcherAlone()
{
    bool enabled = true;
    bool verbose = true;
    VeltoPlistObject object = std::make_shared<const QVariant>(u"initial"_s);
    const VeltoPlistObject initial = object;
    VeltoLogDomain domain(u"X"_s, &enabled);
    domain.registerBoolPointer(&verbose, u"verbose"_s);
    domain.registerPlistObjectPointer(&object, u"filter"_s);
    WatchRecord record;
    domain.setPropertyWatcher(record.watcher());
    domain.loadFromUserDefaults();
    QVERIFY(enabled);
    QVERIFY(verbose);
    QCOMPARE(object.get(), initial.get());
    QVERIFY(record.properties.isEmpty());
}

void LogDomainTest::loadingTurnsLoggingOnAndReportsOnlyChanges_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("on");
    QTest::newRow("bool YES") << QVariant(true) << true;
    QTest::newRow("string YES") << QVariant(u"YES"_s) << true;
    QTest::newRow("number 1") << QVariant(1) << true;
    QTest::newRow("string true") << QVariant(u"true"_s) << true;
    QTest::newRow("string 0") << QVariant(u"0"_s) << false;
    QTest::newRow("string NO") << QVariant(u"NO"_s) << false;
    QTest::newRow("number 0") << QVariant(0.0) << false;
    QTest::newRow("a list") << QVariant(QVariantList{1}) << false;
}

void LogDomainTest::loadingTurnsLoggingOnAndReportsOnlyChanges()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, on);
    defaults->setObject(stored, u"com.velto.debug.X.isEnabled"_s);
    bool enabled = false;
    VeltoLogDomain domain(u"X"_s, &enabled);
    WatchRecord record;
    domain.setPropertyWatcher(record.watcher());
    domain.loadFromUserDefaults();
    QCOMPARE(enabled, on);
    QCOMPARE(domain.isEnabled(), on);
    QCOMPARE(record.properties, on ? QStringList{u"isEnabled"_s} : QStringList());
    if (on)
        QCOMPARE(record.domains.first(), &domain);
    domain.loadFromUserDefaults(); // unchanged value: a boolean option reports nothing
    QCOMPARE(record.properties.size(), on ? 1 : 0);
}

void LogDomainTest::setIsEnabledReportsRealChangesOnly()
{
    bool enabled = false;
    VeltoLogDomain domain(u"X"_s, &enabled);
    WatchRecord record;
    domain.setPropertyWatcher(record.watcher());
    domain.setIsEnabled(false);
    QVERIFY(record.properties.isEmpty());
    domain.setIsEnabled(true);
    QVERIFY(enabled);
    domain.setIsEnabled(true);
    domain.setIsEnabled(false);
    QCOMPARE(record.properties, (QStringList{u"isEnabled"_s, u"isEnabled"_s}));
    domain.setPropertyWatcher(nullptr);
    domain.setIsEnabled(true); // no watcher: changes quietly
    QVERIFY(enabled);
    QCOMPARE(record.properties.size(), 2);
}

void LogDomainTest::objectOptionsCompareByIdentity()
{
    VeltoPlistObject variable;
    VeltoLogDomainOption_PlistObject option(u"filter"_s, &variable);
    const VeltoPlistObject first = std::make_shared<const QVariant>(u"a"_s);
    QVERIFY(option.setValuePointerFromPlistObject(first));
    QVERIFY(variable);
    QVERIFY(variable.get() != first.get()); // a copy is stored
    QCOMPARE(*variable, QVariant(u"a"_s));
    QVERIFY(!option.setValuePointerFromPlistObject(variable)); // the very object held: no change
    QVERIFY(option.setValuePointerFromPlistObject(std::make_shared<const QVariant>(u"a"_s))); // equal, not identical
    QVERIFY(option.setValuePointerFromPlistObject(nullptr));
    QVERIFY(!variable);
    QVERIFY(!option.setValuePointerFromPlistObject(nullptr));

    // Through the defaults, every load reads a fresh object and so reports a change.
    defaults->setObject(u"*.txt"_s, u"com.velto.debug.X.filter"_s);
    bool enabled = false;
    VeltoLogDomain domain(u"X"_s, &enabled);
    domain.registerPlistObjectPointer(&variable, u"filter"_s);
    WatchRecord record;
    domain.setPropertyWatcher(record.watcher());
    domain.loadFromUserDefaults();
    domain.loadFromUserDefaults();
    QCOMPARE(record.properties, (QStringList{u"filter"_s, u"filter"_s}));
    QCOMPARE(*variable, QVariant(u"*.txt"_s));
}

void LogDomainTest::loadCallsTheWatcherInRegistrationOrder()
{
    defaults->setObject(true, u"com.velto.debug.Y.isEnabled"_s);
    defaults->setObject(true, u"com.velto.debug.Y.b"_s);
    defaults->setObject(true, u"com.velto.debug.Y.a"_s);
    bool enabled = false, a = false, b = false;
    VeltoLogDomain domain(u"Y"_s, &enabled);
    domain.registerBoolPointer(&b, u"b"_s);
    domain.registerBoolPointer(&a, u"a"_s);
    WatchRecord record;
    domain.setPropertyWatcher(record.watcher());
    domain.loadFromUserDefaults();
    QCOMPARE(record.properties, (QStringList{u"isEnabled"_s, u"b"_s, u"a"_s}));
    QVERIFY(a && b && enabled);
}

void LogDomainTest::saveWritesEveryOptionAndRemovesEmptyObjects()
{
    bool enabled = true, verbose = false;
    VeltoPlistObject filter = std::make_shared<const QVariant>(QVariantList{u"a"_s, 2});
    VeltoPlistObject empty;
    VeltoLogDomain domain(u"Z"_s, &enabled);
    domain.registerBoolPointer(&verbose, u"verbose"_s);
    domain.registerPlistObjectPointer(&filter, u"filter"_s);
    domain.registerPlistObjectPointer(&empty, u"empty"_s);
    defaults->setObject(u"stale"_s, u"com.velto.debug.Z.empty"_s);
    WatchRecord record;
    domain.setPropertyWatcher(record.watcher());
    domain.saveToUserDefaults();
    QVERIFY(record.properties.isEmpty());
    const VeltoUserDefaults reopened(defaults->filePath());
    QCOMPARE(reopened.objectForKey(u"com.velto.debug.Z.isEnabled"_s), QVariant(true));
    QCOMPARE(reopened.objectForKey(u"com.velto.debug.Z.verbose"_s), QVariant(false));
    QCOMPARE(reopened.objectForKey(u"com.velto.debug.Z.filter"_s).toList().size(), 2);
    QVERIFY(!reopened.objectForKey(u"com.velto.debug.Z.empty"_s).isValid());
}

void LogDomainTest::saveThenLoadRoundTripsThroughTheFile()
{
    bool enabled = true, verbose = true;
    {
        VeltoLogDomain domain(u"R"_s, &enabled);
        domain.registerBoolPointer(&verbose, u"verbose"_s);
        domain.saveToUserDefaults();
    }
    VeltoUserDefaults::setStandardUserDefaults(std::make_shared<VeltoUserDefaults>(defaults->filePath()));
    bool enabledAfterRelaunch = false, verboseAfterRelaunch = false;
    VeltoLogDomain domain(u"R"_s, &enabledAfterRelaunch);
    domain.registerBoolPointer(&verboseAfterRelaunch, u"verbose"_s);
    domain.loadFromUserDefaults();
    QVERIFY(enabledAfterRelaunch);
    QVERIFY(verboseAfterRelaunch);
}

void LogDomainTest::duplicateNamesAndBaseOptions()
{
    defaults->setObject(true, u"com.velto.debug.D.same"_s);
    bool enabled = false, first = false, second = false;
    int opaque = 7;
    VeltoLogDomain domain(u"D"_s, &enabled);
    domain.registerBoolPointer(&first, u"same"_s);
    domain.registerBoolPointer(&second, u"same"_s);
    domain.registerOption(std::make_shared<VeltoLogDomainOption>(u"opaque"_s, &opaque));
    QCOMPARE(domain.options().size(), 4);
    domain.loadFromUserDefaults();
    QVERIFY(first && second);
    domain.saveToUserDefaults(); // the base option holds nothing and removes its key
    QVERIFY(!defaults->objectForKey(u"com.velto.debug.D.opaque"_s).isValid());
    QCOMPARE(opaque, 7);
}

void LogDomainTest::accessors()
{
    bool a = false, b = true;
    VeltoLogDomain domain(u"A"_s, &a);
    domain.setEnabledPointerIvar(&b);
    QVERIFY(domain.isEnabled());
    domain.setOptions({});
    QVERIFY(domain.options().isEmpty());
    QVERIFY(!domain.propertyWatcher());
    VeltoLogDomain nullDomain(u"N"_s, nullptr); // no variable: off, and switching it does nothing
    QVERIFY(!nullDomain.isEnabled());
    nullDomain.setIsEnabled(true);
    QVERIFY(!nullDomain.isEnabled());
}

QTEST_GUILESS_MAIN(LogDomainTest)
#include "logdomaintest.moc"
