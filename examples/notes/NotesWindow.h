// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The notes window: a list of notes (a VeltoTableView), the selected note's title and text, and a word
// meter. The window is the list's delegate: the table calls tableViewRequestsDeleteSelectedRows() by
// name when the user presses Delete.

#include <QAccessible>
#include <QMainWindow>
#include <QStandardItemModel>

class QLineEdit;
class QPlainTextEdit;
class VeltoTableView;

// A bar that shows how long the note is. Custom-drawn, so Qt knows nothing about it; it is accessible
// because it answers the library's accessibility methods.
class WordMeter : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
    void setWords(int words);

    Q_INVOKABLE int veltoAccessibilityValue_role() const { return QAccessible::ProgressBar; }
    Q_INVOKABLE QString veltoAccessibilityValue_title() const { return tr("Words"); }
    Q_INVOKABLE QString veltoAccessibilityValue_value() const { return QString::number(m_words); }

protected:
    void paintEvent(QPaintEvent *event) override;
    QSize sizeHint() const override { return {200, 20}; }

private:
    int m_words = 0;
};

class NotesWindow : public QMainWindow
{
    Q_OBJECT

public:
    NotesWindow();
    bool open(const QString &path);
    void addNote(const QString &title, const QString &text);
    // Writes a picture of the window to \a path and prints what it shows, for the documentation.
    bool takeScreenshot(const QString &path);

public slots:
    bool tableViewRequestsDeleteSelectedRows(VeltoTableView *table);
    // Sent by the items of the recent-files menu, which carry their file's path.
    void openRecentFile(QObject *item);

private:
    int selectedRow() const;
    void showSelectedNote();
    void renameSelectedNote();
    void saveAs();
    void rememberRecentFile(const QString &path);
    void rebuildRecentFilesMenu();

    QStandardItemModel m_notes;
    VeltoTableView *m_list;
    QLineEdit *m_title;
    QPlainTextEdit *m_text;
    WordMeter *m_meter;
    QMenu *m_recentFiles;
    QString m_path;
};
