// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoError.h"
#include "VeltoException.h"

#include <QTest>

#include <stdexcept>

using namespace Qt::StringLiterals;

// Exported from the test executable so that the captured stack can name it.
Q_DECL_EXPORT Q_NEVER_INLINE void veltoTestThrowOutOfRange(int index)
{
    throw VeltoException(VeltoRangeException, u"index %1 beyond bounds"_s.arg(index));
}

class ExceptionTest : public QObject
{
    Q_OBJECT

private slots:
    void nameReasonWhatAndCopies();
    void callStackNamesTheThrowingFunction();
    void fromExceptionKeepsOursAndNamesOthersByType();
};

void ExceptionTest::nameReasonWhatAndCopies()
{
    const VeltoException exception(VeltoInternalInconsistencyException, u"Änderung eines unveränderlichen Objekts"_s);
    QCOMPARE(exception.name(), u"NSInternalInconsistencyException"_s);
    QCOMPARE(exception.reason(), u"Änderung eines unveränderlichen Objekts"_s);
    QCOMPARE(QString::fromUtf8(exception.what()), exception.description());

    // Copies share the captured stack.
    VeltoException copy = exception;
    QCOMPARE(copy.callStackReturnAddresses(), exception.callStackReturnAddresses());
    VeltoException other(VeltoRangeException, u"second"_s);
    other = VeltoException(VeltoGenericException, u"first"_s);
    QCOMPARE(other.reason(), u"first"_s);
    QCOMPARE(QString::fromUtf8(other.what()), u"NSGenericException: first"_s);
}

void ExceptionTest::callStackNamesTheThrowingFunction()
{
    try {
        veltoTestThrowOutOfRange(9);
        QFAIL("no exception");
    } catch (const VeltoException &exception) {
        QCOMPARE(exception.reason(), u"index 9 beyond bounds"_s);
        const QStringList frames = exception.callStackSymbols();
        QVERIFY(frames.size() >= 3);
        QCOMPARE(frames.size(), exception.callStackReturnAddresses().size());
        // The innermost frame is the function that made the exception, not the constructor.
        QVERIFY2(frames.first().contains(u"veltoTestThrowOutOfRange(int)"_s), qPrintable(frames.join(u'\n')));
        QVERIFY2(frames.first().contains(u"exceptiontest"_s), qPrintable(frames.first()));
        QVERIFY(frames.at(1).contains(u"callStackNamesTheThrowingFunction"_s));
        QVERIFY(frames.first().startsWith(u"0   "_s));
    }
}

void ExceptionTest::fromExceptionKeepsOursAndNamesOthersByType()
{
    const VeltoException ours(VeltoRangeException, u"index 2 beyond bounds"_s);
    const VeltoException kept = VeltoException::fromException(ours);
    QCOMPARE(kept.description(), ours.description());
    QCOMPARE(kept.callStackReturnAddresses(), ours.callStackReturnAddresses());

    const VeltoException converted = VeltoException::fromException(std::out_of_range("vector::at"));
    QCOMPARE(converted.name(), u"std::out_of_range"_s);
    QCOMPARE(converted.reason(), u"vector::at"_s);
    QVERIFY(converted.callStackSymbols().join(u'\n').contains(u"fromExceptionKeepsOursAndNamesOthersByType"_s));
}

QTEST_GUILESS_MAIN(ExceptionTest)
#include "exceptiontest.moc"
