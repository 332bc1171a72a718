#include "VeltoError.h"
#include "VeltoException.h"

#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <unistd.h>

using namespace Qt::StringLiterals;

class ErrorTest : public QObject
{
    Q_OBJECT

private slots:
    void descriptionForUser_data();
    void descriptionForUser();
    void errorWithTextHasExactlyTwoUserInfoEntries();
    void exceptionsBecomeCodeThreeErrors();
    void standardLibraryExceptionsKeepTheirTypeName();
    void cancellation();
    void domainAndCodeTest();
    void noSuchFile_data();
    void noSuchFile();
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
    QTest::newRow("own text omits the code")
        << VeltoError::errorWithDomain(VeltoCoreErrorDomain, 1, u"The data is damaged."_s) << u"The data is damaged."_s;
    QTest::newRow("omit-code key with any value")
        << VeltoError(u"D"_s, 7, {{VeltoLocalizedDescriptionKey, u"t"_s}, {VeltoOmitCodeKey, false}}) << u"t"_s;
    QTest::newRow("empty text falls back and shows the code")
        << VeltoError::errorWithDomain(u"My.Domain"_s, 12, QString())
        << u"The operation could not be completed. (My.Domain error 12.) [My.Domain code 12]"_s;
    QTest::newRow("cancellation never shows its code")
        << VeltoError::userCancellationErrorVelto() << u"The operation was cancelled."_s;
    QTest::newRow("unknown")
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
    QCOMPARE(error.domain(), QString(VeltoCoreErrorDomain));
    QCOMPARE(error.code(), 4);
    const QVariantMap expected{{VeltoLocalizedDescriptionKey, u"wrong type"_s}, {VeltoOmitCodeKey, true}};
    QCOMPARE(error.userInfo(), expected);
    QCOMPARE(error.userInfo().value(VeltoOmitCodeKey).typeId(), QMetaType::Bool);
    // Without a text there is no user info at all, and the user sees the domain and code.
    for (const QString &text : {QString(), u""_s}) {
        const VeltoError plain = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorVersionString, text);
        QVERIFY(plain.userInfo().isEmpty());
        QVERIFY(plain.descriptionForUserVelto().endsWith(u" [com.velto.veltoCore.errorDomain code 6]"_s));
    }
}

void ErrorTest::exceptionsBecomeCodeThreeErrors()
{
    const VeltoException exception(VeltoRangeException, u"index 4 beyond bounds [0 .. 2]"_s);
    const VeltoError error = VeltoError::errorWithException(exception);
    QVERIFY(error.isErrorDomainVelto(VeltoCoreErrorDomain, VeltoCoreErrorException));
    QCOMPARE(error.descriptionForUserVelto(), u"Exception was thrown. NSRangeException: index 4 beyond bounds [0 .. 2]"_s);

    const VeltoError withDomain = VeltoError::errorWithDomainException(u"App"_s, 77, exception);
    QCOMPARE(withDomain.code(), 77);
    QCOMPARE(withDomain.descriptionForUserVelto(), exception.description());
    QCOMPARE(exception.description(), u"NSRangeException: index 4 beyond bounds [0 .. 2]"_s);
}

void ErrorTest::standardLibraryExceptionsKeepTheirTypeName()
{
    try {
        throw std::bad_alloc();
    } catch (const std::exception &caught) {
        const QString text = VeltoError::errorWithException(caught).descriptionForUserVelto();
        QVERIFY2(text.startsWith(u"Exception was thrown. std::bad_alloc: "_s), qPrintable(text));
    }
    // Caught as std::exception, a VeltoException still gives its own name.
    try {
        throw VeltoException(VeltoMallocException, u"out of memory"_s);
    } catch (const std::exception &caught) {
        QCOMPARE(VeltoError::errorWithException(caught).descriptionForUserVelto(),
                 u"Exception was thrown. NSMallocException: out of memory"_s);
    }
}

void ErrorTest::cancellation()
{
    const VeltoError cancel = VeltoError::userCancellationErrorVelto();
    QCOMPARE(cancel.domain(), u"NSCocoaErrorDomain"_s);
    QCOMPARE(cancel.code(), 3072);
    QVERIFY(cancel.userInfo().isEmpty());
    QVERIFY(cancel.isUserCancellationErrorVelto());
    QVERIFY(!VeltoError(VeltoPOSIXErrorDomain, 3072).isUserCancellationErrorVelto());
    QVERIFY(!VeltoError(VeltoCocoaErrorDomain, 3073).isUserCancellationErrorVelto());
}

void ErrorTest::domainAndCodeTest()
{
    const VeltoError error(VeltoCoreErrorDomain, 2);
    QVERIFY(error.isErrorDomainVelto(u"com.velto.veltoCore.errorDomain"_s, 2));
    QVERIFY(!error.isErrorDomainVelto(VeltoPOSIXErrorDomain, 2));
    QVERIFY(!error.isErrorDomainVelto(VeltoCoreErrorDomain, 3));
    QVERIFY(!error.isErrorDomainVelto(u"com.velto.veltocore.errordomain"_s, 2)); // content, case-sensitive
}

void ErrorTest::noSuchFile_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<qint64>("code");
    QTest::addColumn<bool>("noSuchFile");
    QTest::newRow("cocoa 4") << QString(VeltoCocoaErrorDomain) << qint64(4) << true;
    QTest::newRow("cocoa 260") << QString(VeltoCocoaErrorDomain) << qint64(260) << true;
    QTest::newRow("posix 2") << QString(VeltoPOSIXErrorDomain) << qint64(ENOENT) << true;
    QTest::newRow("cocoa 257") << QString(VeltoCocoaErrorDomain) << qint64(257) << false;
    QTest::newRow("own 260") << QString(VeltoCoreErrorDomain) << qint64(260) << false;
}

void ErrorTest::noSuchFile()
{
    QFETCH(QString, domain);
    QFETCH(qint64, code);
    QFETCH(bool, noSuchFile);
    QCOMPARE(VeltoError(domain, code).isErrorNoSuchFileVelto(), noSuchFile);
}

void ErrorTest::valueSemantics()
{
    VeltoError a = VeltoError::errorWithDomain(u"D"_s, 1, u"t"_s);
    VeltoError b = a;
    QCOMPARE(a, b);
    QCOMPARE(qHash(a), qHash(b));
    b = VeltoError(u"D"_s, 1);
    QVERIFY(!(a == b)); // user info differs
    QCOMPARE(a.userInfo().size(), 2); // assigning b left a alone
    QVERIFY(VeltoError().isNull());
    QVERIFY(!a.isNull());
    const QVariant boxed = QVariant::fromValue(a);
    QCOMPARE(boxed.value<VeltoError>(), a);
    QCOMPARE(a.description(), u"Error Domain=D Code=1 \"t\""_s);
}

QTEST_GUILESS_MAIN(ErrorTest)
#include "errortest.moc"
