// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoNotificationCenter.h
 * \brief VeltoNotificationCenter: name-based broadcasting. Posters name what happened; observers choose
 * by name and sender, without either side knowing the other.
 *
 * An observer is registered for a name (empty: every name) and a sender (null: every sender) and is
 * either a receiver's method, called by name with the VeltoNotification as its one argument, or a
 * callback, optionally tied to a receiver. Registrations tied to a receiver end by themselves when the
 * receiver is destroyed; the others end when removed.
 *
 * Delivery is synchronous, on the posting thread, in the order the observers were added. Adding,
 * removing and posting may happen on any thread at once. A post runs over the observers registered when
 * it began: one removed during the post (by itself or by another observer) is not called afterwards,
 * one added during the post is first called by the next post, and an observer may post again. A delivery
 * already under way on another thread is not waited for by a removal; a receiver that hears posts from
 * other threads is removed before it is destroyed on its own.
 *
 * Prefer a Qt signal where the sender is known to the receiver; use the centre where it is not (the file
 * watcher's notifications, process-wide events).
 *
 * \code
 * auto *center = VeltoNotificationCenter::defaultCenter();
 * center->addObserver(this, "fileWasWritten", FWFileWatcherWriteNotification);
 * // slot: void fileWasWritten(const VeltoNotification &notification);
 * const auto token = center->addObserverForName(u"Saved"_s, nullptr, [](const VeltoNotification &n) { ... });
 * center->removeObserver(token);
 * \endcode
 */

#include "VeltoNotification.h"

#include "veltocore_export.h"

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

class VELTOCORE_EXPORT VeltoNotificationCenter
{
public:
    /// A callback registration, for removeObserver(); None stands for no registration.
    enum class Token : quint64 { None = 0 };
    using Block = std::function<void(const VeltoNotification &notification)>;

    /// defaultCenter: the process-wide centre, made on first use and never destroyed.
    [[nodiscard]] static VeltoNotificationCenter *defaultCenter();

    /// An empty centre of one's own (tests, a subsystem that wants its own).
    VeltoNotificationCenter();
    VeltoNotificationCenter(const VeltoNotificationCenter &) = delete;
    VeltoNotificationCenter &operator=(const VeltoNotificationCenter &) = delete;
    /// Ends every registration; must not run while a post on this centre is under way.
    ~VeltoNotificationCenter();

    /**
     * addObserver: calls \a selector of \a observer (a slot or Q_INVOKABLE method taking a
     * VeltoNotification, a QVariant, or nothing) for each notification called \a name (empty: any) from
     * \a sender (null: any). The registration ends with removeObserver() or when \a observer is destroyed.
     * Nothing is registered for a null observer or selector. Adding the same observer twice registers it
     * twice.
     */
    void addObserver(QObject *observer, const char *selector, const QString &name = {}, const QObject *sender = nullptr);

    /**
     * addObserverForName: calls \a block for each notification called \a name (empty: any) from \a sender
     * (null: any). With a \a receiver, the registration also ends when the receiver is destroyed and by
     * removeObserver(receiver).
     * \return the token that removes it; None (and nothing registered) for an empty block.
     */
    [[nodiscard]] Token addObserverForName(const QString &name, const QObject *sender, Block block,
                                           QObject *receiver = nullptr);

    /// removeObserver: ends the registration of \a token; nothing for None or a token already removed.
    void removeObserver(Token token);
    /**
     * removeObserver: ends the registrations of \a observer (methods, and callbacks tied to it) that match
     * \a name (empty: all names) and \a sender (null: all senders); nothing when there are none.
     */
    void removeObserver(const QObject *observer, const QString &name = {}, const QObject *sender = nullptr);

    /// postNotification: delivers \a notification to every matching observer on this thread, then returns.
    void postNotification(const VeltoNotification &notification);
    /// postNotificationName: posts VeltoNotification(\a name, \a sender, \a userInfo).
    void postNotificationName(const QString &name, QObject *sender, const QVariantMap &userInfo = {});

    /// observerCount: how many registrations there are now.
    [[nodiscard]] qsizetype observerCount() const;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
