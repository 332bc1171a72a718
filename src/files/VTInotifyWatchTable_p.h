// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The registrations of one inotify instance and what is known about each watched file, and the
// translation of the kernel's inotify events into the kinds of change callers ask for (the vnode flags
// FWKQueue::NoteDelete ... NoteRevoke).
//
// inotify watches inodes: the same file watched twice, or through two hard links, has one watch
// descriptor. Registrations are ours: each keeps its own path and flags, shares the descriptor with the
// others on the same file, and hears the changes its flags ask for. Size increases and link-count
// changes are not inotify events: they come from comparing the file's size and link count before and
// after, kept per watched file and read with stat() through the path while the path still names the file.
//
// Not thread-safe: FWKQueue guards it with its lock.

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <sys/types.h>
#include <vector>

class VTInotifyWatchTable
{
public:
    /// One registration's changes: vnode flags (0 with registration 0 marks where the kernel lost events).
    struct Change
    {
        quint64 registration = 0;
        QString path;
        quint32 flags = 0;
    };

    explicit VTInotifyWatchTable(int inotifyDescriptor) : m_inotify(inotifyDescriptor) {}

    /// add: registers \a path for the vnode flags \a mask; the new registration's id, or 0 with
    /// \a errorNumber set (from stat() or inotify_add_watch()).
    [[nodiscard]] quint64 add(const QString &path, quint32 mask, bool followAtomicSaves, int *errorNumber);
    /// removeFirst: ends the first registration of \a path; false when there is none. \a closeError gets the
    /// errno of a failed inotify_rm_watch(), else 0.
    bool removeFirst(const QString &path, int *closeError);
    /// removeAll: ends every registration; the errno of each failed inotify_rm_watch().
    QList<int> removeAll();

    [[nodiscard]] QStringList paths() const;
    [[nodiscard]] bool contains(quint64 registration) const;

    /// translate: appends the changes that \a length bytes of inotify events stand for, in the kernel's order.
    void translate(const char *events, size_t length, std::vector<Change> &changes);

private:
    struct Registration
    {
        quint64 id = 0;
        QString path;
        QByteArray encodedPath;
        quint32 mask = 0;
        int watch = -1; // -1 once the kernel dropped it
        int folderWatch = -1; // the parent folder's, when following atomic saves
        QByteArray name; // the file's name in that folder
    };

    // What is known about one watched file, per watch descriptor.
    struct WatchedFile
    {
        dev_t device = 0;
        ino_t inode = 0;
        qint64 size = 0;
        qint64 links = 0;
        QByteArray path; // looked at with stat() while it still names this file
        bool named = true; // false once renamed or unlinked: the path tells nothing about it any more
        bool deleted = false;
        bool revoked = false;
    };

    // Consecutive events of one watch descriptor, read together, become one change.
    struct Run
    {
        int watch = -1;
        quint32 mask = 0;
        bool entriesChanged = false; // a watched folder gained, lost or renamed an entry
    };

    enum class Look { Same, Gone, Unknown };
    Look lookAt(WatchedFile &file) const;

    void flush(Run &run, std::vector<Change> &changes);
    quint32 changesOf(WatchedFile &file, const Run &run, quint32 wanted) const;
    void forgetWatch(int watch);
    void followInto(int folderWatch, const QByteArray &name, std::vector<Change> &changes);
    void repoint(Registration &registration, std::vector<Change> &changes);
    void refreshAfterOverflow(std::vector<Change> &changes);
    void remember(int watch, const QByteArray &path, const struct stat &status);
    int release(int watch);

    const int m_inotify;
    quint64 m_lastId = 0;
    std::vector<Registration> m_registrations; // in order of adding
    QHash<int, WatchedFile> m_files; // by watch descriptor
    QHash<int, int> m_users; // registrations and followers using each watch descriptor
};
