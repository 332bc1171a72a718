// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Application+VeltoSheets.h"
#include "VeltoSheetBlockHelper.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

class SheetTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutAParentTheBlockRunsBeforeReturning();
    void onAParentTheCallReturnsAtOnce();
    void everyEndCallsTheBlockOnce_data();
    void everyEndCallsTheBlockOnce();
    void theHelperKeepsItselfAliveWhileUp();
    void aSheetAlreadyUpIsNotBegunAgain();
    void endingAnUnknownSheetStopsTheModalLoop();
};

void SheetTest::withoutAParentTheBlockRunsBeforeReturning()
{
    QDialog sheet;
    QStringList events;
    QTimer::singleShot(0, &sheet, [&] {
        events << (sheet.isVisible() && sheet.windowModality() == Qt::ApplicationModal ? u"running modally"_s : u"not shown"_s);
        velto::endSheetVelto(&sheet, 42);
    });
    velto::beginSheetVelto(&sheet, nullptr, [&](qint64 code) { events << u"block %1"_s.arg(code); });
    events << u"returned"_s;
    QCOMPARE(events, (QStringList{u"running modally"_s, u"block 42"_s, u"returned"_s}));
    QVERIFY(!sheet.isVisible());
}

void SheetTest::onAParentTheCallReturnsAtOnce()
{
    QWidget window;
    window.show();
    auto *sheet = new QDialog;
    QList<qint64> codes;
    velto::beginSheetVelto(sheet, &window, [&](qint64 code) { codes << code; });
    QVERIFY(codes.isEmpty());
    QVERIFY(sheet->isVisible());
    QCOMPARE(sheet->parentWidget(), &window);
    QCOMPARE(sheet->windowModality(), Qt::WindowModal);
    QVERIFY(sheet->isWindow());
    velto::endSheetVelto(sheet, 7);
    QCOMPARE(codes, QList<qint64>{7});
    QVERIFY(!sheet->isVisible());
    velto::endSheetVelto(sheet, 8); // no longer a sheet: nothing to end, no second call
    QCOMPARE(codes, QList<qint64>{7});
    // Once ended, the same dialog can be a sheet again.
    velto::beginSheetVelto(sheet, &window, [&](qint64 code) { codes << code; });
    velto::endSheetVelto(sheet, 9);
    QCOMPARE(codes, (QList<qint64>{7, 9}));
}

void SheetTest::everyEndCallsTheBlockOnce_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<qint64>("code");

    QTest::newRow("endSheetVelto") << u"end"_s << qint64(-3);
    QTest::newRow("accepted by the user") << u"accept"_s << qint64(QDialog::Accepted);
    QTest::newRow("rejected by the user") << u"reject"_s << qint64(QDialog::Rejected);
    QTest::newRow("deleted while up") << u"delete"_s << qint64(QDialog::Rejected);
    QTest::newRow("the block deletes the sheet") << u"end, block deletes"_s << qint64(5);
}

void SheetTest::everyEndCallsTheBlockOnce()
{
    QFETCH(QString, how);
    QFETCH(qint64, code);
    QWidget window;
    window.show();
    QPointer<QDialog> sheet = new QDialog;
    QList<qint64> codes;
    velto::beginSheetVelto(sheet, &window, [&](qint64 returned) {
        codes << returned;
        if (how.endsWith(u"block deletes"))
            delete sheet.data();
    });
    if (how.startsWith(u"end"))
        velto::endSheetVelto(sheet, code);
    else if (how == u"accept")
        sheet->accept();
    else if (how == u"reject")
        sheet->reject();
    else
        delete sheet.data();
    QCOMPARE(codes, QList<qint64>{code});
    if (sheet) {
        QVERIFY(!sheet->isVisible());
        velto::endSheetVelto(sheet, 99);
        sheet->reject();
        QCOMPARE(codes, QList<qint64>{code});
        delete sheet.data();
    }
    QCOMPARE(codes, QList<qint64>{code});
}

void SheetTest::theHelperKeepsItselfAliveWhileUp()
{
    QWidget window;
    window.show();
    QDialog sheet;
    int calls = 0;
    std::weak_ptr<VeltoSheetBlockHelper> observed;
    {
        const auto helper = VeltoSheetBlockHelper::initWithDidEndBlock([&](qint64) { ++calls; });
        observed = helper;
        QVERIFY(!helper->isSheetUp());
        helper->beginSheet(&sheet, &window);
        QVERIFY(helper->isSheetUp());
        QDialog other;
        helper->beginSheet(&other, &window); // one sheet per helper
        QVERIFY(!other.isVisible());
    }
    const auto helper = observed.lock();
    QVERIFY(helper);
    helper->endSheet(&sheet, 3);
    QVERIFY(!helper->isSheetUp());
    QCOMPARE(calls, 1);
    helper->endSheet(&sheet, 4);
    QCOMPARE(calls, 1);
    QVERIFY(observed.use_count() == 1); // only ours is left
}

void SheetTest::aSheetAlreadyUpIsNotBegunAgain()
{
    QWidget window;
    window.show();
    QDialog sheet;
    QStringList calls;
    velto::beginSheetVelto(&sheet, &window, [&](qint64 code) { calls << u"first %1"_s.arg(code); });
    velto::beginSheetVelto(&sheet, &window, [&](qint64 code) { calls << u"second %1"_s.arg(code); });
    velto::endSheetVelto(&sheet, 1);
    QCOMPARE(calls, QStringList{u"first 1"_s});
}

void SheetTest::endingAnUnknownSheetStopsTheModalLoop()
{
    QDialog modal;
    QDialog stranger;
    QTimer::singleShot(0, &modal, [&] { velto::endSheetVelto(&stranger, 5); });
    QCOMPARE(modal.exec(), 5);
}

QTEST_MAIN(SheetTest)
#include "sheettest.moc"
