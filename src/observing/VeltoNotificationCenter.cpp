// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoNotificationCenter.h"

#include "Object+VeltoDispatch.h"

#include <QVarLengthArray>

#include <atomic>
#include <mutex>
#include <vector>

namespace {

struct Registration
{
    quint64 id = 0;
    QString name; // empty: any
    const QObject *sender = nullptr; // null: any
    QObject *receiver = nullptr;
    QByteArray selector; // empty for a callback
    VeltoNotificationCenter::Block block;
    QMetaObject::Connection receiverDestroyed;
    // Set under the lock when the registration ends; a post that took it before checks it before each call.
    std::atomic<bool> removed{false};

    bool matches(const QString &postedName, const QObject *postedSender) const
    {
        return (name.isEmpty() || name == postedName) && (!sender || sender == postedSender);
    }
};

using RegistrationPointer = std::shared_ptr<Registration>;

} // namespace

class VeltoNotificationCenter::Private
{
public:
    void add(const RegistrationPointer &registration)
    {
        if (registration->receiver) {
            // Direct: it runs in the destroying thread, before the receiver's memory is gone.
            registration->receiverDestroyed = QObject::connect(registration->receiver, &QObject::destroyed,
                                                               [this](QObject *gone) { removeMatching(gone, {}, nullptr); });
        }
        std::lock_guard lock(mutex);
        registration->id = ++lastId;
        registrations.push_back(registration);
    }

    template<typename Predicate>
    void removeIf(Predicate predicate)
    {
        std::vector<RegistrationPointer> ended;
        {
            std::lock_guard lock(mutex);
            std::erase_if(registrations, [&](const RegistrationPointer &registration) {
                if (!predicate(*registration))
                    return false;
                registration->removed.store(true, std::memory_order_release);
                ended.push_back(registration);
                return true;
            });
        }
        for (const RegistrationPointer &registration : ended)
            QObject::disconnect(registration->receiverDestroyed);
    }

    void removeMatching(const QObject *receiver, const QString &name, const QObject *sender)
    {
        removeIf([&](const Registration &registration) {
            return registration.receiver == receiver && (name.isEmpty() || registration.name == name)
                && (!sender || registration.sender == sender);
        });
    }

    mutable std::mutex mutex;
    std::vector<RegistrationPointer> registrations;
    quint64 lastId = 0;
};

VeltoNotificationCenter *VeltoNotificationCenter::defaultCenter()
{
    static VeltoNotificationCenter *const center = new VeltoNotificationCenter; // posts may come during exit
    return center;
}

VeltoNotificationCenter::VeltoNotificationCenter() : d(std::make_unique<Private>())
{
}

VeltoNotificationCenter::~VeltoNotificationCenter()
{
    d->removeIf([](const Registration &) { return true; });
}

void VeltoNotificationCenter::addObserver(QObject *observer, const char *selector, const QString &name,
                                          const QObject *sender)
{
    if (!observer || !selector || !*selector)
        return;
    auto registration = std::make_shared<Registration>();
    registration->name = name;
    registration->sender = sender;
    registration->receiver = observer;
    registration->selector = selector;
    d->add(registration);
}

VeltoNotificationCenter::Token VeltoNotificationCenter::addObserverForName(const QString &name, const QObject *sender,
                                                                           Block block, QObject *receiver)
{
    if (!block)
        return Token::None;
    auto registration = std::make_shared<Registration>();
    registration->name = name;
    registration->sender = sender;
    registration->receiver = receiver;
    registration->block = std::move(block);
    d->add(registration);
    return Token(registration->id);
}

void VeltoNotificationCenter::removeObserver(Token token)
{
    if (token != Token::None)
        d->removeIf([token](const Registration &registration) { return registration.id == quint64(token); });
}

void VeltoNotificationCenter::removeObserver(const QObject *observer, const QString &name, const QObject *sender)
{
    if (observer)
        d->removeMatching(observer, name, sender);
}

void VeltoNotificationCenter::postNotification(const VeltoNotification &notification)
{
    const QString name = notification.name();
    const QObject *sender = notification.sender();
    QVarLengthArray<RegistrationPointer, 8> matching;
    {
        std::lock_guard lock(d->mutex);
        for (const RegistrationPointer &registration : d->registrations) {
            if (registration->matches(name, sender))
                matching.append(registration);
        }
    }
    if (matching.isEmpty())
        return;
    const QVariant argument = QVariant::fromValue(notification);
    for (const RegistrationPointer &registration : std::as_const(matching)) {
        if (registration->removed.load(std::memory_order_acquire))
            continue;
        if (registration->block)
            registration->block(notification);
        else
            velto::performSelectorIfResponds(registration->receiver, registration->selector.constData(), argument);
    }
}

void VeltoNotificationCenter::postNotificationName(const QString &name, QObject *sender, const QVariantMap &userInfo)
{
    postNotification(VeltoNotification(name, sender, userInfo));
}

qsizetype VeltoNotificationCenter::observerCount() const
{
    std::lock_guard lock(d->mutex);
    return qsizetype(d->registrations.size());
}
