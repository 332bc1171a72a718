// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "NotesWindow.h"

#include <VeltoCore/LineEdit+VeltoActionFiltering.h>
#include <VeltoCore/Menu+VeltoAdditions.h>
#include <VeltoCore/MessageBox+VeltoAdditions.h>
#include <VeltoCore/TableView+VeltoAdditions.h>
#include <VeltoCore/VariantMap+VeltoCorePlist.h>
#include <VeltoCore/VeltoTableView.h>
#include <VeltoCore/VeltoUserDefaults.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QMetaEnum>
#include <QMessageBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSplitter>
#include <QTextStream>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

const QString RecentFilesKey = u"com.velto.notes.recentFiles"_s;
enum Column { Title, Words, Modified };

int wordCount(const QString &text)
{
    return int(text.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts).size());
}

} // namespace

void WordMeter::setWords(int words)
{
    m_words = words;
    update();
}

void WordMeter::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.fillRect(QRect(0, 0, width() * std::min(m_words, 300) / 300, height()), palette().highlight());
    painter.drawText(rect(), Qt::AlignCenter, m_words == 1 ? tr("1 word") : tr("%1 words").arg(m_words));
}

NotesWindow::NotesWindow()
    : m_list(new VeltoTableView), m_title(new QLineEdit), m_text(new QPlainTextEdit), m_meter(new WordMeter)
{
    m_list->setModel(&m_notes);
    (void)velto::setTableColumns(m_list, {{u"title"_s, tr("Title")}, {u"words"_s, tr("Words")}, {u"modified"_s, tr("Modified")}});
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->horizontalHeader()->setStretchLastSection(true);
    m_list->setColumnWidth(Title, 150);
    m_list->verticalHeader()->hide();
    m_list->setDelegate(this);
    // The user shows or hides columns from the header's menu; the date starts hidden, once.
    m_list->setAutosaveName(u"NotesList"_s);
    m_list->setDefaultHiddenColumnIdentifiers({u"modified"_s});
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &NotesWindow::showSelectedNote);

    // Renaming happens when the user presses Return or leaves the field, and only after an edit.
    m_title->setPlaceholderText(tr("Title"));
    velto::disableSendActionWhenTextValueNotChanged(m_title);
    velto::connectActionVelto(m_title, this, [this] { renameSelectedNote(); });
    connect(m_text, &QPlainTextEdit::textChanged, this, [this] {
        const int row = selectedRow();
        if (row < 0)
            return;
        m_notes.item(row, Title)->setData(m_text->toPlainText(), Qt::UserRole);
        m_notes.item(row, Words)->setData(wordCount(m_text->toPlainText()), Qt::DisplayRole);
        m_notes.item(row, Modified)->setText(QLocale().toString(QDateTime::currentDateTime(), QLocale::ShortFormat));
        m_meter->setWords(wordCount(m_text->toPlainText()));
    });

    auto *editor = new QWidget;
    auto *layout = new QVBoxLayout(editor);
    layout->addWidget(m_title);
    layout->addWidget(m_text);
    layout->addWidget(m_meter);
    auto *splitter = new QSplitter;
    splitter->addWidget(m_list);
    splitter->addWidget(editor);
    splitter->setSizes({260, 460});
    setCentralWidget(splitter);

    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&New Note"), QKeySequence::New, this, [this] { addNote(tr("Untitled"), QString()); });
    file->addAction(tr("&Open…"), QKeySequence::Open, this, [this] {
        if (const QString path = QFileDialog::getOpenFileName(this, tr("Open Notes")); !path.isEmpty())
            open(path);
    });
    m_recentFiles = file->addMenu(tr("Open &Recent"));
    file->addAction(tr("Save &As…"), QKeySequence::SaveAs, this, &NotesWindow::saveAs);
    rebuildRecentFilesMenu();
    setWindowTitle(tr("Notes"));
}

void NotesWindow::addNote(const QString &title, const QString &text)
{
    auto *titleItem = new QStandardItem(title);
    titleItem->setData(text, Qt::UserRole);
    m_notes.appendRow({titleItem, new QStandardItem(QString::number(wordCount(text))),
                       new QStandardItem(QLocale().toString(QDateTime::currentDateTime(), QLocale::ShortFormat))});
    velto::selectSingleRow(m_list, m_notes.rowCount() - 1, true);
}

int NotesWindow::selectedRow() const
{
    return velto::selectedRowsVelto(m_list).value(0, -1);
}

void NotesWindow::showSelectedNote()
{
    const int row = selectedRow();
    const QString text = row < 0 ? QString() : m_notes.item(row, Title)->data(Qt::UserRole).toString();
    m_title->setText(row < 0 ? QString() : m_notes.item(row, Title)->text());
    const QSignalBlocker quiet(m_text);
    m_text->setPlainText(text);
    m_meter->setWords(wordCount(text));
}

void NotesWindow::renameSelectedNote()
{
    if (const int row = selectedRow(); row >= 0)
        m_notes.item(row, Title)->setText(m_title->text());
}

bool NotesWindow::tableViewRequestsDeleteSelectedRows(VeltoTableView *)
{
    const int row = selectedRow();
    if (row < 0)
        return false;
    // The note's text may be very long: the alert shortens it until it fits on the screen.
    QMessageBox alert(QMessageBox::Warning, tr("Delete Note"), tr("Delete “%1”?").arg(m_notes.item(row, Title)->text()),
                      QMessageBox::Yes | QMessageBox::Cancel, this);
    alert.setInformativeText(m_notes.item(row, Title)->data(Qt::UserRole).toString());
    if (velto::showModalVelto(alert) != QMessageBox::Yes)
        return false;
    m_notes.removeRow(row);
    return true;
}

bool NotesWindow::open(const QString &path)
{
    VeltoError error;
    const auto document = velto::dictionaryWithPlistLoadedFromURL(QUrl::fromLocalFile(path), &error);
    const auto notes = document ? velto::plistArrayVeltoForKey(*document, u"notes"_s, &error) : std::nullopt;
    if (!notes) {
        QMessageBox alert(QMessageBox::Warning, tr("The notes could not be opened."), error.descriptionForUserVelto());
        velto::showModalVelto(alert);
        return false;
    }
    m_notes.removeRows(0, m_notes.rowCount());
    for (const QVariant &note : *notes)
        addNote(note.toMap().value(u"title"_s).toString(), note.toMap().value(u"text"_s).toString());
    m_path = path;
    setWindowFilePath(path);
    rememberRecentFile(path);
    return true;
}

void NotesWindow::saveAs()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Save Notes"), m_path);
    if (path.isEmpty())
        return;
    QVariantList notes;
    for (int row = 0; row < m_notes.rowCount(); ++row)
        notes << QVariantMap{{u"title"_s, m_notes.item(row, Title)->text()}, {u"text"_s, m_notes.item(row, Title)->data(Qt::UserRole)}};
    VeltoError error;
    if (!velto::writePlistToURL({{u"notes"_s, notes}}, QUrl::fromLocalFile(path), VeltoDataWritingAtomic, &error)) {
        QMessageBox alert(QMessageBox::Warning, tr("The notes could not be saved."), error.descriptionForUserVelto());
        velto::showModalVelto(alert);
        return;
    }
    m_path = path;
    setWindowFilePath(path);
    rememberRecentFile(path);
}

void NotesWindow::rememberRecentFile(const QString &path)
{
    const auto defaults = VeltoUserDefaults::standardUserDefaults();
    QStringList recent = defaults->objectForKey(RecentFilesKey).toStringList();
    recent.removeAll(path);
    recent.prepend(path);
    (void)defaults->setObject(recent.mid(0, 5), RecentFilesKey);
    rebuildRecentFilesMenu();
}

void NotesWindow::rebuildRecentFilesMenu()
{
    m_recentFiles->clear();
    for (const QString &path : VeltoUserDefaults::standardUserDefaults()->objectForKey(RecentFilesKey).toStringList())
        velto::addItemWithTitle(m_recentFiles, QFileInfo(path).fileName(), this, "openRecentFile", path)->setToolTip(path);
    m_recentFiles->setEnabled(!m_recentFiles->isEmpty());
}

void NotesWindow::openRecentFile(QObject *item)
{
    open(qobject_cast<QAction *>(item)->data().toString());
}

bool NotesWindow::takeScreenshot(const QString &path)
{
    resize(720, 400);
    show();
    velto::selectSingleRow(m_list, 1, true);
    if (!grab().save(path))
        return false;
    // What the picture shows, in words, so that a test can check it without comparing pixels.
    QTextStream out(stdout);
    out << "window " << width() << "x" << height() << ", list left of the editor: "
        << (m_list->mapTo(this, QPoint()).x() < m_title->mapTo(this, QPoint()).x() ? "yes" : "no") << "\n";
    QStringList shown;
    for (int column : velto::tableColumnsVelto(m_list))
        if (!m_list->isColumnHidden(column))
            shown << m_notes.horizontalHeaderItem(column)->text();
    out << "columns: " << shown.join(u", "_s) << " (hidden: " << m_list->hiddenColumnIdentifiers().join(u", "_s) << ")\n";
    for (int row = 0; row < m_notes.rowCount(); ++row)
        out << (row == selectedRow() ? "> " : "  ") << m_notes.item(row, Title)->text() << " | "
            << m_notes.item(row, Words)->text() << "\n";
    out << "title field: " << m_title->text() << "\n";
    QAccessibleInterface *meter = QAccessible::queryAccessibleInterface(m_meter);
    out << "meter: " << QMetaEnum::fromType<QAccessible::Role>().valueToKey(meter->role()) << " \""
        << meter->text(QAccessible::Name) << "\" = " << meter->text(QAccessible::Value) << "\n";
    out << "recent files: " << m_recentFiles->actions().size() << "\n";
    return true;
}
