// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTPropertyListXml_p.h"
#include "VeltoUserDefaults.h"

#include <QDateTime>
#include <QFile>
#include <QPoint>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

class UserDefaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void valuesKeepTheirTypesAcrossReopening_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("type");
        QTest::newRow("true") << QVariant(true) << int(QMetaType::Bool);
        QTest::newRow("int") << QVariant(-17) << int(QMetaType::LongLong);
        QTest::newRow("uint64 max") << QVariant(std::numeric_limits<quint64>::max()) << int(QMetaType::ULongLong);
        QTest::newRow("real") << QVariant(0.1) << int(QMetaType::Double);
        QTest::newRow("string") << QVariant(u"Grüße, <b>&amp;</b>\n  two spaces"_s) << int(QMetaType::QString);
        QTest::newRow("bytes") << QVariant(QByteArray("\0\1\2\xff", 4)) << int(QMetaType::QByteArray);
        QTest::newRow("date") << QVariant(QDateTime(QDate(2026, 11, 22), QTime(10, 0, 0, 250), Qt::UTC))
                              << int(QMetaType::QDateTime);
        QTest::newRow("list") << QVariant(QVariantList{1LL, u"two"_s, QVariantList{true}}) << int(QMetaType::QVariantList);
        QTest::newRow("string list") << QVariant(QStringList{u"a"_s, u"b"_s}) << int(QMetaType::QVariantList);
        QTest::newRow("map") << QVariant(QVariantMap{{u"a/b"_s, 1LL}, {u"c"_s, QVariantMap{{u"d"_s, 2.5}}}})
                             << int(QMetaType::QVariantMap);
    }

    void valuesKeepTheirTypesAcrossReopening()
    {
        QFETCH(QVariant, value);
        QFETCH(int, type);
        const QString file = path(u"types.plist"_s);
        const QString key = u"com.velto.test.value"_s;
        auto same = [&](const QVariant &read) {
            return read.typeId() == type && (read == value || read.toString() == value.toString());
        };
        {
            VeltoUserDefaults defaults(file);
            QVERIFY(defaults.setObject(value, key));
            QVERIFY(same(defaults.objectForKey(key)));
        }
        // The same type in this process (through the settings cache) and in the file a relaunch reads.
        QVERIFY(same(VeltoUserDefaults(file).objectForKey(key)));
        QFile stored(file);
        QVERIFY(stored.open(QIODevice::ReadOnly));
        const auto fromFile = VTPropertyListXml::read(stored.readAll());
        QVERIFY(fromFile);
        QVERIFY(same(fromFile->toMap().value(key)));
    }

    void removeAndNullValueDeleteTheKey()
    {
        VeltoUserDefaults defaults(path(u"remove.plist"_s));
        QVERIFY(defaults.setObject(1, u"a"_s) && defaults.setObject(2, u"b"_s));
        QVERIFY(defaults.removeObjectForKey(u"a"_s));
        QVERIFY(defaults.setObject(QVariant(), u"b"_s));
        QVERIFY(defaults.dictionaryRepresentation().isEmpty());
        QVERIFY(VeltoUserDefaults(path(u"remove.plist"_s)).dictionaryRepresentation().isEmpty());
        QVERIFY(defaults.removeObjectForKey(u"never-stored"_s)); // harmless
        QVERIFY(defaults.synchronize());
    }

    void nonPlistValuesAreRefusedAndKeepTheStoredValue()
    {
        VeltoUserDefaults defaults(path(u"refuse.plist"_s));
        QVERIFY(defaults.setObject(u"kept"_s, u"key"_s));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"setObject: a QPoint is not a property-list value"_s));
        VeltoError error;
        QVERIFY(!defaults.setObject(QPoint(1, 2), u"key"_s, &error));
        QVERIFY(error.isErrorDomainVelto(VeltoCoreErrorDomain, VeltoCoreErrorPlistType));
        QCOMPARE(error.localizedDescription(), u"a QPoint is not a property-list value; \"key\" unchanged"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"not a property-list value"_s));
        QVERIFY(!defaults.setObject(QVariantList{1, QPoint(1, 2)}, u"key"_s));
        QCOMPARE(defaults.objectForKey(u"key"_s), QVariant(u"kept"_s));
        QCOMPARE(VeltoUserDefaults(path(u"refuse.plist"_s)).objectForKey(u"key"_s), QVariant(u"kept"_s));
    }

    void writeThatCannotReachTheDiskIsReported()
    {
        // The store's folder is a regular file: no write can succeed, whoever runs the test.
        QFile blocker(path(u"not-a-folder"_s));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        const QString file = path(u"not-a-folder/defaults.plist"_s);
        VeltoUserDefaults defaults(file);
        const QString text = u"The user defaults could not be saved to %1."_s.arg(file);
        for (const QVariant &value : {QVariant(1), QVariant(u"two"_s)}) {
            QTest::ignoreMessage(QtWarningMsg, qPrintable(u"VeltoUserDefaults: "_s + text));
            VeltoError error;
            QVERIFY(!defaults.setObject(value, u"key"_s, &error));
            QVERIFY(error.isErrorDomainVelto(VeltoCocoaErrorDomain, 512)); // unknown write error
            QCOMPARE(error.localizedDescription(), text);
            QVERIFY(!defaults.objectForKey(u"key"_s).isValid()); // nothing shows that a relaunch would lose
        }
        QVERIFY(defaults.removeObjectForKey(u"key"_s)); // nothing stored, nothing to write
    }

    void readOnlyStoreIsReportedAndRecovers()
    {
        if (geteuid() == 0)
            QSKIP("root writes into read-only files and folders; the unwritable-path case above runs for root");
        const QString file = path(u"readonly/defaults.plist"_s);
        QVERIFY(QDir().mkpath(path(u"readonly"_s)));
        VeltoUserDefaults defaults(file);
        QVERIFY(defaults.setObject(u"before"_s, u"key"_s));
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
        QVERIFY(QFile::setPermissions(path(u"readonly"_s), QFile::ReadOwner | QFile::ExeOwner));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"could not be saved to"_s));
        VeltoError error;
        QVERIFY(!defaults.setObject(u"after"_s, u"key"_s, &error));
        QVERIFY(error.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorFileWriteNoPermission));
        QCOMPARE(defaults.objectForKey(u"key"_s), QVariant(u"before"_s));
        QCOMPARE(VeltoUserDefaults(file).objectForKey(u"key"_s), QVariant(u"before"_s));

        // Writable again, the store writes again: the failure does not stick.
        QVERIFY(QFile::setPermissions(path(u"readonly"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
        QVERIFY(defaults.setObject(u"after"_s, u"key"_s));
        QVERIFY(defaults.synchronize());
        QCOMPARE(VeltoUserDefaults(file).objectForKey(u"key"_s), QVariant(u"after"_s));
    }

    void registeredDefaultsShowWhenNothingIsStored()
    {
        VeltoUserDefaults defaults(path(u"registered.plist"_s));
        defaults.registerDefaults({{u"size"_s, 12}, {u"name"_s, u"Liberation"_s}});
        QCOMPARE(defaults.objectForKey(u"size"_s), QVariant(12));
        QVERIFY(defaults.setObject(14, u"size"_s));
        QCOMPARE(defaults.objectForKey(u"size"_s), QVariant(14LL));
        QCOMPARE(defaults.dictionaryRepresentation(), (QVariantMap{{u"size"_s, 14LL}, {u"name"_s, u"Liberation"_s}}));
        QVERIFY(defaults.removeObjectForKey(u"size"_s));
        QCOMPARE(defaults.objectForKey(u"size"_s), QVariant(12));
        QVERIFY(!VeltoUserDefaults(path(u"registered.plist"_s)).objectForKey(u"name"_s).isValid()); // not persisted
    }

    void handEditedFileIsRead()
    {
        QFile file(path(u"edited.plist"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(R"(<?xml version="1.0" encoding="UTF-8"?>
    <plist version="1.0"><dict>
      <key>com.velto.debug.X.isEnabled</key> <string>YES</string>
      <key>count</key> <integer> 3 </integer>
    </dict></plist>)");
        file.close();
        const VeltoUserDefaults defaults(file.fileName());
        QCOMPARE(defaults.objectForKey(u"com.velto.debug.X.isEnabled"_s), QVariant(u"YES"_s));
        QCOMPARE(defaults.objectForKey(u"count"_s), QVariant(qint64(3)));
    }

    void corruptFileIsMovedAsideNotOverwritten()
    {
        const QString file = path(u"corrupt.plist"_s);
        const QByteArray garbage = "<plist version=\"1.0\"><dict><key>a</key><integer>12x</integer></dict></plist>";
        for (int round = 0; round < 2; ++round) {
            QFile out(file);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(garbage);
            out.close();
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"unreadable store: The property list cannot be read: invalid <integer> value"_s));
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^\\*\\*\\* user defaults file .* moved aside to "_s));
            VeltoUserDefaults defaults(file);
            QVERIFY(defaults.dictionaryRepresentation().isEmpty());
            QVERIFY(defaults.setObject(u"new"_s, u"b"_s));
            QCOMPARE(VeltoUserDefaults(file).objectForKey(u"b"_s), QVariant(u"new"_s));
        }
        // Both unreadable versions are still there, byte for byte.
        const QStringList aside = QDir(folder.path()).entryList({u"corrupt.plist.corrupt*"_s});
        QCOMPARE(aside.size(), 2);
        for (const QString &name : aside) {
            QFile kept(folder.filePath(name));
            QVERIFY(kept.open(QIODevice::ReadOnly));
            QCOMPARE(kept.readAll(), garbage);
        }
    }

    void standardStoreCanBeRedirected()
    {
        QStandardPaths::setTestModeEnabled(true);
        QCoreApplication::setOrganizationName(u"VeltoTests"_s);
        QCOMPARE(VeltoUserDefaults::standardFilePath(),
                 QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/VeltoTests/userdefaultstest.plist"_s);
        const auto redirected = std::make_shared<VeltoUserDefaults>(path(u"standard.plist"_s));
        VeltoUserDefaults::setStandardUserDefaults(redirected);
        QCOMPARE(VeltoUserDefaults::standardUserDefaults().get(), redirected.get());
        QVERIFY(VeltoUserDefaults::standardUserDefaults()->setObject(5, u"k"_s));
        QCOMPARE(VeltoUserDefaults(path(u"standard.plist"_s)).objectForKey(u"k"_s).toInt(), 5);
        VeltoUserDefaults::setStandardUserDefaults(nullptr);
        QCOMPARE(VeltoUserDefaults::standardUserDefaults()->filePath(), VeltoUserDefaults::standardFilePath());
    }

private:
    QTemporaryDir folder;
    QString path(const QString &name) const { return folder.filePath(name); }
};

QTEST_GUILESS_MAIN(UserDefaultsTest)
#include "userdefaultstest.moc"
