// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "LineEdit+VeltoFileSize.h"
#include "VeltoAttributedFileSize.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;

class FileSizeFieldTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        VeltoFormatter::setDefaultVeltoLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void arrowsStepTheField_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("up");
        QTest::addColumn<QString>("expected");
        QTest::newRow("5 KB down") << u"5 KB"_s << false << u"4 KB"_s;
        QTest::newRow("1 KB down: the step is 1,000") << u"1 KB"_s << false << u"0 KB"_s;
        QTest::newRow("1 MB down") << u"1 MB"_s << false << u"0 KB"_s;
        QTest::newRow("999 KB up") << u"999 KB"_s << true << u"1 MB"_s;
        QTest::newRow("2 GB up") << u"2 GB"_s << true << u"3 GB"_s;
        QTest::newRow("empty up") << QString() << true << u"1 KB"_s;
    }

    void arrowsStepTheField()
    {
        QFETCH(QString, text);
        QFETCH(bool, up);
        QLineEdit field(text);
        if (up)
            velto::stepUpFileSizeInTextField(&field);
        else
            velto::stepDownFileSizeInTextField(&field);
        QTEST(field.text(), "expected");
        velto::stepUpFileSizeInTextField(nullptr);
    }

    void unitIsGray()
    {
        QTextCharFormat plain;
        plain.setFontWeight(QFont::Bold);
        const VeltoAttributedFileSize shown =
            velto::attributedStringForObjectValue(VeltoFileSizeFormatter(), 1500000, plain);
        QCOMPARE(shown.string, u"1.5 MB"_s);
        QCOMPARE(shown.formats.size(), 2);
        QCOMPARE(shown.formats[0].start, 0);
        QCOMPARE(shown.formats[0].length, 4);
        QCOMPARE(shown.formats[0].format, plain);
        QCOMPARE(shown.formats[1].start, 4);
        QCOMPARE(shown.formats[1].length, 2);
        QCOMPARE(shown.formats[1].format.foreground().color(), QColor(Qt::gray));
        QCOMPARE(shown.formats[1].format.fontWeight(), int(QFont::Bold));

        const VeltoAttributedFileSize none = velto::attributedStringForObjectValue(VeltoFileSizeFormatter(), u"x"_s, plain);
        QVERIFY(none.string.isEmpty());
        QVERIFY(none.formats.isEmpty());
    }
};

QTEST_MAIN(FileSizeFieldTest)
#include "filesizefieldtest.moc"
