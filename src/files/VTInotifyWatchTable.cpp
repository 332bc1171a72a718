// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTInotifyWatchTable_p.h"

#include "FWKQueue.h"
#include "VeltoCoreLogging_p.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sys/inotify.h>
#include <sys/stat.h>

namespace {

constexpr quint32 EntryEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;

// The inotify events that tell the changes in \a flags. A rename and the end of the file are always
// asked for: they decide whether the path still names the file. Unmounts and dropped watches always come.
quint32 inotifyMask(quint32 flags, bool folder)
{
    quint32 mask = IN_MOVE_SELF | IN_DELETE_SELF;
    if (flags & (FWKQueue::NoteWrite | FWKQueue::NoteExtend))
        mask |= folder ? EntryEvents : IN_MODIFY;
    if (flags & (FWKQueue::NoteDelete | FWKQueue::NoteAttrib | FWKQueue::NoteLink))
        mask |= IN_ATTRIB; // a link made or removed is an attribute change to inotify
    if (folder && (flags & FWKQueue::NoteLink))
        mask |= EntryEvents; // subfolders count as links of their parent
    return mask;
}

} // namespace

quint64 VTInotifyWatchTable::add(const QString &path, quint32 mask, bool followAtomicSaves, int *errorNumber)
{
    Registration registration;
    registration.path = path;
    registration.encodedPath = QFile::encodeName(path);
    registration.mask = mask;
    struct stat status;
    if (::stat(registration.encodedPath.constData(), &status) != 0) {
        *errorNumber = errno;
        return 0;
    }
    registration.watch = inotify_add_watch(m_inotify, registration.encodedPath.constData(),
                                           inotifyMask(mask, S_ISDIR(status.st_mode)) | IN_MASK_ADD);
    if (registration.watch < 0) {
        *errorNumber = errno;
        return 0;
    }
    ++m_users[registration.watch];
    if (followAtomicSaves) {
        const QFileInfo info(path);
        registration.name = QFile::encodeName(info.fileName());
        registration.folderWatch = inotify_add_watch(m_inotify, QFile::encodeName(info.absolutePath()).constData(),
                                                     IN_MOVED_TO | IN_ONLYDIR | IN_MASK_ADD);
        if (registration.folderWatch < 0) {
            *errorNumber = errno;
            release(registration.watch);
            return 0;
        }
        ++m_users[registration.folderWatch];
    }
    remember(registration.watch, registration.encodedPath, status);
    registration.id = ++m_lastId;
    m_registrations.push_back(registration);
    return registration.id;
}

bool VTInotifyWatchTable::removeFirst(const QString &path, int *closeError)
{
    const auto found = std::find_if(m_registrations.begin(), m_registrations.end(),
                                    [&](const Registration &registration) { return registration.path == path; });
    if (found == m_registrations.end())
        return false;
    const Registration removed = *found;
    m_registrations.erase(found);
    const int fileError = release(removed.watch);
    const int folderError = release(removed.folderWatch);
    *closeError = fileError ? fileError : folderError;
    return true;
}

QList<int> VTInotifyWatchTable::removeAll()
{
    QList<int> errors;
    for (const Registration &registration : std::exchange(m_registrations, {})) {
        for (int watch : {registration.watch, registration.folderWatch}) {
            if (const int error = release(watch))
                errors << error;
        }
    }
    return errors;
}

QStringList VTInotifyWatchTable::paths() const
{
    QStringList paths;
    paths.reserve(qsizetype(m_registrations.size()));
    for (const Registration &registration : m_registrations)
        paths << registration.path;
    return paths;
}

bool VTInotifyWatchTable::contains(quint64 registration) const
{
    return std::any_of(m_registrations.begin(), m_registrations.end(),
                       [&](const Registration &candidate) { return candidate.id == registration; });
}

void VTInotifyWatchTable::translate(const char *events, size_t length, std::vector<Change> &changes)
{
    Run run;
    for (size_t offset = 0; offset + sizeof(inotify_event) <= length;) {
        const auto *event = reinterpret_cast<const inotify_event *>(events + offset);
        offset += sizeof(inotify_event) + event->len;
        if (event->mask & IN_Q_OVERFLOW) {
            flush(run, changes);
            changes.push_back({}); // where the lost events were
            refreshAfterOverflow(changes);
            continue;
        }
        if (run.watch != event->wd)
            flush(run, changes);
        run.watch = event->wd;
        if (event->len > 0 && event->name[0]) { // an entry of a watched folder, not the folder itself
            if (event->mask & EntryEvents)
                run.entriesChanged = true;
            if (event->mask & IN_MOVED_TO) {
                flush(run, changes);
                followInto(event->wd, QByteArray(event->name), changes);
            }
            continue;
        }
        run.mask |= event->mask;
        if (event->mask & IN_IGNORED)
            flush(run, changes);
    }
    flush(run, changes);
}

VTInotifyWatchTable::Look VTInotifyWatchTable::lookAt(WatchedFile &file) const
{
    if (!file.named)
        return Look::Unknown;
    struct stat status;
    if (::stat(file.path.constData(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? Look::Gone : Look::Unknown;
    if (status.st_dev != file.device || status.st_ino != file.inode)
        return Look::Gone; // another file took the name
    file.size = status.st_size;
    file.links = qint64(status.st_nlink);
    return Look::Same;
}

void VTInotifyWatchTable::flush(Run &run, std::vector<Change> &changes)
{
    const Run ended = std::exchange(run, {});
    if (ended.watch < 0 || (!ended.mask && !ended.entriesChanged))
        return;
    quint32 wanted = 0;
    for (const Registration &registration : m_registrations) {
        if (registration.watch == ended.watch)
            wanted |= registration.mask;
    }
    const auto file = m_files.find(ended.watch);
    if (wanted && file != m_files.end()) {
        const quint32 flags = changesOf(*file, ended, wanted);
        for (const Registration &registration : m_registrations) {
            if (registration.watch == ended.watch && (flags & registration.mask))
                changes.push_back({registration.id, registration.path, flags & registration.mask});
        }
    }
    if (ended.mask & IN_IGNORED)
        forgetWatch(ended.watch);
}

quint32 VTInotifyWatchTable::changesOf(WatchedFile &file, const Run &run, quint32 wanted) const
{
    quint32 flags = 0;
    if (run.mask & IN_MOVE_SELF) {
        flags |= FWKQueue::NoteRename;
        file.named = false;
    }
    const bool written = (run.mask & IN_MODIFY) || run.entriesChanged;
    if (written)
        flags |= FWKQueue::NoteWrite;
    // Only an attribute change can be a link made or removed; a write is compared only when someone asks.
    if ((run.mask & IN_ATTRIB) || (written && (wanted & (FWKQueue::NoteExtend | FWKQueue::NoteLink)))) {
        const qint64 sizeBefore = file.size, linksBefore = file.links;
        switch (lookAt(file)) {
        case Look::Same:
            if (written && file.size > sizeBefore)
                flags |= FWKQueue::NoteExtend;
            break;
        case Look::Gone:
            // The name was unlinked or replaced: one link fewer, and the path tells nothing more from now
            // on. A write read after that happened leaves it to the attribute change that follows.
            if (run.mask & IN_ATTRIB) {
                file.links = std::max<qint64>(0, linksBefore - 1);
                file.named = false;
            }
            break;
        case Look::Unknown:
            break;
        }
        if (file.links != linksBefore) {
            flags |= FWKQueue::NoteLink;
            if (file.links == 0)
                flags |= FWKQueue::NoteDelete;
        } else if (run.mask & IN_ATTRIB) {
            flags |= FWKQueue::NoteAttrib;
        }
    }
    if (run.mask & IN_DELETE_SELF) {
        flags |= FWKQueue::NoteDelete;
        if (file.links > 0) {
            flags |= FWKQueue::NoteLink;
            file.links = 0;
        }
    }
    if (flags & FWKQueue::NoteDelete) {
        if (file.deleted)
            flags &= ~FWKQueue::NoteDelete; // told once: at the last unlink or when the file went away
        file.deleted = true;
    }
    if (run.mask & IN_UNMOUNT) {
        flags |= FWKQueue::NoteRevoke;
        file.revoked = true;
    }
    if ((run.mask & IN_IGNORED) && !file.deleted && !file.revoked)
        flags |= FWKQueue::NoteRevoke; // the kernel dropped the watch for another reason
    return flags;
}

void VTInotifyWatchTable::forgetWatch(int watch)
{
    m_files.remove(watch);
    m_users.remove(watch);
    for (Registration &registration : m_registrations) {
        if (registration.watch == watch)
            registration.watch = -1;
        if (registration.folderWatch == watch)
            registration.folderWatch = -1; // the folder is gone: nothing more to follow
    }
}

void VTInotifyWatchTable::followInto(int folderWatch, const QByteArray &name, std::vector<Change> &changes)
{
    for (Registration &registration : m_registrations) {
        if (registration.folderWatch == folderWatch && registration.name == name)
            repoint(registration, changes);
    }
}

void VTInotifyWatchTable::repoint(Registration &registration, std::vector<Change> &changes)
{
    struct stat status;
    if (::stat(registration.encodedPath.constData(), &status) != 0)
        return; // renamed into place and gone again already
    const int watch = inotify_add_watch(m_inotify, registration.encodedPath.constData(),
                                        inotifyMask(registration.mask, S_ISDIR(status.st_mode)) | IN_MASK_ADD);
    if (watch < 0) {
        qCWarning(lcVeltoFiles, "FWKQueue: cannot follow \"%s\" to its new file: %s",
                  registration.encodedPath.constData(), std::strerror(errno));
        return;
    }
    if (watch != registration.watch) {
        ++m_users[watch];
        release(registration.watch);
        registration.watch = watch;
        remember(watch, registration.encodedPath, status);
    }
    if (registration.mask & FWKQueue::NoteWrite)
        changes.push_back({registration.id, registration.path, FWKQueue::NoteWrite});
}

void VTInotifyWatchTable::refreshAfterOverflow(std::vector<Change> &changes)
{
    for (WatchedFile &file : m_files)
        (void)lookAt(file);
    // A follower whose name now holds another file missed an atomic save.
    for (Registration &registration : m_registrations) {
        if (registration.folderWatch < 0)
            continue;
        struct stat status;
        const auto file = m_files.constFind(registration.watch);
        if (::stat(registration.encodedPath.constData(), &status) == 0
            && (file == m_files.constEnd() || file->device != status.st_dev || file->inode != status.st_ino))
            repoint(registration, changes);
    }
}

void VTInotifyWatchTable::remember(int watch, const QByteArray &path, const struct stat &status)
{
    WatchedFile &file = m_files[watch];
    file.device = status.st_dev;
    file.inode = status.st_ino;
    file.size = status.st_size;
    file.links = qint64(status.st_nlink);
    file.path = path;
    file.named = true;
}

int VTInotifyWatchTable::release(int watch)
{
    if (watch < 0)
        return 0;
    const auto users = m_users.find(watch);
    if (users == m_users.end() || --*users > 0)
        return 0;
    m_users.erase(users);
    m_files.remove(watch);
    return inotify_rm_watch(m_inotify, watch) == 0 ? 0 : errno;
}
