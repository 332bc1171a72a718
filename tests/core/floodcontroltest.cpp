#include "VeltoLogging.h"

#include <QDateTime>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The decisions of a statement called at the given times, as a string of + (written) and . (muted).
QString decisions(VeltoLogFloodControlData &record, const QList<double> &times)
{
    QString pattern;
    for (double time : times)
        pattern += VeltoLog_ShouldLogWithFloodControlDataAtTime(&record, time) ? u'+' : u'.';
    return pattern;
}

QList<double> everySecond(double from, int count)
{
    QList<double> times;
    for (int i = 0; i < count; ++i)
        times.append(from + i);
    return times;
}

} // namespace

class FloodControlTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void firstCallAlwaysLogs();
    void thirteenLinesThenMutedWithOneMessage();
    void keepsFiringStaysMutedAndRepeatsTheMessage();
    void pauseOfFiveSecondsClearsTheCount();
    void gapJustUnderFiveSecondsStillCounts();
    void mutedCallsMoveTheLastTime();
    void nullRecordAlwaysLogs();
    void realClockAndMacro();
};

void FloodControlTest::init()
{
    // Any warning not announced with ignoreMessage fails the test: the message must appear exactly as often as expected.
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void FloodControlTest::firstCallAlwaysLogs()
{
    VeltoLogFloodControlData record;
    QVERIFY(VeltoLog_ShouldLogWithFloodControlDataAtTime(&record, 500.0));
    QCOMPARE(record.lastTime, 500.0);
    QCOMPARE(record.burstCount, 0u);
    // A record muted by an earlier life is still allowed on its first call.
    VeltoLogFloodControlData stale{0, 1e12, 40};
    QVERIFY(VeltoLog_ShouldLogWithFloodControlDataAtTime(&stale, 1.0));
}

void FloodControlTest::thirteenLinesThenMutedWithOneMessage()
{
    VeltoLogFloodControlData record;
    QTest::ignoreMessage(QtWarningMsg, "*** logging flood control enacted, disabling this log statement for 10 seconds");
    QCOMPARE(decisions(record, everySecond(100, 14)), u"+++++++++++++."_s);
    QCOMPARE(record.burstCount, 13u);
    QCOMPARE(record.disabledUntil, 113.0 + 10.0);
}

void FloodControlTest::keepsFiringStaysMutedAndRepeatsTheMessage()
{
    VeltoLogFloodControlData record;
    // Calls every second from t=100: muted at t=113 until 123; at 123 the count (still 13, and moving
    // on by one) mutes again at once, with the message again; the same at 133.
    for (int i = 0; i < 3; ++i)
        QTest::ignoreMessage(QtWarningMsg, VeltoLogFloodControlMessage.data());
    const QString pattern = decisions(record, everySecond(100, 40));
    QCOMPARE(pattern, u"+++++++++++++"_s + QString(27, u'.'));
    QCOMPARE(record.burstCount, 15u);
    QCOMPARE(record.disabledUntil, 143.0);
}

void FloodControlTest::pauseOfFiveSecondsClearsTheCount()
{
    VeltoLogFloodControlData record;
    QTest::ignoreMessage(QtWarningMsg, VeltoLogFloodControlMessage.data());
    QCOMPARE(decisions(record, everySecond(0.5, 14)), u"+++++++++++++."_s);
    // t=13.5 muted until 23.5; the next call comes at 23.5 (10 s later, a pause): written, count cleared.
    QCOMPARE(decisions(record, {23.5}), u"+"_s);
    QCOMPARE(record.burstCount, 0u);
    QCOMPARE(record.disabledUntil, 0.0);
    QCOMPARE(decisions(record, everySecond(24.5, 12)), u"++++++++++++"_s);
    QCOMPARE(record.burstCount, 12u);
    QCOMPARE(decisions(record, {40.5}), u"+"_s); // 5 s exactly after 35.5 clears again
    QCOMPARE(record.burstCount, 0u);
}

void FloodControlTest::gapJustUnderFiveSecondsStillCounts()
{
    VeltoLogFloodControlData record;
    QList<double> times;
    for (int i = 0; i < 14; ++i)
        times.append(1000 + i * 4.99);
    QTest::ignoreMessage(QtWarningMsg, VeltoLogFloodControlMessage.data());
    QCOMPARE(decisions(record, times), u"+++++++++++++."_s);
}

void FloodControlTest::mutedCallsMoveTheLastTime()
{
    VeltoLogFloodControlData record;
    QTest::ignoreMessage(QtWarningMsg, VeltoLogFloodControlMessage.data());
    (void)decisions(record, everySecond(100, 14)); // muted at t=113 until 123
    // t=124 is 11 s after the last call that wrote but only 4 s after the muted call at t=120: still a
    // burst, so the statement is muted again at once, and the message says so again.
    QTest::ignoreMessage(QtWarningMsg, VeltoLogFloodControlMessage.data());
    QCOMPARE(decisions(record, {120, 124}), u".."_s);
    QCOMPARE(record.disabledUntil, 134.0);
}

void FloodControlTest::nullRecordAlwaysLogs()
{
    QVERIFY(VeltoLog_ShouldLogWithFloodControlData(nullptr));
    QVERIFY(VeltoLog_ShouldLogWithFloodControlDataAtTime(nullptr, 1.0));
}

void FloodControlTest::realClockAndMacro()
{
    // The clock counts from 2001-01-01 UTC: today is between 25 and 100 years after it.
    const double now = VeltoLog_CurrentTime();
    QVERIFY(now > 25 * 365.25 * 86400 && now < 100 * 365.25 * 86400);
    QCOMPARE(QDateTime::fromSecsSinceEpoch(qint64(now) + 978307200, Qt::UTC).date().year(),
             QDateTime::currentDateTimeUtc().date().year());

    bool enabled = false;
    for (int i = 0; i < 3; ++i)
        VELTO_LOG(enabled, u"never written"_s);
    enabled = true;
    QTest::ignoreMessage(QtInfoMsg, "line 0");
    QTest::ignoreMessage(QtInfoMsg, "line 1");
    for (int i = 0; i < 2; ++i)
        VELTO_LOG(enabled, u"line %1"_s.arg(i));
    // In a tight loop the statement writes 13 lines, then mutes itself with one warning.
    for (int i = 0; i < 13; ++i)
        QTest::ignoreMessage(QtInfoMsg, "flooding");
    QTest::ignoreMessage(QtWarningMsg, VeltoLogFloodControlMessage.data());
    for (int i = 0; i < 100; ++i)
        VELTO_LOG(enabled, u"flooding"_s);
}

QTEST_GUILESS_MAIN(FloodControlTest)
#include "floodcontroltest.moc"
