// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTZombieClass_p.h"

#include "VTSymbols_p.h"
#include "VeltoZombie.h"

#include <QHash>

#include <cxxabi.h>

#include <cstring>
#include <mutex>
#include <typeindex>
#include <unordered_map>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// QObject's own virtual functions in table order (Qt 6), for classes whose symbols are hidden.
constexpr std::array<const char *, 12> QObjectSlotNames{
    "metaObject", "qt_metacast", "qt_metacall", "~QObject", "~QObject", "event",
    "eventFilter", "timerEvent", "childEvent", "customEvent", "connectNotify", "disconnectNotify"};

struct Registry
{
    std::mutex mutex;
    std::unordered_map<std::type_index, std::unique_ptr<VTZombieClass>> byOriginalType;
    QHash<const void *, const VTZombieClass *> byTable;
    // Zombies are leaked on purpose; listing them keeps them reachable, so leak checkers stay quiet.
    std::vector<const void *> keptMemory;
};

Registry &registry()
{
    static Registry *const instance = new Registry; // never destroyed: zombies outlive static destructors
    return *instance;
}

[[noreturn]] void zombieCalled(void *first, void *second, std::size_t slot)
{
    // The receiver comes first, unless the function returns a large value on x86-64: then the caller's
    // result buffer comes first and the receiver second. Both are readable memory; only a zombie's first
    // word is a zombie table.
    void *receiver = VTZombieClass::ofVirtualTable(*static_cast<void **>(first)) ? first : second;
    const VTZombieClass &zombieClass = VTZombieClass::ofZombie(receiver);
    static_cast<const VeltoZombie *>(receiver)->warnAboutUsingZombieSelector(zombieClass.methodNameForSlot(slot));
}

// One trap per slot, so that each knows which virtual function the caller meant.
template<std::size_t Slot>
[[noreturn]] void trapVirtualCall(void *first, void *second)
{
    zombieCalled(first, second, Slot);
}

using Entries = std::array<void (*)(), VTZombieClass::TrappedSlotCount>;

template<std::size_t... Slots>
Entries makeTraps(std::index_sequence<Slots...>)
{
    return {reinterpret_cast<void (*)()>(&trapVirtualCall<Slots>)...};
}

const Entries &traps()
{
    static const Entries entries = makeTraps(std::make_index_sequence<VTZombieClass::TrappedSlotCount>());
    return entries;
}

const void *const *virtualTableOf(const void *object)
{
    return *static_cast<const void *const *const *>(object);
}

} // namespace

VTZombieClass::VTZombieClass(const QObject &original, const std::type_info &originalType)
    : m_name(VTSymbols::typeName(originalType) + u"_VeltoZombie"_s),
      m_originalClass(original.metaObject()),
      m_originalTable(virtualTableOf(&original))
{
    // The type_info name is a length and the name, which demangles back to the name for plain class names.
    const QByteArray name = m_name.toUtf8();
    m_mangledName = QByteArray::number(name.size()) + name;
    const auto *base = static_cast<const abi::__class_type_info *>(&typeid(VeltoZombie));
    m_typeInfo = std::make_unique<abi::__si_class_type_info>(m_mangledName.constData(), base);
    // Where the QObject part sits in the whole object is the same for every object of a class.
    m_table.offsetToTop = static_cast<const char *>(dynamic_cast<const void *>(&original))
        - reinterpret_cast<const char *>(&original);
    m_table.zombieClass = this;
    m_table.typeInfo = m_typeInfo.get();
    m_table.entries = traps();
}

const VTZombieClass &VTZombieClass::forObject(const QObject &object)
{
    const std::type_info &type = typeid(object);
    Registry &classes = registry();
    std::lock_guard lock(classes.mutex);
    auto &zombieClass = classes.byOriginalType[std::type_index(type)];
    if (!zombieClass) {
        zombieClass.reset(new VTZombieClass(object, type));
        classes.byTable.insert(zombieClass->m_table.entries.data(), zombieClass.get());
    }
    return *zombieClass;
}

const VTZombieClass *VTZombieClass::ofVirtualTable(const void *table)
{
    Registry &classes = registry();
    std::lock_guard lock(classes.mutex);
    return classes.byTable.value(table);
}

bool VTZombieClass::isZombie(const QObject *object) noexcept
{
    // Every zombie table starts with the first trap; no live class's table does.
    return virtualTableOf(object)[0] == reinterpret_cast<const void *>(traps()[0]);
}

const VTZombieClass &VTZombieClass::ofZombie(const void *zombie) noexcept
{
    const auto *entries = reinterpret_cast<const char *>(virtualTableOf(zombie));
    return *reinterpret_cast<const VirtualTable *>(entries - offsetof(VirtualTable, entries))->zombieClass;
}

void VTZombieClass::retype(void *memory, std::size_t size, QObject *object) const
{
    std::memset(memory, 0, size);
    *reinterpret_cast<const void **>(object) = m_table.entries.data();
    Registry &classes = registry();
    std::lock_guard lock(classes.mutex);
    classes.keptMemory.push_back(memory);
}

QString VTZombieClass::methodNameForSlot(std::size_t slot) const
{
    if (const QString symbol = VTSymbols::exactSymbol(m_originalTable[slot]); !symbol.isEmpty())
        return methodNameOfSymbol(symbol);
    if (slot < QObjectSlotNames.size())
        return QString::fromLatin1(QObjectSlotNames[slot]);
    return u"virtual function %1"_s.arg(slot);
}

QString VTZombieClass::methodNameOfSymbol(const QString &function)
{
    QString name = function;
    for (const QLatin1StringView thunk : {"virtual thunk to "_L1, "non-virtual thunk to "_L1}) {
        if (name.startsWith(thunk))
            name.remove(0, thunk.size());
    }
    // Drop the parameter list and the qualifiers after it: the last parenthesised group.
    for (qsizetype i = name.lastIndexOf(u')'), depth = 0; i >= 0; --i) {
        if (name.at(i) == u')')
            ++depth;
        else if (name.at(i) == u'(' && --depth == 0) {
            name.truncate(i);
            break;
        }
    }
    // Drop the qualification: up to the last "::" outside template arguments and parentheses.
    qsizetype start = 0;
    for (qsizetype i = 0, depth = 0; i + 1 < name.size(); ++i) {
        const QChar c = name.at(i);
        if (c == u'<' || c == u'(')
            ++depth;
        else if (c == u'>' || c == u')')
            --depth;
        else if (depth == 0 && c == u':' && name.at(i + 1) == u':')
            start = ++i + 1;
    }
    return name.mid(start);
}
