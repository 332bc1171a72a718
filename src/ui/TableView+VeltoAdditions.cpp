// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "TableView+VeltoAdditions.h"

#include "VeltoRange.h"

#include <QHeaderView>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

// Stands in for a disabled column's delegate: draws through the delegate it replaced with the enabled
// state cleared and opens no editor. The replaced delegate is put back when the column is enabled.
class VTDisabledColumnDelegate : public QStyledItemDelegate
{
public:
    VTDisabledColumnDelegate(QTableView *table, QAbstractItemDelegate *replaced)
        : QStyledItemDelegate(table), m_table(table), m_replaced(replaced)
    {
    }

    QAbstractItemDelegate *replaced() const { return m_replaced; }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem disabled(option);
        disabled.state &= ~QStyle::State_Enabled;
        if (QAbstractItemDelegate *drawing = m_replaced ? m_replaced.data() : m_table->itemDelegate(); drawing != this)
            drawing->paint(painter, disabled, index);
        else
            QStyledItemDelegate::paint(painter, disabled, index);
    }

    QWidget *createEditor(QWidget *, const QStyleOptionViewItem &, const QModelIndex &) const override { return nullptr; }

private:
    QTableView *m_table;
    QPointer<QAbstractItemDelegate> m_replaced;
};

bool isImage(const QVariant &value)
{
    const int type = value.metaType().id();
    return type == QMetaType::QPixmap || type == QMetaType::QImage || type == QMetaType::QIcon
        || type == QMetaType::QBitmap;
}

QString headerTitle(const QAbstractItemModel *model, int column)
{
    return model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

// The text a cell shows: its delegate's display text where the delegate is a styled one.
QString shownText(const QTableView *table, const QModelIndex &index, const QVariant &value)
{
    if (const auto *styled = qobject_cast<const QStyledItemDelegate *>(table->itemDelegateForIndex(index)))
        return styled->displayText(value, table->locale());
    return value.toString();
}

} // namespace

namespace velto {

QList<int> tableColumnsVelto(const QTableView *table)
{
    QList<int> columns;
    const QAbstractItemModel *model = table ? table->model() : nullptr;
    if (!model)
        return columns;
    const QHeaderView *header = table->horizontalHeader();
    const int count = model->columnCount(table->rootIndex());
    for (int visual = 0; visual < count; ++visual)
        columns << header->logicalIndex(visual);
    return columns;
}

QString identifierOfTableColumnVelto(const QTableView *table, int column)
{
    const QAbstractItemModel *model = table ? table->model() : nullptr;
    if (!model || column < 0 || column >= model->columnCount(table->rootIndex()))
        return {};
    const QString identifier = model->headerData(column, Qt::Horizontal, VeltoTableColumnIdentifierRole).toString();
    return identifier.isEmpty() ? headerTitle(model, column) : identifier;
}

int tableColumnWithIdentifierVelto(const QTableView *table, const QString &identifier)
{
    for (int column : tableColumnsVelto(table)) {
        if (identifierOfTableColumnVelto(table, column) == identifier)
            return column;
    }
    return -1;
}

void setTableColumnIsEnabled(QTableView *table, int column, bool enabled)
{
    if (!table || !table->model() || column < 0 || column >= table->model()->columnCount(table->rootIndex()))
        return;
    QAbstractItemDelegate *current = table->itemDelegateForColumn(column);
    auto *disabled = dynamic_cast<VTDisabledColumnDelegate *>(current);
    if (enabled && disabled) {
        table->setItemDelegateForColumn(column, disabled->replaced());
        delete disabled;
    } else if (!enabled && !disabled) {
        table->setItemDelegateForColumn(column, new VTDisabledColumnDelegate(table, current));
    }
    table->viewport()->update();
}

bool isTableColumnEnabledVelto(const QTableView *table, int column)
{
    return !table || !dynamic_cast<VTDisabledColumnDelegate *>(table->itemDelegateForColumn(column));
}

void setTableViewEnabled(QTableView *table, bool enabled)
{
    if (!table)
        return;
    table->setEnabled(enabled);
    for (int column : tableColumnsVelto(table))
        setTableColumnIsEnabled(table, column, enabled);
    if (!enabled)
        table->clearSelection();
}

QList<int> selectedRowsVelto(const QTableView *table)
{
    QList<int> rows;
    const QItemSelectionModel *selection = table ? table->selectionModel() : nullptr;
    if (!selection)
        return rows;
    for (const QItemSelectionRange &range : selection->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows << row;
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void selectSingleRow(QTableView *table, qint64 row, bool scroll)
{
    const QAbstractItemModel *model = table ? table->model() : nullptr;
    if (!model || !table->selectionModel() || row < 0 || row == qint64(VeltoNotFound)
        || row >= model->rowCount(table->rootIndex()))
        return;
    const QModelIndex index = model->index(int(row), table->currentIndex().isValid() ? table->currentIndex().column() : 0,
                                           table->rootIndex());
    // The view scrolls to a new current index by itself when auto-scrolling is on.
    const bool autoScroll = table->hasAutoScroll();
    table->setAutoScroll(false);
    table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    table->setAutoScroll(autoScroll);
    if (scroll)
        table->scrollTo(index);
}

bool addTableColumns(QTableView *table, const QList<VeltoTableColumn> &columns)
{
    QAbstractItemModel *model = table ? table->model() : nullptr;
    if (!model)
        return columns.isEmpty();
    for (const VeltoTableColumn &column : columns) {
        const int added = model->columnCount(table->rootIndex());
        if (!model->insertColumn(added, table->rootIndex())
            || !model->setHeaderData(added, Qt::Horizontal, column.title, Qt::DisplayRole)
            || !model->setHeaderData(added, Qt::Horizontal, column.identifier, VeltoTableColumnIdentifierRole))
            return false;
    }
    return true;
}

bool removeTableColumns(QTableView *table, const QStringList &identifiers)
{
    for (const QString &identifier : identifiers) {
        const int column = tableColumnWithIdentifierVelto(table, identifier);
        if (column >= 0 && !table->model()->removeColumn(column, table->rootIndex()))
            return false;
    }
    return true;
}

bool setTableColumns(QTableView *table, const QList<VeltoTableColumn> &columns)
{
    QAbstractItemModel *model = table ? table->model() : nullptr;
    const int count = model ? model->columnCount(table->rootIndex()) : 0;
    if (count > 0 && !model->removeColumns(0, count, table->rootIndex()))
        return false;
    return addTableColumns(table, columns);
}

QString selectedRowContentAsPlainText(const QTableView *table)
{
    const QAbstractItemModel *model = table ? table->model() : nullptr;
    if (!model)
        return {};
    QString text;
    QList<int> kept;
    for (int column : tableColumnsVelto(table)) {
        const QString title = headerTitle(model, column);
        if (!kept.isEmpty())
            text += u'\t';
        if (!title.isEmpty()) {
            text += title;
            kept << column;
        }
    }
    text += u'\n';
    for (int row : selectedRowsVelto(table)) {
        QStringList cells;
        for (int column : kept) {
            const QModelIndex index = model->index(row, column, table->rootIndex());
            const QVariant value = model->data(index, Qt::DisplayRole);
            if (!isImage(value))
                cells << shownText(table, index, value);
        }
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

} // namespace velto
