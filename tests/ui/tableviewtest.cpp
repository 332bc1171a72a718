// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "TableView+VeltoAdditions.h"
#include "VeltoRange.h"
#include "VeltoTableView.h"
#include "veltotest.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

// A table of plants with the columns Name, Kind and Size (identifiers name, kind, size), shown offscreen.
struct Plants
{
    explicit Plants(const QStringList &names = {u"Apple"_s, u"blue"_s, u"  Brown"_s, u"Rose"_s, u"   "_s})
    {
        (void)velto::addTableColumns(&table, {{u"name"_s, u"Name"_s}, {u"kind"_s, u"Kind"_s}, {u"size"_s, u"Size"_s}});
        for (const QString &name : names)
            model.appendRow({new QStandardItem(name), new QStandardItem(u"k-"_s + name.trimmed()), new QStandardItem(u"1"_s)});
        table.resize(400, 300);
        table.show();
    }
    QPoint rowCenter(int row) const { return {40, table.rowViewportPosition(row) + table.rowHeight(row) / 2}; }

    double now = 0;
    QStandardItemModel model;
    VeltoTableView table{[this] { return now; }};
    bool modelSet = (table.setModel(&model), true);
};

class Delegate : public QObject
{
    Q_OBJECT

public:
    bool allowDelete = true;
    QStringList calls;
    QMenu menu;

public slots:
    QString tableViewAutoscrollingColumnIdentifier(VeltoTableView *) { return u"kind"_s; }
    void rowChosen(VeltoTableView *table) { calls << u"action %1"_s.arg(table->currentIndex().row()); }
    bool tableViewRequestsDeleteSelectedRows(VeltoTableView *table)
    {
        calls << u"delete %1"_s.arg(velto::selectedRowsVelto(table).value(0));
        if (allowDelete)
            table->model()->removeRow(velto::selectedRowsVelto(table).value(0));
        return allowDelete;
    }
    QMenu *tableViewMenuForEvent(VeltoTableView *, QContextMenuEvent *event) { return event->pos().y() > 5 ? &menu : nullptr; }
    void tableViewDraggingEntered(VeltoTableView *, QDragEnterEvent *event)
    {
        calls << u"entered, accepted %1"_s.arg(event->isAccepted());
    }
    void tableViewDraggingExited(VeltoTableView *, QDragLeaveEvent *) { calls << u"exited"_s; }
    QPixmap tableViewRequestsDragImageForRowsWithIndexes(VeltoTableView *, const QList<int> &rows, const QStringList &columns)
    {
        calls << u"image %1 %2"_s.arg(rows.value(0)).arg(columns.join(u','));
        return {};
    }
};

// Records the row the table says it draws whenever a cell is painted.
class RowRecorder : public QStyledItemDelegate
{
public:
    explicit RowRecorder(VeltoTableView *table) : QStyledItemDelegate(table), m_table(table) {}
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        mismatches += m_table->drawingRowVelto() != index.row();
        ++painted;
        QStyledItemDelegate::paint(painter, option, index);
    }
    mutable int painted = 0;
    mutable int mismatches = 0;

private:
    VeltoTableView *m_table;
};

QStringList titles(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *item : menu->actions())
        texts << item->text() + (item->isChecked() ? u"+"_s : u"-"_s) + (item->isEnabled() ? u""_s : u" disabled"_s);
    return texts;
}

} // namespace

class TableViewTest : public QObject
{
    Q_OBJECT

private slots:
    void headerMenuChoosesHiddenColumns()
    {
        Plants plants;
        plants.model.setHeaderData(1, Qt::Horizontal, u"Category"_s); // identifier kind, title Category
        (void)velto::addTableColumns(&plants.table, {{u"blank"_s, QString()}});
        plants.table.setHide(true, u"size"_s);
        QHeaderView *header = plants.table.horizontalHeader();
        QContextMenuEvent click(QContextMenuEvent::Mouse, {10, 5}, header->viewport()->mapToGlobal(QPoint(10, 5)));
        QApplication::sendEvent(header->viewport(), &click);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(titles(menu), (QStringList{u"Category+"_s, u"Name+"_s, u"Size-"_s}));
        QCOMPARE(menu->actions().at(0)->data().toString(), u"kind"_s);
        menu->actions().at(0)->trigger();
        menu->close();
        QCOMPARE(plants.table.hiddenColumnIdentifiers(), (QStringList{u"kind"_s, u"size"_s}));
        plants.table.setAllowUserChoosesHiddenColumns(false);
        QCOMPARE(titles(plants.table.headerMenu()), (QStringList{u"Category- disabled"_s, u"Name- disabled"_s, u"Size- disabled"_s}));
        plants.table.vtToggleColumnVisible(plants.table.headerMenu()->actions().at(1));
        QVERIFY(!plants.table.isHideColumnWithIdentifier(u"name"_s));
    }

    void hiddenColumnsByIdentifierAndDefaultsOncePerName()
    {
        VeltoTestDefaults defaults;
        Plants plants;
        plants.table.setHiddenColumnIdentifiers({u"size"_s, u"kind"_s, u"no such column"_s});
        QCOMPARE(plants.table.hiddenColumns(), (QList<int>{1, 2}));
        plants.table.horizontalHeader()->moveSection(2, 0); // hidden columns come in display order
        QCOMPARE(plants.table.hiddenColumnIdentifiers(), (QStringList{u"size"_s, u"kind"_s}));
        QCOMPARE(plants.table.allTableColumns(), (QStringList{u"size"_s, u"name"_s, u"kind"_s}));
        plants.table.setHide(true, u"no such column"_s);
        QVERIFY(!plants.table.isHideColumnWithIdentifier(u"no such column"_s));
        // Without an autosave name, defaults apply every time.
        plants.table.setDefaultHiddenColumnIdentifiers({u"name"_s});
        QCOMPARE(plants.table.hiddenColumnIdentifiers(), QStringList{u"name"_s});
        plants.table.setDefaultHiddenColumnIdentifiers({u"kind"_s});
        QCOMPARE(plants.table.hiddenColumnIdentifiers(), QStringList{u"kind"_s});

        // With one, only the first time; the user's later choice is what the next table of that name shows.
        Plants first;
        first.table.setAutosaveName(u"Plants"_s);
        first.table.setDefaultHiddenColumnIdentifiers({u"size"_s});
        QCOMPARE(first.table.hiddenColumnIdentifiers(), QStringList{u"size"_s});
        QCOMPARE(defaults->objectForKey(u"Plants(IsInitVeltoHiddenColumns)"_s), QVariant(true));
        first.table.setHide(false, u"size"_s);
        first.table.setHide(true, u"name"_s);
        first.table.setDefaultHiddenColumnIdentifiers({u"kind"_s});
        QCOMPARE(first.table.hiddenColumnIdentifiers(), QStringList{u"name"_s});
        Plants next;
        next.table.setAutosaveName(u"Plants"_s);
        next.table.setDefaultHiddenColumnIdentifiers({u"size"_s});
        QCOMPARE(next.table.hiddenColumnIdentifiers(), QStringList{u"name"_s});
    }

    void typeToSelect_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QList<double>>("times");
        QTest::addColumn<int>("selected");

        QTest::newRow("b") << u"b"_s << QList<double>{0} << 1;
        QTest::newRow("b, then r: after leading spaces") << u"br"_s << QList<double>{0, 1.0} << 2;
        QTest::newRow("r after a pause searches r alone") << u"br"_s << QList<double>{0, 2.0} << 3;
        QTest::newRow("a pause of exactly 1.5 s starts again") << u"br"_s << QList<double>{0, 1.5} << 3;
        QTest::newRow("each text within 1.5 s of the last") << u"bro"_s << QList<double>{0, 1.4, 2.8} << 2;
        QTest::newRow("case-insensitive") << u"RO"_s << QList<double>{0, 0.1} << 3;
        QTest::newRow("white space only never matches") << u" "_s << QList<double>{0} << -1;
        QTest::newRow("no match leaves the selection") << u"z"_s << QList<double>{0} << -1;
    }

    void typeToSelect()
    {
        QFETCH(QString, typed);
        QFETCH(QList<double>, times);
        QFETCH(int, selected);
        Plants plants;
        for (qsizetype i = 0; i < typed.size(); ++i) {
            plants.now = times.at(i);
            QTest::keyClicks(&plants.table, typed.mid(i, 1));
        }
        QCOMPARE(velto::selectedRowsVelto(&plants.table), selected < 0 ? QList<int>() : QList<int>{selected});
    }

    void delegateHooks()
    {
        Plants plants({u"Apple"_s, u"Banana"_s, u"Cherry"_s, u"Damson"_s});
        Delegate delegate;
        plants.table.setDelegate(&delegate);
        plants.table.setAction("rowChosen");
        // Type-to-select searches the delegate's column (kind: "k-…") and sends the action to the delegate.
        QTest::keyClicks(&plants.table, u"k-c"_s);
        QCOMPARE(velto::selectedRowsVelto(&plants.table), QList<int>{2});
        QCOMPARE(delegate.calls, (QStringList{u"action 0"_s, u"action 0"_s, u"action 2"_s}));
        // A click ends the typed prefix.
        QTest::mouseClick(plants.table.viewport(), Qt::LeftButton, {}, plants.rowCenter(3));
        QTest::keyClicks(&plants.table, u"k"_s);
        QCOMPARE(velto::selectedRowsVelto(&plants.table), QList<int>{0});

        delegate.calls.clear();
        velto::selectSingleRow(&plants.table, 1, false);
        QTest::keyClick(&plants.table, Qt::Key_Backspace);
        delegate.allowDelete = false;
        velto::selectSingleRow(&plants.table, 1, false);
        QTest::keyClick(&plants.table, Qt::Key_Delete);
        QCOMPARE(delegate.calls, (QStringList{u"delete 1"_s, u"delete 1"_s}));
        QCOMPARE(plants.model.rowCount(), 3);

        const QPoint row0 = plants.rowCenter(0);
        QContextMenuEvent menuClick(QContextMenuEvent::Mouse, row0, plants.table.viewport()->mapToGlobal(row0));
        QApplication::sendEvent(plants.table.viewport(), &menuClick);
        QTRY_VERIFY(delegate.menu.isVisible());
        delegate.menu.close();

        plants.table.setDragDropMode(QAbstractItemView::DragDrop);
        const std::unique_ptr<QMimeData> data(plants.model.mimeData({plants.model.index(0, 0)}));
        QDragEnterEvent enter(plants.rowCenter(1), Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(plants.table.viewport(), &enter);
        QVERIFY(enter.isAccepted()); // the table answered after the delegate saw it unanswered
        QDragLeaveEvent leave;
        QApplication::sendEvent(plants.table.viewport(), &leave);
        // Dragging a row asks the delegate for its image (because it has tableViewMenuForEvent).
        plants.table.setHide(true, u"size"_s);
        velto::selectSingleRow(&plants.table, 1, false);
        QTest::mousePress(plants.table.viewport(), Qt::LeftButton, {}, plants.rowCenter(1));
        QTest::mouseMove(plants.table.viewport(), plants.rowCenter(1) + QPoint(1, 0));
        QTest::mouseMove(plants.table.viewport(), plants.rowCenter(1) + QPoint(3 * QApplication::startDragDistance(), 0));
        QTest::mouseRelease(plants.table.viewport(), Qt::LeftButton);
        QCOMPARE(delegate.calls.mid(2), (QStringList{u"entered, accepted 0"_s, u"exited"_s, u"image 1 name,kind"_s}));

        // A delegate that answers nothing leaves the table's own behaviour.
        QObject mute;
        plants.table.setDelegate(&mute);
        QTest::keyClick(&plants.table, Qt::Key_Delete);
        QApplication::sendEvent(plants.table.viewport(), &menuClick);
        QCOMPARE(plants.model.rowCount(), 3);
    }

    void rightClickSelectionColourAndDrawingRow()
    {
        Plants plants;
        plants.table.selectionModel()->select(QItemSelection(plants.model.index(0, 0), plants.model.index(1, 2)),
                                              QItemSelectionModel::Select);
        QTest::mouseClick(plants.table.viewport(), Qt::RightButton, {}, plants.rowCenter(1));
        QCOMPARE(velto::selectedRowsVelto(&plants.table), (QList<int>{0, 1}));
        QTest::mouseClick(plants.table.viewport(), Qt::RightButton, {}, plants.rowCenter(3));
        QCOMPARE(velto::selectedRowsVelto(&plants.table), QList<int>{3});
        QVERIFY(plants.table.selectionModel()->isRowSelected(3)); // the whole row, not the cell clicked

        plants.table.setSelectionHighlightColorVelto(QColor(200, 10, 10));
        const auto colourRightOf = [&](int row) {
            const QImage image = plants.table.viewport()->grab().toImage();
            return image.pixelColor(plants.table.columnViewportPosition(2) + plants.table.columnWidth(2) - 4,
                                    plants.rowCenter(row).y());
        };
        QCOMPARE(colourRightOf(3), QColor(200, 10, 10));
        QVERIFY(colourRightOf(2) != QColor(200, 10, 10));
        plants.table.setSelectionHighlightColorVelto(QColor());
        QVERIFY(colourRightOf(3) != QColor(200, 10, 10));

        auto *recorder = new RowRecorder(&plants.table);
        plants.table.setItemDelegate(recorder);
        (void)plants.table.viewport()->grab();
        QCOMPARE(recorder->painted, 15);
        QCOMPARE(recorder->mismatches, 0);
        QCOMPARE(plants.table.drawingRowVelto(), qint64(VeltoNotFound));
    }

    void plainTextExport()
    {
        Plants plants({u"Apple"_s, u"Banana"_s, u"Cherry"_s});
        plants.model.insertColumn(1);
        plants.model.setHorizontalHeaderItem(1, new QStandardItem(QString()));
        plants.model.setItem(0, 3, new QStandardItem(QIcon(), QString()));
        plants.model.item(0, 3)->setData(QPixmap(4, 4), Qt::DisplayRole);
        plants.model.item(2, 3)->setData(2.5, Qt::DisplayRole);
        QCOMPARE(velto::selectedRowContentAsPlainText(&plants.table), u"Name\t\tKind\tSize\n"_s);
        plants.table.selectionModel()->select(plants.model.index(2, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        plants.table.selectionModel()->select(plants.model.index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        QCOMPARE(velto::selectedRowContentAsPlainText(&plants.table),
                 u"Name\t\tKind\tSize\nApple\tk-Apple\nCherry\tk-Cherry\t2.5\n"_s);
    }

    void singleRowSelectionAndEnabling()
    {
        QStringList names;
        for (int i = 0; i < 100; ++i)
            names << u"Plant %1"_s.arg(i);
        Plants plants(names);
        velto::selectSingleRow(&plants.table, 2, true);
        for (qint64 row : {qint64(VeltoNotFound), qint64(-1), qint64(100)})
            velto::selectSingleRow(&plants.table, row, true);
        QCOMPARE(velto::selectedRowsVelto(&plants.table), QList<int>{2});
        velto::selectSingleRow(&plants.table, 90, false);
        QCOMPARE(velto::selectedRowsVelto(&plants.table), QList<int>{90});
        QVERIFY(plants.table.rowViewportPosition(90) > plants.table.viewport()->height());
        velto::selectSingleRow(&plants.table, 90, true);
        QVERIFY(plants.table.rowViewportPosition(90) < plants.table.viewport()->height());

        velto::setTableColumnIsEnabled(&plants.table, 1, false);
        plants.table.edit(plants.model.index(0, 1));
        QVERIFY(!plants.table.findChild<QLineEdit *>());
        plants.table.edit(plants.model.index(0, 0));
        QVERIFY(plants.table.findChild<QLineEdit *>());
        QApplication::setActiveWindow(&plants.table);
        plants.table.setFocus();
        QVERIFY(plants.table.hasFocus());
        velto::setTableViewEnabled(&plants.table, false);
        plants.table.setFocus();
        QVERIFY(!plants.table.hasFocus() && velto::selectedRowsVelto(&plants.table).isEmpty());
        QVERIFY(!velto::isTableColumnEnabledVelto(&plants.table, 0) && !velto::isTableColumnEnabledVelto(&plants.table, 2));
        velto::setTableViewEnabled(&plants.table, true);
        QVERIFY(plants.table.isEnabled() && velto::isTableColumnEnabledVelto(&plants.table, 1));
        QCOMPARE(plants.table.itemDelegateForColumn(1), nullptr);
    }

    void bulkColumnChanges()
    {
        Plants plants({u"Apple"_s});
        QVERIFY(velto::addTableColumns(&plants.table, {{u"colour"_s, u"Colour"_s}}));
        QCOMPARE(plants.table.allTableColumns(), (QStringList{u"name"_s, u"kind"_s, u"size"_s, u"colour"_s}));
        QVERIFY(velto::removeTableColumns(&plants.table, {u"kind"_s, u"unknown"_s}));
        QCOMPARE(plants.table.allTableColumns(), (QStringList{u"name"_s, u"size"_s, u"colour"_s}));
        QVERIFY(velto::removeTableColumns(&plants.table, plants.table.allTableColumns()));
        QCOMPARE(plants.model.columnCount(), 0);
        QVERIFY(velto::setTableColumns(&plants.table, {{u"a"_s, u"A"_s}, {QString(), u"B"_s}}));
        QCOMPARE(plants.table.allTableColumns(), (QStringList{u"a"_s, u"B"_s})); // no identifier: the title names it

        QStringListModel fixed({u"one"_s});
        plants.table.setModel(&fixed);
        QVERIFY(!velto::addTableColumns(&plants.table, {{u"x"_s, u"X"_s}}));
        QCOMPARE(plants.table.allTableColumns().size(), 1);
    }
};

QTEST_MAIN(TableViewTest)
#include "tableviewtest.moc"
