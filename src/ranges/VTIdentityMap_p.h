#pragma once

// VTIdentityMap: a map from object addresses to values that never owns, dereferences or outlives-checks
// its keys: an address is compared and hashed as a number. The owner removes an object's entry before
// the object goes; an entry left behind keeps a dangling address that is still compared, never used.
//
// It stands in for the weak-key dictionary of the observation subsystem (VeltoWeakKeyDictionary with
// address keys), which has the same contract; the spatial array switches to it once it exists.

#include <memory>
#include <unordered_map>

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

    /// Stores \a value for \a key, replacing any value stored before.
    void insert(const void *key, Value value) { m_map.insert_or_assign(key, std::move(value)); }

    /// Removes the entry of \a key and hands its value to the caller (a default value when there is none).
    [[nodiscard]] Value take(const void *key)
    {
        auto node = m_map.extract(key);
        return node.empty() ? Value() : std::move(node.mapped());
    }

    void clear() { m_map.clear(); }

private:
    std::unordered_map<const void *, Value> m_map;
};
