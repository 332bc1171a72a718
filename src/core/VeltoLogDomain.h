// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoLogDomain.h
 * \brief A named area of diagnostic logging: an on/off switch and further debug options, each bound to a
 * variable of the caller's and persisted in the standard user defaults.
 *
 * The key of a property is "com.velto.debug.<domain>.<property>"; the switch of a domain named Layout is
 * "com.velto.debug.Layout.isEnabled". Writing that key (true, "YES" or 1) and loading the domain turns
 * its logging on. A domain does not watch the defaults: the application calls loadFromUserDefaults().
 *
 * \code
 * static bool layoutLogging = false;
 * static VeltoLogDomain layoutDomain(u"Layout"_s, &layoutLogging);
 * layoutDomain.loadFromUserDefaults();
 * VELTO_LOG(layoutLogging, u"laid out %1 lines"_s.arg(count));
 * \endcode
 *
 * Set up, load and save domains on the main thread; the variables may be read on any thread.
 */

#include "VeltoError.h"
#include "VeltoLogDomainOption.h"
#include "veltocore_export.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>

/// The property name under which a domain's enabled switch is registered and reported: "isEnabled".
inline constexpr QLatin1StringView VeltoLogDomainPropertyName_isEnabled{"isEnabled"};

/// VeltoLogDomain: a logging switch plus options, loaded from and saved to the standard user defaults.
class VELTOCORE_EXPORT VeltoLogDomain
{
public:
    /// Called with (domain, property name) when a property's value changes.
    using PropertyWatcher = std::function<void(VeltoLogDomain *domain, const QString &propertyName)>;

    /**
     * Makes the domain \a domainName bound to the caller's \a enabledPointer, registered as the first
     * option, named "isEnabled". Does not read the user defaults.
     */
    VeltoLogDomain(const QString &domainName, bool *enabledPointer);
    ~VeltoLogDomain();
    VeltoLogDomain(const VeltoLogDomain &) = delete;
    VeltoLogDomain &operator=(const VeltoLogDomain &) = delete;

    /// isEnabled: the value in the caller's enabled variable.
    [[nodiscard]] bool isEnabled() const;
    /// setIsEnabled: writes the variable; when the value really changes, calls the watcher with "isEnabled".
    void setIsEnabled(bool enabled);

    /// registerBoolPointer: adds a bool option named \a propertyName bound to \a pointer.
    void registerBoolPointer(bool *pointer, const QString &propertyName);
    /// registerPlistObjectPointer: adds a property-list object option bound to \a pointer.
    void registerPlistObjectPointer(VeltoPlistObject *pointer, const QString &propertyName);
    /// registerOption: appends \a option; duplicate names are accepted.
    void registerOption(std::shared_ptr<VeltoLogDomainOption> option);

    /// userDefaultsKeyForProperty: "com.velto.debug.<domain name>.<property name>".
    [[nodiscard]] QString userDefaultsKeyForProperty(const QString &propertyName) const;

    /**
     * loadFromUserDefaults: for each option in registration order, reads its key and, if a value is
     * stored, hands it to the option; when the option reports a change and a watcher is set, calls it.
     * Absent keys leave their variables alone.
     */
    void loadFromUserDefaults();
    /**
     * saveToUserDefaults: stores every option's value under its key (an option holding nothing removes
     * its key). The watcher is not called.
     * \return false, with \a error, at the first value the user defaults could not write.
     */
    [[nodiscard]] bool saveToUserDefaults(VeltoError *error = nullptr);

    [[nodiscard]] PropertyWatcher propertyWatcher() const;
    /// setPropertyWatcher: replaces the watcher; safe while another thread reads it.
    void setPropertyWatcher(PropertyWatcher watcher);
    [[nodiscard]] QString domainName() const;
    void setDomainName(const QString &domainName);
    /// options: the registered options in order; the first is the enabled switch.
    [[nodiscard]] QList<std::shared_ptr<VeltoLogDomainOption>> options() const;
    void setOptions(const QList<std::shared_ptr<VeltoLogDomainOption>> &options);
    /// enabledPointerIvar: the caller's enabled variable; not owned.
    [[nodiscard]] bool *enabledPointerIvar() const;
    void setEnabledPointerIvar(bool *enabledPointer);

private:
    class Private;
    std::unique_ptr<Private> const d;
};
