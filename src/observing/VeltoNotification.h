// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoNotification.h
 * \brief VeltoNotification: what a VeltoNotificationCenter carries to its observers: a name, the object
 * that sent it and a map of further facts.
 *
 * An implicitly shared value; copies are cheap. The sender is not owned and may be null.
 *
 * \code
 * center->postNotification(VeltoNotification(u"DocumentSaved"_s, document, {{u"path"_s, path}}));
 * \endcode
 */

#include "veltocore_export.h"

#include <QMetaType>
#include <QObject>
#include <QSharedDataPointer>
#include <QString>
#include <QVariantMap>

class VELTOCORE_EXPORT VeltoNotification
{
public:
    /// An unnamed notification from nobody, with no user info.
    VeltoNotification();
    /// A notification called \a name, sent by \a sender (not owned, may be null), carrying \a userInfo.
    explicit VeltoNotification(const QString &name, QObject *sender = nullptr, const QVariantMap &userInfo = {});
    VeltoNotification(const VeltoNotification &other);
    VeltoNotification(VeltoNotification &&other) noexcept;
    VeltoNotification &operator=(const VeltoNotification &other);
    VeltoNotification &operator=(VeltoNotification &&other) noexcept;
    ~VeltoNotification();

    /// name: what happened.
    [[nodiscard]] QString name() const;
    /// sender: the object it is about; null when the poster gave none.
    [[nodiscard]] QObject *sender() const;
    /// userInfo: further facts; empty when the poster gave none.
    [[nodiscard]] QVariantMap userInfo() const;

private:
    class Data;
    QSharedDataPointer<Data> d;
};

Q_DECLARE_METATYPE(VeltoNotification)
