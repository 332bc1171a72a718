// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFileWatcher.h"

#include "FWFileWatcher.h"
#include "FWKQueue.h"
#include "FWMainThreadProxy.h"
#include "VTWatchedFileInfo_p.h"
#include "VeltoCoreLogging_p.h"

#include <QFileInfo>
#include <QHash>

#include <array>
#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

struct ActionKind
{
    quint32 action;
    quint32 vnodeFlag;
    QLatin1StringView notification;
};

constexpr std::array<ActionKind, 7> ActionKinds{{
    {VeltoFileWatcherActionRename, FWKQueue::NoteRename, FWFileWatcherRenameNotification},
    {VeltoFileWatcherActionWrite, FWKQueue::NoteWrite, FWFileWatcherWriteNotification},
    {VeltoFileWatcherActionDelete, FWKQueue::NoteDelete, FWFileWatcherDeleteNotification},
    {VeltoFileWatcherActionAttributeChange, FWKQueue::NoteAttrib, FWFileWatcherAttributeChangeNotification},
    {VeltoFileWatcherActionSizeIncrease, FWKQueue::NoteExtend, FWFileWatcherSizeIncreaseNotification},
    {VeltoFileWatcherActionLinkCountChange, FWKQueue::NoteLink, FWFileWatcherLinkCountChangeNotification},
    {VeltoFileWatcherActionAccessRevocation, FWKQueue::NoteRevoke, FWFileWatcherAccessRevocationNotification},
}};

quint32 vnodeMaskForActions(quint32 actions)
{
    quint32 mask = 0;
    for (const ActionKind &kind : ActionKinds) {
        if (actions & kind.action)
            mask |= kind.vnodeFlag;
    }
    return mask;
}

quint32 actionForNotification(const QString &name)
{
    static const QHash<QString, quint32> actions = [] {
        QHash<QString, quint32> table;
        for (const ActionKind &kind : ActionKinds)
            table.insert(kind.notification, kind.action);
        return table;
    }();
    return actions.value(name);
}

} // namespace

class VeltoFileWatcher::Private
{
public:
    std::unique_ptr<FWKQueue> queue;
    VeltoError queueRefused; // why there is no queue
    QList<std::shared_ptr<VTWatchedFileInfo>> tokens; // in order of adding
};

VeltoFileWatcher *VeltoFileWatcher::instance()
{
    static VeltoFileWatcher *const watcher = new VeltoFileWatcher; // its queue may deliver during exit
    return watcher;
}

VeltoFileWatcher::VeltoFileWatcher() : d(std::make_unique<Private>())
{
    d->queue = FWKQueue::init(&d->queueRefused);
    if (d->queue)
        d->queue->setDelegate(this);
}

VeltoFileWatcher::~VeltoFileWatcher()
{
    d->queue.reset(); // stops its thread while this delegate still exists
}

std::shared_ptr<VTWatchedFileInfo> VeltoFileWatcher::addFileAtPath(const QString &path, quint32 actions,
                                                                   QObject *delegate, Options options,
                                                                   VeltoError *error)
{
    if (path.isEmpty() || !QFileInfo::exists(path)) {
        if (error)
            *error = VeltoError::posixError(ENOENT);
        return nullptr;
    }
    FWKQueue::WatchOptions queueOptions;
    queueOptions.setFlag(FWKQueue::WatchOption::FollowAtomicSaves, options.testFlag(Option::FollowAtomicSaves));
    VeltoError refusal = d->queueRefused;
    if (!d->queue || !d->queue->addPathToQueue(path, vnodeMaskForActions(actions), queueOptions, &refusal)) {
        qCWarning(lcVeltoFiles).noquote()
            << u"VeltoFileWatcher::addFileAtPath: cannot watch \"%1\": %2"_s.arg(path, refusal.localizedDescription());
        if (error)
            *error = refusal;
    }
    auto token = std::make_shared<VTWatchedFileInfo>(path, delegate);
    d->tokens.append(token);
    return token;
}

void VeltoFileWatcher::removeFileWithToken(const std::shared_ptr<VTWatchedFileInfo> &token)
{
    if (!token || !d->tokens.removeOne(token))
        return;
    if (d->queue)
        d->queue->removePathFromQueue(token->path());
}

QString VeltoFileWatcher::description() const
{
    QStringList paths;
    for (const auto &token : std::as_const(d->tokens))
        paths << u'"' + token->path() + u'"';
    return u"%1<0x%2> (%3)"_s.arg(QLatin1StringView(metaObject()->className()))
        .arg(quintptr(this), 0, 16)
        .arg(paths.join(u", "_s));
}

void VeltoFileWatcher::watcher(FWKQueue *, const QString &notification, const QString &path)
{
    const quint32 action = actionForNotification(notification);
    if (!action)
        return;
    for (auto token = d->tokens.crbegin(); token != d->tokens.crend(); ++token) {
        if ((*token)->path() == path) {
            FWMainThreadProxy::performRequiredSelector((*token)->delegate(), "fileWatcher", QVariant::fromValue(this),
                                                       QVariant::fromValue(action), path);
            return;
        }
    }
}
