// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoKeyedObserverSet.h
 * \brief VeltoKeyedObserverSet: an observer set where each observer registers, per key (a string naming
 * what changed), the method to call; broadcasts go by key.
 *
 * The re-entrancy rules of VeltoObserverSet hold. One more: a handler must not register another action for
 * the observer being visited, during that visit; doing so throws VeltoGenericException ("Collection <...>
 * was mutated while being enumerated.").
 *
 * \code
 * auto observers = VeltoKeyedObserverSet::create();
 * observers->addObserver(inspector, u"title"_s, "titleDidChange");
 * observers->notifyObserversForKey(u"title"_s, QVariant::fromValue(document));
 * \endcode
 */

#include "VeltoObserverSet.h"

#include <QByteArray>
#include <QSet>
#include <QString>

/// VeltoKeyedObserverAction: one registration, the key heard (a null key matches no key) and the method called.
struct VeltoKeyedObserverAction
{
    QString key;
    QByteArray selector;
};

class VELTOCORE_EXPORT VeltoKeyedObserverSet : public VeltoObserverSet
{
public:
    /// create: a new, empty keyed observer set.
    [[nodiscard]] static std::shared_ptr<VeltoKeyedObserverSet> create();

    VeltoKeyedObserverSet();
    ~VeltoKeyedObserverSet() override;

    void invalidate() override;
    /// count: the number of observers (not of registrations).
    [[nodiscard]] quint64 count() const override;
    [[nodiscard]] QList<QObject *> copyObserversArray() const override;
    /// addObserver: registers \a observer with no key and no method: counted and contained, never notified.
    void addObserver(QObject *observer) override;
    /// removeObserver: removes \a observer with all its actions.
    void removeObserver(const QObject *observer) override;
    [[nodiscard]] bool containsObserver(const QObject *observer) const override;

    /**
     * addObserver: appends the action (\a key, \a selector) to \a observer's registrations. Registering the
     * same key and method twice makes two actions, and the observer is then called twice.
     */
    void addObserver(QObject *observer, const QString &key, const char *selector);

    /// actionsForObserver: \a observer's actions in registration order (empty when not registered).
    [[nodiscard]] QList<VeltoKeyedObserverAction> actionsForObserver(const QObject *observer) const;

    /**
     * visitObserversForKeys: calls \a visitor once per action whose key is in \a keys, observer by observer
     * (snapshot rules of VeltoObserverSet), each observer's actions in registration order.
     */
    void visitObserversForKeys(const QSet<QString> &keys,
                               const std::function<void(QObject *observer, const char *selector)> &visitor);
    /// observersForKey: the observers with at least one action for \a key, each once.
    [[nodiscard]] QSet<QObject *> observersForKey(const QString &key) const;
    /// notifyObserversForKey: notifyObserversForKeys() with the one key.
    void notifyObserversForKey(const QString &key, const QVariant &object);
    /// notifyObserversForKeys: calls each matching action's method with \a object as its one argument.
    void notifyObserversForKeys(const QSet<QString> &keys, const QVariant &object);

private:
    class Private;
    std::unique_ptr<Private> const d;
};
