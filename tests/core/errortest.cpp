// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoError.h"
#include "VeltoException.h"

#include <QTest>

#include <cerrno>
#include <new>

using namespace Qt::StringLiterals;

class ErrorTest : public QObject
{
    Q_OBJECT

private slots:
    void descriptionForUser_data();
    void descriptionForUser();
    void errorWithTextHasExactlyTwoUserInfoEntries();
    void exceptionsBecomeCodeThreeErrors();
    void domainAndCodeTests_data();
    void domainAndCodeTests();
    void nullDomainMatchesNoDomainNotEvenTheEmptyOne();
    void valueSemantics();
};

void ErrorTest::descriptionForUser_data()
{
    QTest::addColumn<VeltoError>("error");
    QTest::addColumn<QString>("expected");

    QTest::newRow("posix text from the system")
        << VeltoError::posixError(EACCES) << u"Permission denied [NSPOSIXErrorDomain code 13]"_s;
    QTest::newRow("line feed anywhere gives two line feeds")
        << VeltoError(VeltoCoreErrorDomain, 5, {{VeltoLocalizedDescriptionKey, u"first\nsecond"_s}})
        << u"first\nsecond\n\n[com.velto.veltoCore.errorDomain code 5]"_s;
    QTest::newRow("negative code printed signed")
        << VeltoError(u"OSStatus"_s, -43, {{VeltoLocalizedDescriptionKey, u"gone"_s}}) << u"gone [OSStatus code -43]"_s;
    QTest::newRow("omit-code key with any value")
        << VeltoError(u"D"_s, 7, {{VeltoLocalizedDescriptionKey, u"t"_s}, {VeltoOmitCodeKey, false}}) << u"t"_s;
    QTest::newRow("empty text falls back and shows the code")
        << VeltoError::errorWithDomain(u"My.Domain"_s, 12, QString())
        << u"The operation could not be completed. (My.Domain error 12.) [My.Domain code 12]"_s;
    QTest::newRow("cancellation never shows its code")
        << VeltoError::userCancellationErrorVelto() << u"The operation was cancelled."_s;
    QTest::newRow("unknown: its own text, no code")
        << VeltoError::unknownErrorVelto() << u"An unknown/unspecified error occurred."_s;
}

void ErrorTest::descriptionForUser()
{
    QFETCH(VeltoError, error);
    QFETCH(QString, expected);
    QCOMPARE(error.descriptionForUserVelto(), expected);
}

void ErrorTest::errorWithTextHasExactlyTwoUserInfoEntries()
{
    const VeltoError error = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorPlistType, u"wrong type"_s);
    const QVariantMap expected{{VeltoLocalizedDescriptionKey, u"wrong type"_s}, {VeltoOmitCodeKey, true}};
    QCOMPARE(error.userInfo(), expected);
    QCOMPARE(error.userInfo().value(VeltoOmitCodeKey).typeId(), QMetaType::Bool);
    // Without a text there is no user info at all (the user then sees the domain and code).
    QVERIFY(VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorVersionString, u""_s).userInfo().isEmpty());
}

void ErrorTest::exceptionsBecomeCodeThreeErrors()
{
    const VeltoException exception(VeltoRangeException, u"index 4 beyond bounds [0 .. 2]"_s);
    const VeltoError error = VeltoError::errorWithException(exception);
    QVERIFY(error.isErrorDomainVelto(VeltoCoreErrorDomain, VeltoCoreErrorException));
    QCOMPARE(error.descriptionForUserVelto(), u"Exception was thrown. NSRangeException: index 4 beyond bounds [0 .. 2]"_s);

    const VeltoError withDomain = VeltoError::errorWithDomainException(u"App"_s, 77, exception);
    QVERIFY(withDomain.isErrorDomainVelto(u"App"_s, 77));
    QCOMPARE(withDomain.descriptionForUserVelto(), u"NSRangeException: index 4 beyond bounds [0 .. 2]"_s);

    // A standard exception is named by its type; a VeltoException seen as one keeps its own name.
    const QString text = VeltoError::errorWithException(std::bad_alloc()).descriptionForUserVelto();
    QVERIFY2(text.startsWith(u"Exception was thrown. std::bad_alloc: "_s), qPrintable(text));
    const std::exception &generic = exception;
    QCOMPARE(VeltoError::errorWithException(generic), error);
}

void ErrorTest::domainAndCodeTests_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<qint64>("code");
    QTest::addColumn<bool>("cancellation");
    QTest::addColumn<bool>("noSuchFile");
    const QString cocoa = VeltoCocoaErrorDomain, posix = VeltoPOSIXErrorDomain;
    QTest::newRow("cocoa 3072") << cocoa << qint64(3072) << true << false;
    QTest::newRow("posix 3072") << posix << qint64(3072) << false << false;
    QTest::newRow("cocoa 3073") << cocoa << qint64(3073) << false << false;
    QTest::newRow("cocoa 4") << cocoa << qint64(4) << false << true;
    QTest::newRow("cocoa 260") << cocoa << qint64(260) << false << true;
    QTest::newRow("posix 2") << posix << qint64(ENOENT) << false << true;
    QTest::newRow("cocoa 257") << cocoa << qint64(257) << false << false;
    QTest::newRow("own 260") << QString(VeltoCoreErrorDomain) << qint64(260) << false << false;
}

void ErrorTest::domainAndCodeTests()
{
    QFETCH(QString, domain);
    QFETCH(qint64, code);
    const VeltoError error(domain, code);
    QTEST(error.isUserCancellationErrorVelto(), "cancellation");
    QTEST(error.isErrorNoSuchFileVelto(), "noSuchFile");
    QVERIFY(error.isErrorDomainVelto(domain, code));
    QVERIFY(!error.isErrorDomainVelto(domain, code + 1));
    QVERIFY(!error.isErrorDomainVelto(domain.toLower(), code)); // the text, case-sensitive
}

void ErrorTest::nullDomainMatchesNoDomainNotEvenTheEmptyOne()
{
    QVERIFY(!VeltoError().isErrorDomainVelto(u""_s, 0));
    QVERIFY(!VeltoError().isErrorDomainVelto(QString(), 0));
    QVERIFY(!VeltoError(u""_s, 4).isErrorDomainVelto(QString(), 4));
    QVERIFY(VeltoError(u""_s, 4).isErrorDomainVelto(u""_s, 4));
}

void ErrorTest::valueSemantics()
{
    QCOMPARE(VeltoError::userCancellationErrorVelto(), VeltoError(u"NSCocoaErrorDomain"_s, 3072));
    VeltoError a = VeltoError::errorWithDomain(u"D"_s, 1, u"t"_s);
    VeltoError b = a;
    QCOMPARE(a, b);
    QCOMPARE(qHash(a), qHash(b));
    b = VeltoError(u"D"_s, 1);
    QVERIFY(!(a == b)); // user info differs
    QCOMPARE(a.userInfo().size(), 2); // assigning b left a alone
    QVERIFY(VeltoError().isNull());
    QVERIFY(!a.isNull());
    QCOMPARE(QVariant::fromValue(a).value<VeltoError>(), a);
    QCOMPARE(a.description(), u"Error Domain=D Code=1 \"t\""_s);
}

QTEST_GUILESS_MAIN(ErrorTest)
#include "errortest.moc"
