// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAssertionInfo.h"

#include <QDateTime>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<VeltoAssertionInfo> recordOf(const QString &expression, const QString &file, quint64 line)
{
    auto record = std::make_unique<VeltoAssertionInfo>();
    record->setFailedExpression(expression);
    record->setFileName(file);
    record->setFileLineNumber(line);
    return record;
}

} // namespace

class AssertionInfoTest : public QObject
{
    Q_OBJECT

private slots:
    void newRecordsNumberThemselvesFromOneAndStampTheTime();
    void report_data();
    void report();
    void oneLineForms_data();
    void oneLineForms();
    void sameFailure_data();
    void sameFailure();
    void sequenceNumbersStayUniqueAcrossThreads();
    void readersOnOtherThreadsSeeWholeTexts();
};

// Runs first: the process has made no record before.
void AssertionInfoTest::newRecordsNumberThemselvesFromOneAndStampTheTime()
{
    const double before = double(QDateTime::currentSecsSinceEpoch() - 978307200 - 1);
    const VeltoAssertionInfo first;
    const VeltoAssertionInfo second;
    QCOMPARE(first.sequenceNumber(), 1u);
    QCOMPARE(second.sequenceNumber(), 2u);
    QVERIFY2(first.timeMark() >= before && first.timeMark() <= before + 3, qPrintable(QString::number(first.timeMark())));
    QCOMPARE(first.repeatCount(), 1u);
    QCOMPARE(first.assertionType(), 0);
    QCOMPARE(first.fileLineNumber(), 0u);
    QVERIFY(first.failedExpression().isNull() && first.fileName().isNull() && first.userFriendlyMessage().isNull());
    QVERIFY(first.operationTitle().isNull() && first.stackTrace().isEmpty());
}

void AssertionInfoTest::report_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("file");
    QTest::addColumn<quint64>("line");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("stack");
    QTest::addColumn<QString>("body"); // the report after its first line

    const QStringList frames{u"0   app  Table::insert(int) + 12"_s, u"1   app  main + 40"_s};
    QTest::newRow("everything") << u"index < count"_s << u"Table.cpp"_s << quint64(42) << u"Typing"_s << frames
                                << u"\tfailed: index < count \n\tin: Table.cpp line 42 \n\twhile: Typing \n"
                                   "\tSTACK TRACE:\n\t0   app  Table::insert(int) + 12\n\t1   app  main + 40"_s;
    QTest::newRow("empty title has no while line")
        << u"ok"_s << u"a.cpp"_s << quint64(7) << u""_s << frames.mid(1)
        << u"\tfailed: ok \n\tin: a.cpp line 7 \n\tSTACK TRACE:\n\t1   app  main + 40"_s;
    QTest::newRow("no stack") << u"ok"_s << u"a.cpp"_s << quint64(7) << QString() << QStringList()
                              << u"\tfailed: ok \n\tin: a.cpp line 7 \n\t(no stack trace)"_s;
    QTest::newRow("a stack that joins to nothing") << u"ok"_s << u"a.cpp"_s << quint64(7) << QString()
                                                   << QStringList{QString()}
                                                   << u"\tfailed: ok \n\tin: a.cpp line 7 \n\t(no stack trace)"_s;
    QTest::newRow("texts never set") << QString() << QString() << quint64(0) << QString() << QStringList()
                                     << u"\tfailed: (null) \n\tin: (null) line 0 \n\t(no stack trace)"_s;
    QTest::newRow("placeholders in texts stay as they are")
        << u"%1 != %2"_s << u"%3.cpp"_s << quint64(18446744073709551615u) << u"Paste %1"_s << QStringList()
        << u"\tfailed: %1 != %2 \n\tin: %3.cpp line 18446744073709551615 \n\twhile: Paste %1 \n\t(no stack trace)"_s;
}

void AssertionInfoTest::report()
{
    QFETCH(QString, expression);
    QFETCH(QString, file);
    QFETCH(quint64, line);
    QFETCH(QString, title);
    QFETCH(QStringList, stack);
    QFETCH(QString, body);

    const auto record = recordOf(expression, file, line);
    record->setOperationTitle(title);
    record->setStackTrace(stack);
    // Neither the message, the type nor the repeat count shows in the report.
    record->setUserFriendlyMessage(u"unexpected exception"_s);
    record->setAssertionType(VeltoAssertionTypeUnexpectedException);
    record->setRepeatCount(5);
    const QString head = u"Assertion #%1 at time=%2: \n"_s.arg(record->sequenceNumber()).arg(quint64(record->timeMark()));
    QCOMPARE(record->description(), head + body);
}

void AssertionInfoTest::oneLineForms_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("file");
    QTest::addColumn<quint64>("line");
    QTest::addColumn<QString>("shortDescription");
    QTest::addColumn<QString>("equalityKey");

    QTest::newRow("check") << u"x > 0"_s << u"Ruler.cpp"_s << quint64(310) << u"assert failed (x > 0), in Ruler.cpp line 310"_s
                           << u"Ruler.cpp, line 310"_s;
    QTest::newRow("exception") << u"index 9 beyond bounds"_s << u"NSRangeException"_s << quint64(140737353934416)
                               << u"assert failed (index 9 beyond bounds), in NSRangeException line 140737353934416"_s
                               << u"NSRangeException, line 140737353934416"_s;
    QTest::newRow("unset") << QString() << QString() << quint64(0) << u"assert failed ((null)), in (null) line 0"_s
                           << u"(null), line 0"_s;
}

void AssertionInfoTest::oneLineForms()
{
    QFETCH(QString, expression);
    QFETCH(QString, file);
    QFETCH(quint64, line);
    const auto record = recordOf(expression, file, line);
    QTEST(record->shortDescription(), "shortDescription");
    QTEST(record->equalityKey(), "equalityKey");
}

void AssertionInfoTest::sameFailure_data()
{
    QTest::addColumn<QString>("firstExpression");
    QTest::addColumn<QString>("firstFile");
    QTest::addColumn<quint64>("firstLine");
    QTest::addColumn<QString>("secondExpression");
    QTest::addColumn<QString>("secondFile");
    QTest::addColumn<quint64>("secondLine");
    QTest::addColumn<bool>("same");

    QTest::newRow("same place, other expression") << u"a"_s << u"x.cpp"_s << quint64(3) << u"b"_s << u"x.cpp"_s << quint64(3) << true;
    QTest::newRow("same expression, other file") << u"a"_s << u"x.cpp"_s << quint64(3) << u"a"_s << u"y.cpp"_s << quint64(3) << false;
    QTest::newRow("same file, other line") << u"a"_s << u"x.cpp"_s << quint64(3) << u"a"_s << u"x.cpp"_s << quint64(4) << false;
    QTest::newRow("file names differ in case") << u"a"_s << u"X.cpp"_s << quint64(3) << u"a"_s << u"x.cpp"_s << quint64(3) << false;
}

void AssertionInfoTest::sameFailure()
{
    QFETCH(QString, firstExpression);
    QFETCH(QString, firstFile);
    QFETCH(quint64, firstLine);
    QFETCH(QString, secondExpression);
    QFETCH(QString, secondFile);
    QFETCH(quint64, secondLine);
    QFETCH(bool, same);

    const auto first = recordOf(firstExpression, firstFile, firstLine);
    const auto second = recordOf(secondExpression, secondFile, secondLine);
    QCOMPARE(first->isSameFailedAssertion(*second), same);
    QCOMPARE(second->isSameFailedAssertion(*first), same);
    // The key is what a collector files records under: the same failure, the same key.
    QCOMPARE(first->equalityKey() == second->equalityKey(), same);
}

void AssertionInfoTest::sequenceNumbersStayUniqueAcrossThreads()
{
    constexpr int threadCount = 8;
    constexpr int recordsPerThread = 2000;
    std::vector<std::vector<quint64>> numbers(threadCount);
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < threadCount; ++t) {
            threads.emplace_back([&numbers, t] {
                for (int i = 0; i < recordsPerThread; ++i)
                    numbers[t].push_back(VeltoAssertionInfo().sequenceNumber());
            });
        }
    }
    QSet<quint64> seen;
    for (const auto &perThread : numbers) {
        QVERIFY(std::is_sorted(perThread.begin(), perThread.end())); // each thread sees the sequence advance
        for (quint64 number : perThread)
            seen.insert(number);
    }
    QCOMPARE(seen.size(), threadCount * recordsPerThread);
    const quint64 lowest = *std::min_element(seen.begin(), seen.end());
    const quint64 highest = *std::max_element(seen.begin(), seen.end());
    QCOMPARE(highest - lowest + 1, quint64(threadCount * recordsPerThread));
}

void AssertionInfoTest::readersOnOtherThreadsSeeWholeTexts()
{
    VeltoAssertionInfo record;
    const QString shortText = u"short"_s;
    const QString longText = QString(4096, u'x');
    const QStringList shortStack{shortText};
    const QStringList longStack(64, longText);
    record.setFailedExpression(shortText);
    record.setStackTrace(shortStack);
    std::atomic<bool> done{false};
    std::jthread writer([&] {
        for (int i = 0; i < 20000; ++i) {
            record.setFailedExpression(i % 2 ? longText : shortText);
            record.setStackTrace(i % 2 ? longStack : shortStack);
        }
        done = true;
    });
    int torn = 0;
    while (!done) {
        const QString expression = record.failedExpression();
        const QStringList stack = record.stackTrace();
        torn += (expression != shortText && expression != longText) + (stack != shortStack && stack != longStack);
    }
    QCOMPARE(torn, 0);
}

QTEST_GUILESS_MAIN(AssertionInfoTest)
#include "assertioninfotest.moc"
