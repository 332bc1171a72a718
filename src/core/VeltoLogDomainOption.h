// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoLogDomainOption.h
 * \brief One debug setting of a logging domain: a name and the variable it controls.
 *
 * The base class binds no variable, stores nothing and changes nothing. VeltoLogDomainOptionOf<T> binds a
 * typed variable of the caller's; VeltoLogDomainOption_BOOL and VeltoLogDomainOption_PlistObject are the
 * two kinds a domain registers. Derive from VeltoLogDomainOptionOf for variables of other types.
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

/// VeltoLogDomainOption: a named setting that a logging domain loads and saves.
class VELTOCORE_EXPORT VeltoLogDomainOption
{
public:
    explicit VeltoLogDomainOption(const QString &optionName);
    virtual ~VeltoLogDomainOption();
    VeltoLogDomainOption(const VeltoLogDomainOption &) = delete;
    VeltoLogDomainOption &operator=(const VeltoLogDomainOption &) = delete;

    /// optionName: the property name, the last part of the option's user-defaults key.
    [[nodiscard]] QString optionName() const;
    void setOptionName(const QString &optionName);

    /// plistObjectFromValuePointer: the variable's value as a property-list object; the base gives nullptr.
    [[nodiscard]] virtual VeltoPlistObject plistObjectFromValuePointer() const;
    /// setValuePointerFromPlistObject: stores \a object in the variable; true if the variable changed.
    /// The base changes nothing and returns false.
    virtual bool setValuePointerFromPlistObject(const VeltoPlistObject &object);

private:
    QString m_optionName;
};

/**
 * \brief VeltoLogDomainOptionOf: an option bound to a variable of type \a T that the caller owns and keeps
 * alive. A null pointer reads as no value (nullptr) and ignores writes; a subclass says how a value turns
 * into a property-list object and back.
 */
template <typename T>
class VELTOCORE_EXPORT VeltoLogDomainOptionOf : public VeltoLogDomainOption
{
public:
    VeltoLogDomainOptionOf(const QString &optionName, T *pointer)
        : VeltoLogDomainOption(optionName), m_pointer(pointer)
    {
    }

    /// optionValuePointer: the address of the caller's variable; not owned.
    [[nodiscard]] T *optionValuePointer() const { return m_pointer; }
    void setOptionValuePointer(T *pointer) { m_pointer = pointer; }

    [[nodiscard]] VeltoPlistObject plistObjectFromValuePointer() const final
    {
        return m_pointer ? plistObjectFromValue(*m_pointer) : nullptr;
    }
    bool setValuePointerFromPlistObject(const VeltoPlistObject &object) final
    {
        return m_pointer && storePlistObject(*m_pointer, object);
    }

protected:
    /// plistObjectFromValue: \a variable as a property-list object.
    [[nodiscard]] virtual VeltoPlistObject plistObjectFromValue(const T &variable) const = 0;
    /// storePlistObject: stores \a object in \a variable; true if the variable changed.
    virtual bool storePlistObject(T &variable, const VeltoPlistObject &object) = 0;

private:
    T *m_pointer;
};

extern template class VeltoLogDomainOptionOf<bool>;
extern template class VeltoLogDomainOptionOf<VeltoPlistObject>;
