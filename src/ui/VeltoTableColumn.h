// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoTableColumn.h
 * \brief VeltoTableColumn: what a table column is made of when columns are added in bulk (an identifier
 * and a header title), and the header role that carries a column's identifier.
 *
 * A QTableView's columns are its model's; a column's identifier is the horizontal header data under
 * VeltoTableColumnIdentifierRole when that is a non-empty string, else its header title, so a model that
 * names no identifiers is still addressed by its titles.
 *
 * \code
 * (void)velto::addTableColumns(table, {{u"name"_s, tr("Name")}, {u"size"_s, tr("Size")}});
 * \endcode
 */

#include <QString>
#include <Qt>

/// The horizontal header role under which a model keeps its column identifiers.
inline constexpr int VeltoTableColumnIdentifierRole = Qt::UserRole + 0x5654;

/// VeltoTableColumn: a column's identifier and its header title.
struct VeltoTableColumn
{
    QString identifier;
    QString title;
};
