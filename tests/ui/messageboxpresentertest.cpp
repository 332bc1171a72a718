// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAlertPresenter.h"
#include "VeltoMessageBoxPresenter.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

class MessageBoxPresenterTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutAPresenterTheErrorIsLogged();
    void installedPresenterOpensAMessageBox();
    void onTheActiveWindowItIsASheet();
    void modalAlertAnswersTheChosenButton_data();
    void modalAlertAnswersTheChosenButton();
    void modalAlertWithoutAPresenterIsLogged();
};

void MessageBoxPresenterTest::withoutAPresenterTheErrorIsLogged()
{
    VeltoAlertPresenter::install(nullptr);
    QTest::ignoreMessage(QtWarningMsg, "*** Permission denied [NSPOSIXErrorDomain code 13]");
    VeltoAlertPresenter::show(VeltoError::posixError(13));
}

void MessageBoxPresenterTest::installedPresenterOpensAMessageBox()
{
    VeltoMessageBoxPresenter::installAsPresenter();
    QVERIFY(dynamic_cast<VeltoMessageBoxPresenter *>(VeltoAlertPresenter::installed().get()));
    VeltoAlertPresenter::show(VeltoError::errorWithDomain(VeltoCoreErrorDomain, 1, u"The file is damaged."_s));
    QMessageBox *box = nullptr;
    QTRY_VERIFY((box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
                || [&] {
                       for (QWidget *widget : QApplication::topLevelWidgets())
                           if ((box = qobject_cast<QMessageBox *>(widget)) && widget->isVisible())
                               return true;
                       return false;
                   }());
    QCOMPARE(box->text(), u"The file is damaged."_s);
    QCOMPARE(box->icon(), QMessageBox::Warning);
    QPointer<QMessageBox> guard(box);
    box->accept();
    QTRY_VERIFY(guard.isNull()); // deletes itself when closed
    VeltoAlertPresenter::install(nullptr);
}

void MessageBoxPresenterTest::onTheActiveWindowItIsASheet()
{
    QWidget window;
    window.show();
    QApplication::setActiveWindow(&window);
    QTRY_COMPARE(QApplication::activeWindow(), &window);
    VeltoMessageBoxPresenter::installAsPresenter();
    QString longText;
    for (int line = 0; line < 80; ++line)
        longText += u"A line of an error report that goes on for a while.\n"_s;
    VeltoAlertPresenter::show(VeltoError::errorWithDomain(VeltoCoreErrorDomain, 1, longText));
    auto *box = window.findChild<QMessageBox *>();
    QVERIFY(box && box->isVisible());
    QCOMPARE(box->windowModality(), Qt::WindowModal);
    QVERIFY(box->text().endsWith(u"...")); // shortened to fit the screen
    QPointer<QMessageBox> guard(box);
    box->accept();
    QTRY_VERIFY(guard.isNull());
    VeltoAlertPresenter::install(nullptr);
}

void MessageBoxPresenterTest::modalAlertAnswersTheChosenButton_data()
{
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<QString>("answer"); // a button's title, or a key
    QTest::addColumn<int>("response");

    const QStringList question{u"Enable Zombies"_s, u"Cancel"_s};
    QTest::newRow("first button") << question << u"Enable Zombies"_s << 1000;
    QTest::newRow("second button") << question << u"Cancel"_s << 1001;
    QTest::newRow("Return chooses the first") << question << u"<Return>"_s << 1000;
    QTest::newRow("Escape chooses Cancel") << question << u"<Escape>"_s << 1001;
    QTest::newRow("third button") << QStringList{u"Save"_s, u"Cancel"_s, u"Don't Save"_s} << u"Don't Save"_s << 1002;
    QTest::newRow("no buttons shows OK") << QStringList() << u"OK"_s << 1000;
}

void MessageBoxPresenterTest::modalAlertAnswersTheChosenButton()
{
    QFETCH(QStringList, buttons);
    QFETCH(QString, answer);

    VeltoMessageBoxPresenter::installAsPresenter();
    QString text, informativeText;
    QStringList shownTitles;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    // The alert runs its own loop; this timer answers it from inside, as a user would.
    QTimer answering;
    answering.setInterval(10);
    connect(&answering, &QTimer::timeout, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        answering.stop();
        text = box->text();
        informativeText = box->informativeText();
        icon = box->icon();
        for (QAbstractButton *button : box->buttons())
            shownTitles << button->text();
        if (answer == u"<Return>")
            QTest::keyClick(box, Qt::Key_Return);
        else if (answer == u"<Escape>")
            QTest::keyClick(box, Qt::Key_Escape);
        else
            for (QAbstractButton *button : box->buttons())
                if (button->text() == answer)
                    button->click();
    });
    answering.start();
    const int response = VeltoAlertPresenter::runModal(
        {u"Do you want to enable zombie objects?"_s, u"Memory will leak."_s, buttons});
    QTEST(response, "response");
    QCOMPARE(text, u"Do you want to enable zombie objects?"_s);
    QCOMPARE(informativeText, u"Memory will leak."_s);
    QCOMPARE(icon, QMessageBox::Warning);
    shownTitles.sort();
    QStringList expectedTitles = buttons.isEmpty() ? QStringList{u"OK"_s} : buttons;
    expectedTitles.sort();
    QCOMPARE(shownTitles, expectedTitles);
    VeltoAlertPresenter::install(nullptr);
}

void MessageBoxPresenterTest::modalAlertWithoutAPresenterIsLogged()
{
    VeltoAlertPresenter::install(nullptr);
    QTest::ignoreMessage(QtWarningMsg, "*** Error: Zombie Access!\nA memory management error occurred.");
    QCOMPARE(VeltoAlertPresenter::runModal({u"Error: Zombie Access!"_s, u"A memory management error occurred."_s, {u"OK"_s}}),
             VeltoAlertPresenter::NoResponse);
}

QTEST_MAIN(MessageBoxPresenterTest)
#include "messageboxpresentertest.moc"
