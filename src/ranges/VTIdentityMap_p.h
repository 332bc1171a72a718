// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// VTIdentityMap: a map from object addresses to values that never owns, dereferences or outlives-checks
// its keys: an address is compared and hashed as a number. The owner removes an object's entry before
// the object goes; an entry left behind keeps a dangling address that is still compared, never used.
//
// It stands in for the weak-key dictionary of the observation subsystem (VeltoWeakKeyDictionary with
// address keys), which has the same contract; the spatial array switches to it once it exists.

#include <unordered_map>
#include <utility>

template <typename Value>
class VTIdentityMap
{
public:
    [[nodiscard]] std::size_t count() const { return m_map.size(); }

    /// The value stored for \a key, or nullptr.
    [[nodiscard]] Value *find(const void *key)
    {
        const auto found = m_map.find(key);
        return found == m_map.end() ? nullptr : &found->second;
    }
    [[nodiscard]] const Value *find(const void *key) const
    {
        const auto found = m_map.find(key);
        return found == m_map.end() ? nullptr : &found->second;
    }

    /**
     * The value stored for \a key, made (default-constructed) when there was none, and whether it was
     * made. A value stays at its address until it is removed.
     */
    std::pair<Value &, bool> findOrInsert(const void *key)
    {
        const auto [found, inserted] = m_map.try_emplace(key);
        return {found->second, inserted};
    }

    /// Removes the entry of \a key, if any.
    void remove(const void *key) { m_map.erase(key); }

    void clear() { m_map.clear(); }

private:
    std::unordered_map<const void *, Value> m_map;
};
