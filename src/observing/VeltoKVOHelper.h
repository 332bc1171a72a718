// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoKVOHelper.h
 * \brief VeltoKVOHelper: sits between one observer and the objects it watches. Each (watched object, key
 * path) pair is connected once however many times it is asked for, changes go to the method or callable
 * fixed by the first request, and every connection still open is removed when the observer is destroyed.
 *
 * The helper is attached to its observer (owned by it) and is created on demand by helperForObserver() or
 * the functions of Object+VeltoKVOHelper.h. Watched objects are not owned: they must outlive the
 * registration, or the observer stops watching them first. Use on the observer's thread.
 */

#include "VeltoKVORegistration.h"
#include "VeltoObjectDealloc.h"

#include <QList>

class VELTOCORE_EXPORT VeltoKVOHelper : public QObject
{
    Q_OBJECT
    VELTO_OBJECT_DEALLOC(VeltoKVOHelper)

public:
    /**
     * helperForObserver: the helper attached to \a observer; when there is none, a new attached one if
     * \a create is true, else null.
     */
    [[nodiscard]] static VeltoKVOHelper *helperForObserver(QObject *observer, bool create);

    /// Makes a helper for \a observer with no registrations (not attached; helperForObserver() attaches).
    explicit VeltoKVOHelper(QObject *observer);
    /// Stops every registration still open, last first.
    ~VeltoKVOHelper() override;

    [[nodiscard]] QObject *observer() const;
    /// registrations: the registrations in order of creation.
    [[nodiscard]] QList<VeltoKVORegistration *> registrations() const;

    /**
     * registrationForWatchedObject: the first registration for that very object and an equal key path, its
     * index written to \a index when given; when none and \a create, a new one appended (index = the count
     * before); otherwise null and \a index untouched.
     */
    VeltoKVORegistration *registrationForWatchedObject(QObject *object, const QString &keyPath, qsizetype *index,
                                                       bool create);

    /// startWatching: counts a request; the first one for the pair sets \a selector and connects.
    void startWatching(QObject *object, const QString &keyPath, VeltoKeyValueObservingOptions options,
                       const char *selector);
    /// startWatchingNotifyBlock: counts a request; the first one for the pair keeps \a block and connects.
    void startWatchingNotifyBlock(QObject *object, const QString &keyPath, VeltoKeyValueObservingOptions options,
                                  const VeltoKVONotifyBlock &block);
    /// stopWatching: undoes one request; the last one disconnects and drops the registration. Unknown pairs do nothing.
    void stopWatching(QObject *object, const QString &keyPath);
    /// stopWatchingRegistration: disconnects \a registration and drops it from index \a index, whatever its count.
    void stopWatchingRegistration(VeltoKVORegistration *registration, qsizetype index);

    /// observeValueForKeyPath: the entry of every change: hands \a change to \a context for this helper's observer.
    void observeValueForKeyPath(const QString &keyPath, QObject *object, const QVariantMap &change,
                                VeltoKVORegistration *context);

private:
    class Private;
    std::unique_ptr<Private> const d;
};
