// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file TableView+VeltoAdditions.h
 * \brief Additions for every QTableView: columns by identifier, enabling and disabling the table or one
 * column, single-row selection, bulk column changes through the model, and the selected rows as
 * tab-separated text.
 *
 * Columns are the model's columns, named by identifier (see VeltoTableColumn.h) and listed in the order
 * the header shows them (QHeaderView::logicalIndex() of each visual position), hidden ones included.
 * Column numbers taken and given are the model's (logical) columns. Main thread only.
 *
 * \code
 * velto::selectSingleRow(table, found, true);
 * QGuiApplication::clipboard()->setText(velto::selectedRowContentAsPlainText(table));
 * \endcode
 */

#include "VeltoTableColumn.h"
#include "veltocoregui_export.h"

#include <QList>
#include <QStringList>

class QTableView;

namespace velto {

/// tableColumnsVelto: the model's columns in display order, hidden ones included; empty without a model.
[[nodiscard]] VELTOCOREGUI_EXPORT QList<int> tableColumnsVelto(const QTableView *table);
/// identifierOfTableColumnVelto: the identifier of model column \a column; null when there is no such column.
[[nodiscard]] VELTOCOREGUI_EXPORT QString identifierOfTableColumnVelto(const QTableView *table, int column);
/// tableColumnWithIdentifierVelto: the first column (in display order) named \a identifier; -1 when none.
[[nodiscard]] VELTOCOREGUI_EXPORT int tableColumnWithIdentifierVelto(const QTableView *table, const QString &identifier);

/**
 * setTableColumnIsEnabled: draws model column \a column's cells as disabled and opens no editor in them
 * (false), or undoes that (true). The header sections keep the header's own state. Nothing for a
 * column the model does not have.
 */
VELTOCOREGUI_EXPORT void setTableColumnIsEnabled(QTableView *table, int column, bool enabled);
/// isTableColumnEnabledVelto: false only for a column disabled by setTableColumnIsEnabled().
[[nodiscard]] VELTOCOREGUI_EXPORT bool isTableColumnEnabledVelto(const QTableView *table, int column);

/**
 * setTableViewEnabled: enables or disables \a table (a disabled table takes no keyboard focus) and every
 * column with it; disabling also clears the selection.
 */
VELTOCOREGUI_EXPORT void setTableViewEnabled(QTableView *table, bool enabled);

/// selectedRowsVelto: the rows with a selected cell, ascending; empty without a selection model.
[[nodiscard]] VELTOCOREGUI_EXPORT QList<int> selectedRowsVelto(const QTableView *table);

/**
 * selectSingleRow: makes \a row the only selected row (the selection is replaced, not extended) and the
 * current row, and scrolls it into view when \a scroll is true. VeltoNotFound, and any row the model
 * does not have, leave the selection unchanged.
 */
VELTOCOREGUI_EXPORT void selectSingleRow(QTableView *table, qint64 row, bool scroll);

/**
 * addTableColumns: appends \a columns in order, each with its title and identifier as header data.
 * \return false when the model refused a column (it has no model, or cannot insert columns or keep
 * header data); the columns added before it stay.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT bool addTableColumns(QTableView *table, const QList<VeltoTableColumn> &columns);
/**
 * removeTableColumns: removes the columns named by \a identifiers; identifiers the table does not have
 * are passed over. \return false when the model refused a removal.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT bool removeTableColumns(QTableView *table, const QStringList &identifiers);
/// setTableColumns: removes every column, then adds \a columns. \return false when the model refused.
[[nodiscard]] VELTOCOREGUI_EXPORT bool setTableColumns(QTableView *table, const QList<VeltoTableColumn> &columns);

/**
 * selectedRowContentAsPlainText: the selected rows as tab-separated text, each line ending in "\n".
 * The first line holds the header titles in display order: once a title has been written, every further
 * column writes a tab and then its title, so a column without a title is left out but its tab stays
 * ("Name", "", "Size" give "Name\t\tSize"). Then one line per selected row, in ascending order, with
 * the text each titled column shows (its item delegate's display text), tab-separated; cells showing an
 * image are left out. With no selection, the header line alone; empty without a model.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QString selectedRowContentAsPlainText(const QTableView *table);

} // namespace velto
