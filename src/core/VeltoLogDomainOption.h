#pragma once

/**
 * \file VeltoLogDomainOption.h
 * \brief One debug setting of a logging domain: a name and the address of the variable it controls.
 *
 * The base class stores nothing and changes nothing; VeltoLogDomainOption_BOOL and
 * VeltoLogDomainOption_PlistObject bind real variables. Subclass it for variables of other types.
 */

#include "veltocore_export.h"

#include <QString>
#include <QVariant>

#include <memory>

/**
 * A property-list object held by reference. Options of this kind compare by identity (the pointer), not
 * by value: two objects with equal contents are still two objects.
 */
using VeltoPlistObject = std::shared_ptr<const QVariant>;

/// VeltoLogDomainOption: a named variable of the caller's that a logging domain loads and saves.
class VELTOCORE_EXPORT VeltoLogDomainOption
{
public:
    /// Binds \a optionName to the variable at \a optionValuePointer, which the caller owns and keeps alive.
    VeltoLogDomainOption(const QString &optionName, void *optionValuePointer);
    virtual ~VeltoLogDomainOption();
    VeltoLogDomainOption(const VeltoLogDomainOption &) = delete;
    VeltoLogDomainOption &operator=(const VeltoLogDomainOption &) = delete;

    /// optionName: the property name, the last part of the option's user-defaults key.
    [[nodiscard]] QString optionName() const;
    void setOptionName(const QString &optionName);
    /// optionValuePointer: the address of the caller's variable; not owned.
    [[nodiscard]] void *optionValuePointer() const;
    void setOptionValuePointer(void *optionValuePointer);

    /// plistObjectFromValuePointer: the variable's value as a property-list object; the base gives nullptr.
    [[nodiscard]] virtual VeltoPlistObject plistObjectFromValuePointer() const;
    /// setValuePointerFromPlistObject: stores \a object in the variable; true if the variable changed.
    /// The base changes nothing and returns false.
    virtual bool setValuePointerFromPlistObject(const VeltoPlistObject &object);

private:
    QString m_optionName;
    void *m_optionValuePointer;
};
