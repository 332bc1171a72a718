// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "ComboBox+VeltoActionFiltering.h"
#include "LineEdit+VeltoActionFiltering.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// A combo box that lets a pick of the item already selected through.
class RepickingComboBox : public QComboBox
{
    Q_OBJECT

public:
    Q_INVOKABLE bool shouldIgnoreActionForUnchangedPopUpSelectionVelto() const { return false; }
};

// A window with a field under test, a combo box and a plain field to move the focus to.
struct Form
{
    explicit Form(QComboBox *combo = new QComboBox)
        : combo(combo)
    {
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(field);
        layout->addWidget(combo);
        layout->addWidget(elsewhere);
        combo->addItems({u"Small"_s, u"Medium"_s, u"Large"_s});
        velto::connectActionVelto(field, &window, [this] { ++fieldActions; });
        velto::connectActionVelto(combo, &window, [this] { ++comboActions; });
        window.show();
        QApplication::setActiveWindow(&window);
    }
    // Picks \a item from the combo box's list with the mouse.
    void pick(int item)
    {
        combo->showPopup();
        QAbstractItemView *list = combo->view();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(item, 0)).center());
    }

    QWidget window;
    QLineEdit *field = new QLineEdit;
    QComboBox *combo;
    QLineEdit *elsewhere = new QLineEdit;
    int fieldActions = 0;
    int comboActions = 0;
};

} // namespace

class ActionFilteringTest : public QObject
{
    Q_OBJECT

private slots:
    void lineEditSendsOnlyChanges_data()
    {
        QTest::addColumn<bool>("filtered");
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<int>("actions");

        QTest::newRow("in and out") << true << QStringList{u"focus"_s, u"leave"_s} << 0;
        QTest::newRow("in, typing, out") << true << QStringList{u"focus"_s, u"type"_s, u"leave"_s} << 1;
        QTest::newRow("text set by the program") << true << QStringList{u"focus"_s, u"set"_s, u"leave"_s} << 0;
        QTest::newRow("Return twice") << true << QStringList{u"focus"_s, u"return"_s, u"return"_s} << 1;
        QTest::newRow("Return, typing, Return") << true << QStringList{u"focus"_s, u"return"_s, u"type"_s, u"return"_s} << 2;
        QTest::newRow("typing, Return, out") << true << QStringList{u"focus"_s, u"type"_s, u"return"_s, u"leave"_s} << 2;
        QTest::newRow("each editing starts afresh") << true
                                                    << QStringList{u"focus"_s, u"type"_s, u"leave"_s, u"focus"_s, u"leave"_s} << 1;
        QTest::newRow("unfiltered: in and out") << false << QStringList{u"focus"_s, u"leave"_s} << 1;
        QTest::newRow("unfiltered: Return twice") << false << QStringList{u"focus"_s, u"return"_s, u"return"_s} << 2;
    }

    void lineEditSendsOnlyChanges()
    {
        QFETCH(bool, filtered);
        QFETCH(QStringList, steps);
        QFETCH(int, actions);
        Form form;
        if (filtered) {
            velto::disableSendActionWhenTextValueNotChanged(form.field);
            velto::disableSendActionWhenTextValueNotChanged(form.field); // once is enough
        }
        for (const QString &step : steps) {
            if (step == u"focus") {
                QTest::mouseClick(form.field, Qt::LeftButton);
                QVERIFY(form.field->hasFocus());
                QCOMPARE(velto::hasChangedTextSinceUserStartedLastEdit(form.field), !filtered);
            } else if (step == u"leave") {
                QTest::mouseClick(form.elsewhere, Qt::LeftButton);
                QVERIFY(!form.field->hasFocus());
            } else if (step == u"type") {
                QTest::keyClicks(form.field, u"a"_s);
                QVERIFY(velto::hasChangedTextSinceUserStartedLastEdit(form.field));
            } else if (step == u"set") {
                form.field->setText(u"set by the program"_s);
            } else {
                QTest::keyClick(form.field, Qt::Key_Return);
            }
        }
        QCOMPARE(form.fieldActions, actions);
    }

    void comboBoxPicks()
    {
        Form form;
        velto::disableSendActionWhenTextValueNotChanged(form.combo);
        form.combo->setFocus(Qt::TabFocusReason);
        form.pick(2);
        QCOMPARE(form.comboActions, 1);
        form.elsewhere->setFocus(Qt::TabFocusReason); // nothing typed: no action for leaving
        form.combo->setFocus(Qt::TabFocusReason);
        form.pick(2); // the item it had when editing began
        QCOMPARE(form.comboActions, 1);
        QTest::keyClick(form.combo, Qt::Key_Up); // another item
        QCOMPARE(form.comboActions, 2);

        // A class of combo box may let a pick of the same item through.
        Form repicking(new RepickingComboBox);
        velto::disableSendActionWhenTextValueNotChanged(repicking.combo);
        repicking.combo->setFocus(Qt::TabFocusReason);
        repicking.pick(0);
        QCOMPARE(repicking.comboActions, 1);

        // An editable combo box follows the text-field rule for what the user types.
        Form typed;
        typed.combo->setEditable(true);
        velto::disableSendActionWhenTextValueNotChanged(typed.combo);
        typed.combo->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(typed.combo->lineEdit(), u"Huge"_s);
        QVERIFY(velto::hasChangedTextSinceUserStartedLastEdit(typed.combo));
        typed.elsewhere->setFocus(Qt::TabFocusReason);
        QCOMPARE(typed.comboActions, 1);
    }
};

QTEST_MAIN(ActionFilteringTest)
#include "actionfilteringtest.moc"
