// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLogDomain.h"
#include "VeltoLogDomainOption_BOOL.h"
#include "VeltoLogDomainOption_PlistObject.h"
#include "veltotest.h"

using namespace Qt::StringLiterals;

class LogDomainTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        defaults = std::make_unique<VeltoTestDefaults>();
        calls.clear();
    }

    void switchIsTheFirstOptionAndReportsRealChangesOnly()
    {
        QVERIFY(defaults->set(u"com.velto.debug.Layout.isEnabled"_s, true));
        bool enabled = false;
        VeltoLogDomain domain(u"Layout"_s, &enabled);
        QVERIFY(!domain.isEnabled()); // the constructor does not read the defaults
        QCOMPARE(domain.options().size(), 1);
        QCOMPARE(domain.options().first()->optionName(), u"isEnabled"_s);
        QCOMPARE(domain.userDefaultsKeyForProperty(VeltoLogDomainPropertyName_isEnabled), u"com.velto.debug.Layout.isEnabled"_s);

        domain.setPropertyWatcher(recorder());
        for (bool on : {false, true, true, false})
            domain.setIsEnabled(on);
        QCOMPARE(calls, (QStringList{u"Layout.isEnabled"_s, u"Layout.isEnabled"_s}));
        domain.setPropertyWatcher(nullptr);
        domain.setIsEnabled(true); // no watcher: changes quietly
        QVERIFY(enabled);

        VeltoLogDomain detached(u"N"_s, nullptr); // no variable: off, and switching it does nothing
        detached.setIsEnabled(true);
        QVERIFY(!detached.isEnabled());
    }

    void loadTurnsLoggingOnAndReportsOnlyChanges_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<bool>("on");
        QTest::newRow("bool") << QVariant(true) << true;
        QTest::newRow("string YES") << QVariant(u"YES"_s) << true;
        QTest::newRow("number 1") << QVariant(1) << true;
        QTest::newRow("string NO") << QVariant(u"NO"_s) << false;
    }

    void loadTurnsLoggingOnAndReportsOnlyChanges()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, on);
        QVERIFY(defaults->set(u"com.velto.debug.X.isEnabled"_s, stored));
        bool enabled = false;
        VeltoLogDomain domain(u"X"_s, &enabled);
        domain.setPropertyWatcher(recorder());
        domain.loadFromUserDefaults();
        domain.loadFromUserDefaults(); // the unchanged value: a boolean option reports nothing
        QCOMPARE(enabled, on);
        QCOMPARE(calls, on ? QStringList{u"X.isEnabled"_s} : QStringList());
    }

    void loadLeavesAbsentKeysAloneAndReportsInOrder()
    {
        QVERIFY(defaults->set(u"com.velto.debug.Y.b"_s, true));
        QVERIFY(defaults->set(u"com.velto.debug.Y.a"_s, true));
        bool enabled = true, a = false, b = false, c = true;
        VeltoLogDomain domain(u"Y"_s, &enabled);
        domain.registerBoolPointer(&b, u"b"_s);
        domain.registerBoolPointer(&a, u"a"_s);
        domain.registerBoolPointer(&c, u"c"_s);
        domain.registerBoolPointer(&a, u"a"_s); // duplicate names are accepted
        domain.setPropertyWatcher(recorder());
        domain.loadFromUserDefaults();
        QCOMPARE(calls, (QStringList{u"Y.b"_s, u"Y.a"_s})); // registration order; absent keys, no call
        QVERIFY(a && b && c && enabled);
    }

    void objectOptionsCompareByIdentity()
    {
        VeltoPlistObject variable;
        VeltoLogDomainOption_PlistObject option(u"filter"_s, &variable);
        const VeltoPlistObject first = std::make_shared<const QVariant>(u"a"_s);
        QVERIFY(option.setValuePointerFromPlistObject(first));
        QVERIFY(variable && variable.get() != first.get()); // a copy is stored
        QVERIFY(!option.setValuePointerFromPlistObject(variable)); // the very object held: no change
        QVERIFY(option.setValuePointerFromPlistObject(std::make_shared<const QVariant>(u"a"_s))); // equal, not identical
        QVERIFY(option.setValuePointerFromPlistObject(nullptr));
        QVERIFY(!variable);

        // Through the defaults every load reads a fresh object, so every load reports a change.
        QVERIFY(defaults->set(u"com.velto.debug.X.filter"_s, u"*.txt"_s));
        bool enabled = false;
        VeltoLogDomain domain(u"X"_s, &enabled);
        domain.registerPlistObjectPointer(&variable, u"filter"_s);
        domain.setPropertyWatcher(recorder());
        domain.loadFromUserDefaults();
        domain.loadFromUserDefaults();
        QCOMPARE(calls, (QStringList{u"X.filter"_s, u"X.filter"_s}));
        QCOMPARE(*variable, QVariant(u"*.txt"_s));
    }

    void saveWritesEveryOptionQuietly()
    {
        bool enabled = true, verbose = false;
        VeltoPlistObject filter = std::make_shared<const QVariant>(QVariantList{u"a"_s, 2});
        VeltoPlistObject empty;
        VeltoLogDomain domain(u"Z"_s, &enabled);
        domain.registerBoolPointer(&verbose, u"verbose"_s);
        domain.registerPlistObjectPointer(&filter, u"filter"_s);
        domain.registerPlistObjectPointer(&empty, u"empty"_s);
        domain.registerOption(std::make_shared<VeltoLogDomainOption>(u"opaque"_s));
        QVERIFY(defaults->set(u"com.velto.debug.Z.empty"_s, u"stale"_s));
        QVERIFY(defaults->set(u"com.velto.debug.Z.opaque"_s, u"stale"_s));
        domain.setPropertyWatcher(recorder());
        QVERIFY(domain.saveToUserDefaults());
        QVERIFY(calls.isEmpty());
        const VeltoUserDefaults file((*defaults)->filePath());
        QCOMPARE(file.objectForKey(u"com.velto.debug.Z.isEnabled"_s), QVariant(true));
        QCOMPARE(file.objectForKey(u"com.velto.debug.Z.verbose"_s), QVariant(false));
        QCOMPARE(file.objectForKey(u"com.velto.debug.Z.filter"_s).toList().size(), 2);
        QVERIFY(!file.objectForKey(u"com.velto.debug.Z.empty"_s).isValid());  // nothing held: key removed
        QVERIFY(!file.objectForKey(u"com.velto.debug.Z.opaque"_s).isValid()); // the base option holds nothing

        // A store that cannot write makes the save fail, and says so.
        VeltoUserDefaults::setStandardUserDefaults(std::make_shared<VeltoUserDefaults>(u"/proc/self/velto.plist"_s));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"could not be saved to /proc/self/velto.plist"_s));
        VeltoError error;
        QVERIFY(!domain.saveToUserDefaults(&error));
        QCOMPARE(error.domain(), QString(VeltoCocoaErrorDomain));
    }

private:
    // Records the watcher's calls as "domain.property".
    VeltoLogDomain::PropertyWatcher recorder()
    {
        return [this](VeltoLogDomain *domain, const QString &property) { calls << domain->domainName() + u'.' + property; };
    }

    std::unique_ptr<VeltoTestDefaults> defaults;
    QStringList calls;
};

QTEST_GUILESS_MAIN(LogDomainTest)
#include "logdomaintest.moc"
