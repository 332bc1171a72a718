// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

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

QList<double> every(double step, double from, int count)
{
    QList<double> times;
    for (int i = 0; i < count; ++i)
        times.append(from + i * step);
    return times;
}

} // namespace

class FloodControlTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        // Any warning not announced with ignoreMessage fails the test: the message must appear exactly as often as expected.
        QTest::failOnWarning(QRegularExpression(u".*"_s));
    }

    void firstCallAndNullRecordAlwaysLog()
    {
        // A record muted by an earlier life is still allowed on its first call.
        VeltoLogFloodControlData stale{0, 1e12, 40};
        QVERIFY(VeltoLog_ShouldLogWithFloodControlDataAtTime(&stale, 1.0));
        QVERIFY(VeltoLog_ShouldLogWithFloodControlData(nullptr));
        QVERIFY(VeltoLog_ShouldLogWithFloodControlDataAtTime(nullptr, 1.0));
    }

    void burstsAreMuted_data()
    {
        QTest::addColumn<QList<double>>("times");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<int>("messages");
        QTest::addColumn<double>("disabledUntil");
        // From t=100 every second: 13 lines, muted at t=113 until 123. The muted calls move the last time on,
        // so at 123 the count (still 13, moving on by one) mutes again at once, with the message again; so at 133.
        QTest::newRow("keeps firing: stays muted") << every(1, 100, 40) << u"+++++++++++++"_s + QString(27, u'.') << 3
                                                   << 143.0;
        QTest::newRow("gap just under 5 s still counts") << every(4.99, 1000, 14) << u"+++++++++++++."_s << 1
                                                         << 1000 + 13 * 4.99 + 10;
    }

    void burstsAreMuted()
    {
        QFETCH(QList<double>, times);
        QFETCH(int, messages);
        VeltoLogFloodControlData record;
        for (int i = 0; i < messages; ++i)
            QTest::ignoreMessage(QtWarningMsg, "*** logging flood control enacted, disabling this log statement for 10 seconds");
        QTEST(decisions(record, times), "pattern");
        QTEST(record.disabledUntil, "disabledUntil");
    }

    void pauseOfFiveSecondsClearsTheCount()
    {
        VeltoLogFloodControlData record;
        QTest::ignoreMessage(QtWarningMsg, VeltoLogFloodControlMessage.data());
        QCOMPARE(decisions(record, every(1, 0.5, 14)), u"+++++++++++++."_s);
        // Muted at t=13.5 until 23.5; the call at 23.5 follows a pause: written, and the count starts again.
        QCOMPARE(decisions(record, every(1, 23.5, 13)), QString(13, u'+'));
        QCOMPARE(decisions(record, {40.5}), u"+"_s); // exactly 5 s after 35.5 is a pause too
        QCOMPARE(record.burstCount, 0u);
    }

    void realClockAndMacro()
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
};

QTEST_GUILESS_MAIN(FloodControlTest)
#include "floodcontroltest.moc"
