// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoTableView.h
 * \brief VeltoTableView: a QTableView whose user picks the hidden columns from a menu on the header,
 * with a selection colour of its own, type-to-select by row prefix, right-click selection, and delete
 * keys, drags and context menus handed to a delegate.
 *
 * The delegate is any QObject; the table calls the methods below by name (Object+VeltoDispatch.h) when
 * the delegate has them, and falls back to QTableView's behaviour when it does not. Each is a slot or
 * Q_INVOKABLE:
 *
 * | method | called |
 * |---|---|
 * | `QString tableViewAutoscrollingColumnIdentifier(VeltoTableView *)` | type-to-select: the column to search |
 * | `bool tableViewRequestsDeleteSelectedRows(VeltoTableView *)` | Delete or Backspace: true repaints, false beeps |
 * | `void tableViewDraggingEntered(VeltoTableView *, QDragEnterEvent *)` | a drag enters, before the table answers it |
 * | `void tableViewDraggingExited(VeltoTableView *, QDragLeaveEvent *)` | a drag leaves, after the table |
 * | `QPixmap tableViewRequestsDragImageForRowsWithIndexes(VeltoTableView *, QList<int> rows, QStringList columns)` | rows are dragged: a pixmap replaces Qt's (see below) |
 * | `QMenu *tableViewMenuForEvent(VeltoTableView *, QContextMenuEvent *)` | a context menu is asked for: a menu returned is shown |
 *
 * The drag image is asked for (with the dragged rows and the identifiers of the visible columns) only
 * when the delegate also has tableViewMenuForEvent, whatever it answers there.
 *
 * Row text for type-to-select is the model's display text of the cell when it is a string, else the
 * "text" property of the cell's index widget, else none.
 *
 * \code
 * auto *table = new VeltoTableView(window);
 * table->setModel(notes);
 * table->setDelegate(controller);
 * table->setAutosaveName(u"NotesTable"_s);
 * table->setDefaultHiddenColumnIdentifiers({u"words"_s});   // only the first time, ever
 * \endcode
 *
 * Main thread only.
 */

#include "veltocoregui_export.h"

#include <QColor>
#include <QStringList>
#include <QTableView>

#include <functional>
#include <memory>

class QAction;
class QMenu;

class VELTOCOREGUI_EXPORT VeltoTableView : public QTableView
{
    Q_OBJECT

public:
    /// The clock type-to-select measures pauses between typed texts with: seconds from any fixed start.
    using TypingClock = std::function<double()>;
    /// Texts typed less than this many seconds apart extend one prefix.
    static constexpr double TypingPause = 1.5;

    /// A table that measures typing pauses with the monotonic clock.
    explicit VeltoTableView(QWidget *parent = nullptr);
    /// A table that measures typing pauses with \a clock (an empty one means the monotonic clock).
    explicit VeltoTableView(TypingClock clock, QWidget *parent = nullptr);
    ~VeltoTableView() override;

    /// delegate: the object whose methods the table calls by name; not owned, null by default.
    [[nodiscard]] QObject *delegate() const;
    /// setDelegate: sets it; set null before the delegate is destroyed.
    void setDelegate(QObject *delegate);
    /// action: the method of the delegate that type-to-select calls with the table after selecting a row.
    [[nodiscard]] QByteArray action() const;
    /// setAction: sets it; empty (the default) calls nothing.
    void setAction(const QByteArray &method);

    /**
     * autosaveName: the name the table keeps its hidden columns under in the standard user defaults
     * ("VeltoTableView Hidden Columns <name>"); empty keeps nothing.
     */
    [[nodiscard]] QString autosaveName() const;
    /// setAutosaveName: sets it and hides the columns saved under it, when any were saved.
    void setAutosaveName(const QString &name);

    /// allTableColumns: the identifiers of every column in display order, hidden ones included.
    [[nodiscard]] QStringList allTableColumns() const;
    /// hiddenColumns: the model columns that are hidden, in display order.
    [[nodiscard]] QList<int> hiddenColumns() const;
    /// hiddenColumnIdentifiers: their identifiers.
    [[nodiscard]] QStringList hiddenColumnIdentifiers() const;
    /// setHiddenColumnIdentifiers: hides exactly the columns named in \a identifiers and shows all others.
    void setHiddenColumnIdentifiers(const QStringList &identifiers);
    /**
     * setDefaultHiddenColumnIdentifiers: setHiddenColumnIdentifiers() only the first time for this
     * autosave name: the standard user defaults keep the boolean "<autosave name>(IsInitVeltoHiddenColumns)",
     * and once it is true this does nothing. Without an autosave name it applies every time.
     */
    void setDefaultHiddenColumnIdentifiers(const QStringList &identifiers);
    /// isHideColumnWithIdentifier: whether the column named \a identifier is hidden; false when there is none.
    [[nodiscard]] bool isHideColumnWithIdentifier(const QString &identifier) const;
    /// setHide: hides or shows the column named \a identifier; nothing when there is none.
    void setHide(bool hide, const QString &identifier);

    /// isAllowUserHide: whether the header menu may show and hide columns; true by default.
    [[nodiscard]] bool isAllowUserHide() const;
    /// setAllowUserChoosesHiddenColumns: sets it.
    void setAllowUserChoosesHiddenColumns(bool allow);
    /**
     * headerMenu: the menu the header shows on a right click, made again from the current columns: one
     * checkable item per column with a title (the column's identifier as the item's data), sorted by
     * title, each checked when its column is visible and disabled when the user may not hide columns.
     */
    [[nodiscard]] QMenu *headerMenu();
    /// validateMenuItem: false when the user may not hide columns; else checks \a item when its column is visible.
    bool validateMenuItem(QAction *item) const;

    /// selectionHighlightColorVelto: the colour selected rows are filled with; invalid means the style's.
    [[nodiscard]] QColor selectionHighlightColorVelto() const;
    /// setSelectionHighlightColorVelto: sets it and repaints; the same colour again does nothing.
    void setSelectionHighlightColorVelto(const QColor &color);
    /// drawingRowVelto: the row whose cell is being painted while the table paints, else VeltoNotFound.
    [[nodiscard]] qint64 drawingRowVelto() const;

    void setModel(QAbstractItemModel *model) override;
    QAbstractItemDelegate *itemDelegateForIndex(const QModelIndex &index) const override;

public slots:
    /// vtToggleColumnVisible: shows or hides the column named by \a item's data, when the user may hide columns.
    void vtToggleColumnVisible(QAction *item);

protected:
    /// insertText: type-to-select: extends or restarts the typed prefix and selects the first row it begins.
    virtual void insertText(const QString &text);

    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void paintEvent(QPaintEvent *event) override;
    void initViewItemOption(QStyleOptionViewItem *option) const override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
