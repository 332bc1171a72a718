// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// A zombie class: what a destroyed object of one original C++ class turns into while zombies are on.
// It is made at run time, once per original class: a name ("Foo_VeltoZombie"), a type_info whose base is
// VeltoZombie (so typeid() of a zombie names its zombie class), and a virtual table whose every entry
// traps. Retyping clears the destroyed object's memory and points its QObject part at that table, so that
// any virtual call through a dangling pointer, metaObject() included (every meta-call starts with it),
// lands in a trap that reports the original method's name.

#include "veltocore_export.h"

#include <QObject>
#include <QString>

#include <array>
#include <cstddef>
#include <memory>
#include <typeinfo>

class VELTOCORE_TESTS_EXPORT VTZombieClass
{
public:
    /// Virtual functions past this many in an original class's table are not trapped.
    static constexpr std::size_t TrappedSlotCount = 512;

    /// forObject: the zombie class of \a object's dynamic class, made on the first call for that class
    /// (from any thread) and kept for the life of the process.
    [[nodiscard]] static const VTZombieClass &forObject(const QObject &object);
    /// ofVirtualTable: the zombie class whose table \a table is; null for any other value (never dereferenced).
    [[nodiscard]] static const VTZombieClass *ofVirtualTable(const void *table);
    /// isZombie: whether \a object, a live QObject or a zombie, is a zombie. Lock-free.
    [[nodiscard]] static bool isZombie(const QObject *object) noexcept;
    /// ofZombie: the zombie class of \a zombie, which must be a zombie.
    [[nodiscard]] static const VTZombieClass &ofZombie(const void *zombie) noexcept;

    /**
     * retype: turns the destroyed object whose QObject part was at \a object, inside the allocation of
     * \a size bytes at \a memory, into a zombie of this class: the memory is cleared (a field read through a
     * dangling pointer gives 0, a pointer field null), the QObject part points at this class's table, and
     * the memory is kept for the life of the process.
     */
    void retype(void *memory, std::size_t size, QObject *object) const;

    /// name: the original class's name followed by "_VeltoZombie".
    [[nodiscard]] QString name() const { return m_name; }
    /// originalClass: the meta-object the original object answered when it was destroyed.
    [[nodiscard]] const QMetaObject *originalClass() const { return m_originalClass; }
    /// methodNameForSlot: the bare name of the original class's virtual function in \a slot ("bar",
    /// "~Foo"); QObject's own names for its first twelve slots when the symbol is hidden; otherwise
    /// "virtual function <slot>".
    [[nodiscard]] QString methodNameForSlot(std::size_t slot) const;
    /// methodNameOfSymbol: the bare name of a demangled function ("ns::Foo::bar(int) const" gives "bar").
    [[nodiscard]] static QString methodNameOfSymbol(const QString &function);

    VTZombieClass(const VTZombieClass &) = delete;
    VTZombieClass &operator=(const VTZombieClass &) = delete;

private:
    VTZombieClass(const QObject &original, const std::type_info &originalType);

    // The layout the C++ ABI reads through an object's table pointer: the offset from the table pointer's
    // place to the whole object and the type_info sit just before the entries the pointer points at. The
    // zombie class itself comes before them, for the traps.
    struct VirtualTable
    {
        const VTZombieClass *zombieClass = nullptr;
        std::ptrdiff_t offsetToTop = 0;
        const std::type_info *typeInfo = nullptr;
        std::array<void (*)(), TrappedSlotCount> entries{};
    };

    QString m_name;
    QByteArray m_mangledName; // the type_info's name, kept alive beside it
    std::unique_ptr<std::type_info> m_typeInfo;
    const QMetaObject *m_originalClass;
    const void *const *m_originalTable;
    VirtualTable m_table;
};
