// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Action+VeltoAdditions.h"
#include "Font+VeltoAdditions.h"
#include "Menu+VeltoAdditions.h"
#include "veltotest.h"

#include <QApplication>
#include <QDir>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

// A target that records what it was sent.
class Document : public QObject
{
    Q_OBJECT

public slots:
    void save(QObject *sender) { senders.append(sender); }

public:
    QList<QObject *> senders;
};

namespace {

// A menu from a plan such as "A,-,B": "-" is a separator, anything else an item of that title.
void fill(QMenu &menu, const QString &plan)
{
    for (const QString &title : plan.split(u',', Qt::SkipEmptyParts)) {
        if (title == u"-")
            menu.addSeparator();
        else
            menu.addAction(title);
    }
}

QString planOf(const QMenu &menu)
{
    QStringList titles;
    for (const QAction *item : menu.actions())
        titles.append(item->isSeparator() ? u"-"_s : item->text());
    return titles.join(u',');
}

} // namespace

class MenuTest : public QObject
{
    Q_OBJECT

private slots:
    void superfluousSeparatorsGo_data()
    {
        QTest::addColumn<QString>("plan");
        QTest::addColumn<QString>("tidied");
        QTest::newRow("doubled and trailing") << u"A,-,-,B,-"_s << u"A,-,B"_s;
        QTest::newRow("leading") << u"-,A"_s << u"A"_s;
        QTest::newRow("two leading: one pass keeps the second") << u"-,-,A"_s << u"-,A"_s;
        QTest::newRow("tidy already") << u"A,-,B,-,C"_s << u"A,-,B,-,C"_s;
        QTest::newRow("runs") << u"A,-,-,-,B,-,-"_s << u"A,-,B"_s;
        QTest::newRow("only separators") << u"-,-"_s << QString();
    }

    void superfluousSeparatorsGo()
    {
        QFETCH(QString, plan);
        QFETCH(QString, tidied);
        QMenu menu;
        fill(menu, plan);
        velto::removeSuperfluousSeparatorItems(&menu);
        QCOMPARE(planOf(menu), tidied);
    }

    void itemsAddedAndRemovedInBulk()
    {
        QMenu menu;
        fill(menu, u"A,B,C,D"_s);
        velto::removeItemsInRange(&menu, VeltoMakeRange(1, 2));
        velto::removeItemsInRange(&menu, VeltoMakeRange(2, 0));
        QCOMPARE(planOf(menu), u"A,D"_s);
        VELTO_COMPARE_THROWN(velto::removeItemsInRange(&menu, VeltoMakeRange(1, 2)), VeltoRangeException,
                             u"velto::removeItemsInRange: range {1, 2} out of bounds; item count 2"_s);

        QAction *first = new QAction(u"X"_s);
        velto::insertItems(&menu, {first, new QAction(u"Y"_s)}, 1);
        velto::addItems(&menu, {new QAction(u"Z"_s)});
        QCOMPARE(planOf(menu), u"A,X,Y,D,Z"_s);
        QCOMPARE(first->parent(), &menu); // the menu owns items that had no owner
        VELTO_COMPARE_THROWN(velto::insertItems(&menu, {}, 6), VeltoRangeException,
                             u"velto::insertItems: index 6 beyond bounds [0 .. 5]"_s);
        QVERIFY(velto::removeFromMenu(first));
        QVERIFY(!velto::removeFromMenu(first));
    }

    void itemsAreFoundByTagAndAction()
    {
        Document document;
        QMenu menu;
        QMenu *sub = new QMenu(u"Sub"_s);
        velto::addItemWithTitle(&menu, u"Open"_s, &document, "open", 7);
        velto::addItemWithSubmenuVelto(&menu, sub);
        velto::addItemWithTitle(sub, u"Deep save"_s, &document, "save");
        velto::addItemWithTitle(sub, u"Deep print"_s, &document, "print");
        menu.addSeparator()->setProperty("veltoTag", 9);
        QAction *save = velto::addItemWithTitle(&menu, u"Save"_s, &document, "save", 9);

        QCOMPARE(velto::indexOfItemWithTagIgnoringSeparatorsVelto(&menu, 9), 3); // not the separator at 2
        QCOMPARE(velto::indexOfItemWithTagIgnoringSeparatorsVelto(&menu, 8), -1);
        QCOMPARE(velto::itemWithAction(&menu, "save"), save);
        QCOMPARE(velto::indexOfItemWithActionVelto(&menu, "print"), qint64(VeltoNotFound)); // submenus not searched
        QMenu *holder = nullptr;
        qint64 index = -1;
        QCOMPARE(velto::itemWithActionNestedSearch(&menu, "save", &holder, &index), save); // the shallower one
        QCOMPARE(holder, &menu);
        QCOMPARE(velto::itemWithActionNestedSearch(&menu, "print", &holder, &index)->text(), u"Deep print"_s);
        QCOMPARE(holder, sub);
        QCOMPARE(index, 1);

        QStringList visited;
        QVERIFY(velto::visitItemsRecursivelyVeltoUsing(&menu, [&](QAction *item, qint64, bool *) { visited << item->text(); }));
        QCOMPARE(visited, (QStringList{u"Open"_s, u"Sub"_s, QString(), u"Save"_s, u"Deep save"_s, u"Deep print"_s}));
        QVERIFY(!velto::visitItemsRecursivelyVeltoUsing(&menu, [](QAction *, qint64 at, bool *stop) { *stop = at == 1; }));
        QVERIFY(!velto::itemMatchedRecursivelyVeltoAndGetIndex(&menu, &index, [](QAction *, qint64, bool *) { return false; }));

        QCOMPARE(velto::parentMenuItem(sub), sub->menuAction());
        QCOMPARE(velto::actionVelto(velto::parentMenuItem(sub)), "submenuAction");
        QVERIFY(velto::removeFromSupermenu(sub));
        QVERIFY(!velto::parentMenuItem(sub));
        QVERIFY(!velto::removeFromSupermenu(sub));
    }

    void actionsAreSentAsIfChosen()
    {
        Document document;
        QMenu menu;
        QAction *save = velto::addItemWithTitle(&menu, u"Save"_s, &document, "save", QVariant(u"file.txt"_s));
        QSignalSpy chosen(&menu, &QMenu::triggered);
        QVERIFY(velto::dispatchActionAsIfChosenByUser(save));
        QCOMPARE(document.senders, QList<QObject *>{save});
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(menu.activeAction(), save);
        QCOMPARE(save->data(), QVariant(u"file.txt"_s));

        std::unique_ptr<QAction> loose(velto::itemWithTitle(u"Save"_s, &document, "save"));
        QVERIFY(velto::dispatchActionAsIfChosenByUser(loose.get())); // sent directly
        QCOMPARE(document.senders.last(), loose.get());

        save->setEnabled(false);
        QVERIFY(!velto::dispatchActionAsIfChosenByUser(save)); // beeps
        std::unique_ptr<QAction> unknown(velto::itemWithTitle(u"Print"_s, &document, "print"));
        QVERIFY(!velto::dispatchActionAsIfChosenByUser(unknown.get()));
        QCOMPARE(document.senders.size(), 2);

        std::unique_ptr<QAction> caption(velto::itemWithoutActionDisplayingCaptionToUserVelto(u"Recent"_s));
        QVERIFY(!caption->isEnabled());
        QVERIFY(caption->font().bold());
        QCOMPARE(caption->font().pointSizeF(), 14.0);
        QCOMPARE(velto::actionVelto(caption.get()), "someActionThatWillNeverEnableThisItemVelto");
        QVERIFY(!velto::dispatchActionAsIfChosenByUser(caption.get()));
    }

    void itemState()
    {
        QList<QAction *> items{new QAction(u"Item 10"_s, this), new QAction(u"item 2"_s, this), new QAction(u"Apple"_s, this)};
        velto::sortMenuItemsByTitle(items);
        QCOMPARE((QStringList{items[0]->text(), items[1]->text(), items[2]->text()}),
                 (QStringList{u"Apple"_s, u"item 2"_s, u"Item 10"_s}));
        velto::setStateFromBool(items[0], true);
        QVERIFY(items[0]->isChecked());
        velto::setStateFromBool(items[0], false);
        QVERIFY(!items[0]->isChecked());
        QImage wide(64, 32, QImage::Format_ARGB32);
        wide.fill(Qt::red);
        velto::setImageUsingNormalSizeVelto(items[1], wide);
        QCOMPARE(items[1]->icon().availableSizes(), QList<QSize>{QSize(16, 8)});
    }

    void captionAndTidiedSeparators()
    {
        Document document;
        QMenu menu;
        menu.addAction(velto::itemWithoutActionDisplayingCaptionToUserVelto(u"Recent Documents"_s, &menu));
        fill(menu, u"-,Report.txt,-,-,Notes.txt,-"_s);
        velto::addItemWithTitle(&menu, u"Clear Menu"_s, &document, "save");
        menu.addSeparator();
        velto::removeSuperfluousSeparatorItems(&menu);
        QCOMPARE(planOf(menu), u"Recent Documents,-,Report.txt,-,Notes.txt,-,Clear Menu"_s);
        if (qEnvironmentVariableIntValue("VELTO_WRITE_IMAGES") != 1)
            return;
        menu.popup(QPoint(0, 0));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QVERIFY(QDir().mkpath(QStringLiteral(VELTO_IMAGES_DIR)));
        QVERIFY(menu.grab().save(QStringLiteral(VELTO_IMAGES_DIR "/menu-caption-separators.png")));
    }
};

QTEST_MAIN(MenuTest)
#include "menutest.moc"
