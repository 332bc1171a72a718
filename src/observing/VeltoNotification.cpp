// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoNotification.h"

class VeltoNotification::Data : public QSharedData
{
public:
    QString name;
    QObject *sender = nullptr;
    QVariantMap userInfo;
};

VeltoNotification::VeltoNotification() : d(new Data)
{
}

VeltoNotification::VeltoNotification(const QString &name, QObject *sender, const QVariantMap &userInfo) : d(new Data)
{
    d->name = name;
    d->sender = sender;
    d->userInfo = userInfo;
}

VeltoNotification::VeltoNotification(const VeltoNotification &other) = default;
VeltoNotification::VeltoNotification(VeltoNotification &&other) noexcept = default;
VeltoNotification &VeltoNotification::operator=(const VeltoNotification &other) = default;
VeltoNotification &VeltoNotification::operator=(VeltoNotification &&other) noexcept = default;
VeltoNotification::~VeltoNotification() = default;

QString VeltoNotification::name() const
{
    return d->name;
}

QObject *VeltoNotification::sender() const
{
    return d->sender;
}

QVariantMap VeltoNotification::userInfo() const
{
    return d->userInfo;
}
