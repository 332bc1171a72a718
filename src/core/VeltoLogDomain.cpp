// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLogDomain.h"

#include "VeltoLogDomainOption_BOOL.h"
#include "VeltoLogDomainOption_PlistObject.h"
#include "VeltoLogging.h"
#include "VeltoUserDefaults.h"

#include <mutex>

using namespace Qt::StringLiterals;

class VeltoLogDomain::Private
{
public:
    QString domainName;
    bool *enabledPointer = nullptr;
    QList<std::shared_ptr<VeltoLogDomainOption>> options;
    mutable std::mutex watcherMutex;
    PropertyWatcher watcher;
};

VeltoLogDomain::VeltoLogDomain(const QString &domainName, bool *enabledPointer) : d(new Private)
{
    d->domainName = domainName;
    d->enabledPointer = enabledPointer;
    registerBoolPointer(enabledPointer, VeltoLogDomainPropertyName_isEnabled);
}

VeltoLogDomain::~VeltoLogDomain() = default;

bool VeltoLogDomain::isEnabled() const
{
    return d->enabledPointer != nullptr && VeltoLog_IsEnabled(*d->enabledPointer);
}

void VeltoLogDomain::setIsEnabled(bool enabled)
{
    VeltoLogDomainOption_BOOL option(VeltoLogDomainPropertyName_isEnabled, d->enabledPointer);
    if (!option.setValue(enabled))
        return;
    if (const PropertyWatcher watcher = propertyWatcher())
        watcher(this, VeltoLogDomainPropertyName_isEnabled);
}

void VeltoLogDomain::registerBoolPointer(bool *pointer, const QString &propertyName)
{
    registerOption(std::make_shared<VeltoLogDomainOption_BOOL>(propertyName, pointer));
}

void VeltoLogDomain::registerPlistObjectPointer(VeltoPlistObject *pointer, const QString &propertyName)
{
    registerOption(std::make_shared<VeltoLogDomainOption_PlistObject>(propertyName, pointer));
}

void VeltoLogDomain::registerOption(std::shared_ptr<VeltoLogDomainOption> option)
{
    d->options.append(std::move(option));
}

QString VeltoLogDomain::userDefaultsKeyForProperty(const QString &propertyName) const
{
    return u"com.velto.debug.%1.%2"_s.arg(d->domainName, propertyName);
}

void VeltoLogDomain::loadFromUserDefaults()
{
    const PropertyWatcher watcher = propertyWatcher();
    const auto defaults = VeltoUserDefaults::standardUserDefaults();
    for (const auto &option : std::as_const(d->options)) {
        const QVariant stored = defaults->objectForKey(userDefaultsKeyForProperty(option->optionName()));
        if (!stored.isValid())
            continue;
        if (option->setValuePointerFromPlistObject(std::make_shared<const QVariant>(stored)) && watcher)
            watcher(this, option->optionName());
    }
}

bool VeltoLogDomain::saveToUserDefaults(VeltoError *error)
{
    const auto defaults = VeltoUserDefaults::standardUserDefaults();
    for (const auto &option : std::as_const(d->options)) {
        const VeltoPlistObject object = option->plistObjectFromValuePointer();
        const QString key = userDefaultsKeyForProperty(option->optionName());
        if (!(object ? defaults->setObject(*object, key, error) : defaults->removeObjectForKey(key, error)))
            return false;
    }
    return true;
}

VeltoLogDomain::PropertyWatcher VeltoLogDomain::propertyWatcher() const
{
    std::lock_guard lock(d->watcherMutex);
    return d->watcher;
}

void VeltoLogDomain::setPropertyWatcher(PropertyWatcher watcher)
{
    std::lock_guard lock(d->watcherMutex);
    d->watcher = std::move(watcher);
}

QString VeltoLogDomain::domainName() const
{
    return d->domainName;
}

void VeltoLogDomain::setDomainName(const QString &domainName)
{
    d->domainName = domainName;
}

QList<std::shared_ptr<VeltoLogDomainOption>> VeltoLogDomain::options() const
{
    return d->options;
}

void VeltoLogDomain::setOptions(const QList<std::shared_ptr<VeltoLogDomainOption>> &options)
{
    d->options = options;
}

bool *VeltoLogDomain::enabledPointerIvar() const
{
    return d->enabledPointer;
}

void VeltoLogDomain::setEnabledPointerIvar(bool *enabledPointer)
{
    d->enabledPointer = enabledPointer;
}
