// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoObserverSet.h
 * \brief VeltoObserverSet: a non-owning set of observer QObjects with a broadcast that calls one method,
 * by name, on every observer that implements it.
 *
 * Make one with VeltoObserverSet::create() (the plain set, VeltoObserverSetImpl) or
 * VeltoKeyedObserverSet::create(); hold it by std::shared_ptr. Observers are not owned: each observer is
 * removed before it is destroyed.
 *
 * Re-entrancy: a broadcast runs over a snapshot of the observers. An observer removed during a pass is not
 * called afterwards in that pass; one added during a pass is first called by the next broadcast; a handler
 * may start another broadcast on the same set, and may release the last owner of the set (the set keeps
 * itself alive until the pass ends). An empty set broadcasts without allocating.
 *
 * \code
 * auto observers = VeltoObserverSet::create();
 * observers->addObserver(view);
 * observers->makeObserversPerformSelector("documentDidChange", QVariant::fromValue(document));
 * \endcode
 *
 * Notifications run synchronously on the caller's thread; a set is used from one thread.
 */

#include "veltocore_export.h"

#include <QList>
#include <QObject>
#include <QVarLengthArray>
#include <QVariant>

#include <array>
#include <functional>
#include <memory>

struct VTMethod;

class VELTOCORE_EXPORT VeltoObserverSet : public std::enable_shared_from_this<VeltoObserverSet>
{
public:
    /// create: a new, empty plain observer set (a VeltoObserverSetImpl).
    [[nodiscard]] static std::shared_ptr<VeltoObserverSet> create();

    VeltoObserverSet(const VeltoObserverSet &) = delete;
    VeltoObserverSet &operator=(const VeltoObserverSet &) = delete;
    virtual ~VeltoObserverSet();

    // The primitives; the rest of the class is written in terms of them. Here they do nothing and
    // return 0, empty or false.

    /// invalidate: forgets every observer; afterwards the set stays empty and adds do nothing.
    virtual void invalidate();
    /// count: the number of observers.
    [[nodiscard]] virtual quint64 count() const;
    /// copyObserversArray: a new list of the observers, in the set's internal order.
    [[nodiscard]] virtual QList<QObject *> copyObserversArray() const;
    /// addObserver: registers \a observer (not owned).
    virtual void addObserver(QObject *observer);
    /// removeObserver: unregisters \a observer; nothing when it is not registered.
    virtual void removeObserver(const QObject *observer);
    /// containsObserver: whether \a observer is registered.
    [[nodiscard]] virtual bool containsObserver(const QObject *observer) const;

    /// visitObserversUsing: calls \a visitor with each observer, under the snapshot rules above.
    void visitObserversUsing(const std::function<void(QObject *observer)> &visitor);
    /// visitObserversRespondingToSelector: the same, limited to observers implementing \a selector (all when null).
    void visitObserversRespondingToSelector(const char *selector, const std::function<void(QObject *observer)> &visitor);

    /**
     * makeObserversPerformSelector: calls \a selector with up to three object arguments (invalid for none) on
     * every observer that implements it; others are skipped, results are ignored. The set remembers the
     * method of the last class and selector it broadcast, so repeating a message to observers of one class
     * looks nothing up.
     */
    void makeObserversPerformSelector(const char *selector);
    void makeObserversPerformSelector(const char *selector, const QVariant &first, const QVariant &second = {},
                                      const QVariant &third = {});

    /// description: "VeltoObserverSet {\n", then "\t<observer>\n" per observer in snapshot order, then "}".
    [[nodiscard]] QString description() const;

protected:
    /// The real initialiser of subclasses (create() makes the plain set).
    VeltoObserverSet();

    /// The snapshot a pass runs over. It arrives sized to count() (up to 32 observers on the stack, no
    /// allocation); write the observers over it, and resize it only when their number differs. The default
    /// copies copyObserversArray(); subclasses may fill it directly.
    using Snapshot = QVarLengthArray<QObject *, 32>;
    virtual void takeSnapshot(Snapshot &snapshot) const;

    /// A count that changes whenever an observer is removed, so that a pass asks containsObserver() only
    /// once something was removed; UnknownRemovalCount (the default) makes it ask for every observer after
    /// the first.
    static constexpr quint64 UnknownRemovalCount = ~quint64(0);
    [[nodiscard]] virtual quint64 removalCount() const;

    /// keepAlive: what a pass holds so that a handler may release the set's last owner (null when the set
    /// has no owner).
    [[nodiscard]] std::shared_ptr<VeltoObserverSet> keepAlive();

private:
    template<typename Visitor>
    void visit(quint64 observerCount, Visitor &&visitor);
    // Null arguments stand for none, so a broadcast without arguments makes no QVariants.
    void broadcast(quint64 observerCount, const char *selector, const std::array<const QVariant *, 3> &arguments);

    // Locked by keepAlive() (weak_from_this() would copy it: two more reference count updates per pass).
    std::weak_ptr<VeltoObserverSet> m_self;
    // The method of the last broadcast, owned by the library's method cache.
    const VTMethod *m_lastMethod = nullptr;
};
