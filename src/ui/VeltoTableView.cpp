// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoTableView.h"

#include "Object+VeltoDispatch.h"
#include "TableView+VeltoAdditions.h"
#include "Variant+VeltoCore.h"
#include "VeltoRange.h"
#include "VeltoUserDefaults.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QMenu>
#include <QMimeData>
#include <QScopeGuard>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 NoRow = qint64(VeltoNotFound);

double monotonicSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

class VeltoTableView::Private
{
public:
    Private(VeltoTableView *table, TypingClock clock)
        : q(table), clock(clock ? std::move(clock) : TypingClock(monotonicSeconds)), headerMenu(new QMenu(table))
    {
    }

    QVariant tableArgument() const { return QVariant::fromValue<QObject *>(q); }
    QString rowText(int row, int column) const;
    void selectRowWithPrefix(const QString &prefix, int column);
    void requestDeleteRows();
    void applyHiddenColumns(const QStringList &identifiers);
    void saveHiddenColumns() const;
    QString hiddenColumnsKey() const { return u"VeltoTableView Hidden Columns "_s + autosaveName; }

    VeltoTableView *const q;
    const TypingClock clock;
    QMenu *const headerMenu;
    QObject *delegate = nullptr;
    QByteArray action;
    QString autosaveName;
    bool allowUserHide = true;
    QColor selectionColor;
    bool painting = false;
    qint64 drawingRow = NoRow;
    QString typingString; // null when no prefix is being typed
    double typingTime = 0;
};

QString VeltoTableView::Private::rowText(int row, int column) const
{
    const QModelIndex index = q->model()->index(row, column, q->rootIndex());
    const QVariant value = q->model()->data(index, Qt::DisplayRole);
    if (value.metaType().id() == QMetaType::QString)
        return value.toString();
    const QWidget *widget = q->indexWidget(index);
    const QVariant text = widget ? widget->property("text") : QVariant();
    return text.metaType().id() == QMetaType::QString ? text.toString() : QString();
}

void VeltoTableView::Private::selectRowWithPrefix(const QString &prefix, int column)
{
    const int rows = q->model()->rowCount(q->rootIndex());
    for (int row = 0; row < rows; ++row) {
        const QString text = rowText(row, column);
        // Leading white space (QChar::isSpace: blanks, tabs, line and paragraph breaks, U+000B) is skipped.
        const QChar *start = std::find_if(text.cbegin(), text.cend(), [](QChar c) { return !c.isSpace(); });
        if (start == text.cend() || !QStringView(start, text.cend()).startsWith(prefix, Qt::CaseInsensitive))
            continue;
        velto::selectSingleRow(q, row, true);
        // The action goes to the delegate, not to a target.
        if (!action.isEmpty())
            velto::performSelectorIfResponds(delegate, action.constData(), tableArgument());
        return;
    }
}

void VeltoTableView::Private::requestDeleteRows()
{
    static constexpr char request[] = "tableViewRequestsDeleteSelectedRows";
    if (!velto::respondsToSelectorVelto(delegate, request))
        return;
    if (velto::boolForPerformSelector(delegate, request, tableArgument()))
        q->viewport()->update(); // the delegate changed the model, which tells the view what changed
    else
        QApplication::beep();
}

void VeltoTableView::Private::applyHiddenColumns(const QStringList &identifiers)
{
    for (int column : velto::tableColumnsVelto(q))
        q->setColumnHidden(column, identifiers.contains(velto::identifierOfTableColumnVelto(q, column)));
}

void VeltoTableView::Private::saveHiddenColumns() const
{
    // A settings file that cannot be written loses only the choice for the next run; the table is right.
    if (!autosaveName.isEmpty())
        (void)VeltoUserDefaults::standardUserDefaults()->setObject(q->hiddenColumnIdentifiers(), hiddenColumnsKey());
}

VeltoTableView::VeltoTableView(QWidget *parent) : VeltoTableView(TypingClock(), parent) {}

VeltoTableView::VeltoTableView(TypingClock clock, QWidget *parent)
    : QTableView(parent), d(std::make_unique<Private>(this, std::move(clock)))
{
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QWidget::customContextMenuRequested, this, [this](const QPoint &position) {
        if (QMenu *menu = headerMenu(); !menu->isEmpty())
            menu->popup(horizontalHeader()->viewport()->mapToGlobal(position));
    });
}

VeltoTableView::~VeltoTableView() = default;

QObject *VeltoTableView::delegate() const
{
    return d->delegate;
}

void VeltoTableView::setDelegate(QObject *delegate)
{
    d->delegate = delegate;
}

QByteArray VeltoTableView::action() const
{
    return d->action;
}

void VeltoTableView::setAction(const QByteArray &method)
{
    d->action = method;
}

QString VeltoTableView::autosaveName() const
{
    return d->autosaveName;
}

void VeltoTableView::setAutosaveName(const QString &name)
{
    d->autosaveName = name;
    const QVariant saved = name.isEmpty() ? QVariant() : VeltoUserDefaults::standardUserDefaults()->objectForKey(d->hiddenColumnsKey());
    if (saved.isValid())
        d->applyHiddenColumns(saved.toStringList());
}

void VeltoTableView::setModel(QAbstractItemModel *model)
{
    QTableView::setModel(model);
    setAutosaveName(d->autosaveName); // the saved columns of the new model
}

QStringList VeltoTableView::allTableColumns() const
{
    QStringList identifiers;
    for (int column : velto::tableColumnsVelto(this))
        identifiers << velto::identifierOfTableColumnVelto(this, column);
    return identifiers;
}

QList<int> VeltoTableView::hiddenColumns() const
{
    QList<int> hidden;
    for (int column : velto::tableColumnsVelto(this)) {
        if (isColumnHidden(column))
            hidden << column;
    }
    return hidden;
}

QStringList VeltoTableView::hiddenColumnIdentifiers() const
{
    QStringList identifiers;
    for (int column : hiddenColumns())
        identifiers << velto::identifierOfTableColumnVelto(this, column);
    return identifiers;
}

void VeltoTableView::setHiddenColumnIdentifiers(const QStringList &identifiers)
{
    d->applyHiddenColumns(identifiers);
    d->saveHiddenColumns();
}

void VeltoTableView::setDefaultHiddenColumnIdentifiers(const QStringList &identifiers)
{
    if (!d->autosaveName.isEmpty()) {
        const QString appliedKey = d->autosaveName + u"(IsInitVeltoHiddenColumns)"_s;
        const auto defaults = VeltoUserDefaults::standardUserDefaults();
        if (velto::boolValueVelto(defaults->objectForKey(appliedKey)))
            return;
        // Unwritten, the defaults are applied again next time, which is all that is lost.
        (void)defaults->setObject(true, appliedKey);
    }
    setHiddenColumnIdentifiers(identifiers);
}

bool VeltoTableView::isHideColumnWithIdentifier(const QString &identifier) const
{
    const int column = velto::tableColumnWithIdentifierVelto(this, identifier);
    return column >= 0 && isColumnHidden(column);
}

void VeltoTableView::setHide(bool hide, const QString &identifier)
{
    const int column = velto::tableColumnWithIdentifierVelto(this, identifier);
    if (column < 0)
        return;
    setColumnHidden(column, hide);
    d->saveHiddenColumns();
}

bool VeltoTableView::isAllowUserHide() const
{
    return d->allowUserHide;
}

void VeltoTableView::setAllowUserChoosesHiddenColumns(bool allow)
{
    d->allowUserHide = allow;
}

QMenu *VeltoTableView::headerMenu()
{
    d->headerMenu->clear();
    QList<QAction *> items;
    const QList<int> columns = velto::tableColumnsVelto(this);
    for (auto column = columns.crbegin(); column != columns.crend(); ++column) {
        const QString title = model()->headerData(*column, Qt::Horizontal).toString();
        if (title.isEmpty())
            continue;
        auto *item = new QAction(title, d->headerMenu);
        item->setCheckable(true);
        item->setData(velto::identifierOfTableColumnVelto(this, *column));
        connect(item, &QAction::triggered, this, [this, item] { vtToggleColumnVisible(item); });
        items << item;
    }
    std::stable_sort(items.begin(), items.end(), [](const QAction *a, const QAction *b) {
        return QString::localeAwareCompare(a->text(), b->text()) < 0;
    });
    d->headerMenu->addActions(items);
    for (QAction *item : items)
        item->setEnabled(validateMenuItem(item));
    return d->headerMenu;
}

bool VeltoTableView::validateMenuItem(QAction *item) const
{
    if (!d->allowUserHide)
        return false;
    item->setChecked(!isHideColumnWithIdentifier(item->data().toString()));
    return true;
}

void VeltoTableView::vtToggleColumnVisible(QAction *item)
{
    if (!d->allowUserHide || !item)
        return;
    const QString identifier = item->data().toString();
    setHide(!isHideColumnWithIdentifier(identifier), identifier);
}

QColor VeltoTableView::selectionHighlightColorVelto() const
{
    return d->selectionColor;
}

void VeltoTableView::setSelectionHighlightColorVelto(const QColor &color)
{
    if (color == d->selectionColor)
        return;
    d->selectionColor = color;
    viewport()->update();
}

void VeltoTableView::initViewItemOption(QStyleOptionViewItem *option) const
{
    QTableView::initViewItemOption(option);
    if (d->selectionColor.isValid()) {
        option->palette.setColor(QPalette::Active, QPalette::Highlight, d->selectionColor);
        option->palette.setColor(QPalette::Inactive, QPalette::Highlight, d->selectionColor);
    }
}

qint64 VeltoTableView::drawingRowVelto() const
{
    return d->drawingRow;
}

void VeltoTableView::paintEvent(QPaintEvent *event)
{
    d->painting = true;
    const auto done = qScopeGuard([this] {
        d->painting = false;
        d->drawingRow = NoRow;
    });
    QTableView::paintEvent(event);
}

// The view asks for each cell's delegate just before painting it, which is how the row being drawn is known.
QAbstractItemDelegate *VeltoTableView::itemDelegateForIndex(const QModelIndex &index) const
{
    if (d->painting)
        d->drawingRow = index.row();
    return QTableView::itemDelegateForIndex(index);
}

void VeltoTableView::insertText(const QString &text)
{
    const double now = d->clock();
    if (now - d->typingTime < TypingPause && !d->typingString.isNull())
        d->typingString += text;
    else
        d->typingString = text;
    d->typingTime = now;
    const QList<int> columns = velto::tableColumnsVelto(this);
    if (columns.isEmpty())
        return;
    const QVariant named = velto::performSelectorIfResponds(d->delegate, "tableViewAutoscrollingColumnIdentifier",
                                                            d->tableArgument());
    const int column = named.isValid() ? velto::tableColumnWithIdentifierVelto(this, named.toString()) : -1;
    d->selectRowWithPrefix(d->typingString, column >= 0 ? column : columns.first());
}

void VeltoTableView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
        QTableView::keyPressEvent(event);
        return;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        d->typingString.clear();
        QTableView::keyPressEvent(event);
        return;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        d->requestDeleteRows();
        return;
    default:
        break;
    }
    const QString text = event->text();
    const bool typed = !text.isEmpty() && text.front().isPrint()
        && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (typed)
        insertText(text);
    else
        QTableView::keyPressEvent(event);
}

void VeltoTableView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        const int row = rowAt(event->position().toPoint().y());
        if (row >= 0 && !velto::selectedRowsVelto(this).contains(row))
            velto::selectSingleRow(this, row, false);
    } else {
        d->typingString.clear();
    }
    QTableView::mousePressEvent(event);
}

void VeltoTableView::contextMenuEvent(QContextMenuEvent *event)
{
    const QVariant answer = velto::performSelectorIfResponds(d->delegate, "tableViewMenuForEvent", d->tableArgument(),
                                                             QVariant::fromValue(event));
    if (auto *menu = qvariant_cast<QMenu *>(answer)) {
        menu->popup(event->globalPos());
        event->accept();
        return;
    }
    QTableView::contextMenuEvent(event);
}

void VeltoTableView::dragEnterEvent(QDragEnterEvent *event)
{
    velto::performSelectorIfResponds(d->delegate, "tableViewDraggingEntered", d->tableArgument(), QVariant::fromValue(event));
    QTableView::dragEnterEvent(event);
}

void VeltoTableView::dragLeaveEvent(QDragLeaveEvent *event)
{
    QTableView::dragLeaveEvent(event);
    velto::performSelectorIfResponds(d->delegate, "tableViewDraggingExited", d->tableArgument(), QVariant::fromValue(event));
}

void VeltoTableView::startDrag(Qt::DropActions supportedActions)
{
    const QList<int> rows = velto::selectedRowsVelto(this);
    QPixmap image;
    // Whether the delegate is asked for an image depends on its menu method, not on the image method.
    if (velto::respondsToSelectorVelto(d->delegate, "tableViewMenuForEvent")) {
        QStringList shown = allTableColumns();
        for (const QString &hidden : hiddenColumnIdentifiers())
            shown.removeOne(hidden);
        image = qvariant_cast<QPixmap>(velto::performSelectorIfResponds(
            d->delegate, "tableViewRequestsDragImageForRowsWithIndexes", d->tableArgument(), QVariant::fromValue(rows), shown));
    }
    QMimeData *data = image.isNull() ? nullptr : model()->mimeData(selectedIndexes());
    if (!data) {
        QTableView::startDrag(supportedActions);
        return;
    }
    auto *drag = new QDrag(this);
    drag->setMimeData(data);
    drag->setPixmap(image);
    drag->setHotSpot({image.width() / 2, image.height() / 2});
    const Qt::DropAction preferred = supportedActions & defaultDropAction() ? defaultDropAction() : Qt::CopyAction;
    // Rows moved out of the table leave it; a move within it is the model's drop handling.
    if (drag->exec(supportedActions, preferred) == Qt::MoveAction && drag->target() != viewport()) {
        for (auto row = rows.crbegin(); row != rows.crend(); ++row)
            model()->removeRow(*row, rootIndex());
    }
}
