// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoKVORegistration.h
 * \brief VeltoKVORegistration: one observed (watched object, key path) pair of one observer, with how many
 * times it was asked for and where its changes go (a method by name or a callable).
 *
 * A key path is the name of a Q_PROPERTY with a NOTIFY signal. A change is delivered as a change map:
 * "kind" = 1 (a setting), "new" = the new value when VeltoKeyValueObservingOptionNew was given, "old" = the
 * value seen before when VeltoKeyValueObservingOptionOld was given. Registrations are made and used through
 * VeltoKVOHelper and the functions of Object+VeltoKVOHelper.h.
 */

#include "VeltoObjectDealloc.h"
#include "veltocore_export.h"

#include <QObject>
#include <QVariantMap>

#include <functional>
#include <memory>

/// Observation options (the values are those applications already store).
enum VeltoKeyValueObservingOption : quint32 {
    VeltoKeyValueObservingOptionNew = 0x01,     ///< the change carries "new"
    VeltoKeyValueObservingOptionOld = 0x02,     ///< the change carries "old" (the value cached at the last change)
    VeltoKeyValueObservingOptionInitial = 0x04, ///< one change is delivered at once, when the pair is first registered
    VeltoKeyValueObservingOptionPrior = 0x08,   ///< accepted and ignored: a NOTIFY signal comes only after the change
};
Q_DECLARE_FLAGS(VeltoKeyValueObservingOptions, VeltoKeyValueObservingOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(VeltoKeyValueObservingOptions)

/// Keys of the change map.
inline constexpr QLatin1StringView VeltoKeyValueChangeKindKey{"kind"};
inline constexpr QLatin1StringView VeltoKeyValueChangeNewKey{"new"};
inline constexpr QLatin1StringView VeltoKeyValueChangeOldKey{"old"};

/// VeltoKVONotifyBlock: the callable form of a notification target (observer, watched object, change).
using VeltoKVONotifyBlock = std::function<void(QObject *observer, QObject *watchedObject, const QVariantMap &change)>;

class VeltoKVOHelper;

class VELTOCORE_EXPORT VeltoKVORegistration : public QObject
{
    Q_OBJECT
    VELTO_OBJECT_DEALLOC(VeltoKVORegistration)

public:
    enum NotifyType : quint32 { NotifyNone = 0, NotifySelector = 1, NotifyBlock = 2 };

    /// Makes a registration for (\a watchedObject, \a keyPath) owned by \a helper, not yet connected.
    VeltoKVORegistration(VeltoKVOHelper *helper, QObject *watchedObject, const QString &keyPath);
    ~VeltoKVORegistration() override;

    /// watchedObject: the watched object (not owned; compared by address).
    [[nodiscard]] QObject *watchedObject() const;
    [[nodiscard]] QString keyPath() const;
    /// registerCount: how many times the pair was asked for and not yet stopped.
    [[nodiscard]] quint64 registerCount() const;
    void setRegisterCount(quint64 count);

    [[nodiscard]] NotifyType notifyType() const;
    /// notifySelector: the method name when the type is NotifySelector; empty otherwise.
    [[nodiscard]] QByteArray notifySelector() const;
    /// setNotifySelector: clears the notify data, then targets the method \a selector.
    void setNotifySelector(const char *selector);
    /// setNotifyBlock: clears the notify data, then keeps a copy of \a block.
    void setNotifyBlock(const VeltoKVONotifyBlock &block);
    /// clearNotifyData: no target any more.
    void clearNotifyData();

    /**
     * notifyObserver: delivers \a change to \a observer. A method taking no parameter is called with none,
     * one taking one with the watched object, one taking two with the watched object and \a change; a method
     * with another count is not called. A block gets (observer, watched object, change).
     */
    void notifyObserver(QObject *observer, const QVariantMap &change);

    /**
     * connectToWatchedObject: connects to the property's NOTIFY signal. Logs a warning and connects nothing
     * when the watched object has no such notifying property.
     * \return whether a connection was made.
     */
    [[nodiscard]] bool connectToWatchedObject(VeltoKeyValueObservingOptions options);
    /// disconnectFromWatchedObject: removes the connection (safe when the watched object is already gone).
    void disconnectFromWatchedObject();
    /// isConnected: whether the connection to the watched object is in place.
    [[nodiscard]] bool isConnected() const;

private Q_SLOTS:
    void watchedPropertyChanged();

private:
    class Private;
    std::unique_ptr<Private> const d;
};
