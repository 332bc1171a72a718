// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoWeakKeyDictionary.h"

#include "VTSnapshot_p.h"

#include <unordered_map>

namespace {

struct KeyHash
{
    const VeltoWeakKeyCallbacks *callbacks;
    size_t operator()(const void *key) const
    {
        return callbacks->hash ? callbacks->hash(key) : std::hash<const void *>()(key);
    }
};

struct KeyEqual
{
    const VeltoWeakKeyCallbacks *callbacks;
    bool operator()(const void *a, const void *b) const
    {
        return callbacks->equal ? callbacks->equal(a, b) : a == b;
    }
};

} // namespace

class VeltoWeakKeyDictionary::Private
{
public:
    explicit Private(const VeltoWeakKeyCallbacks &callbacks)
        : callbacks(callbacks), entries(0, KeyHash{&this->callbacks}, KeyEqual{&this->callbacks})
    {
    }

    const VeltoWeakKeyCallbacks callbacks;
    std::unordered_map<const void *, QVariant, KeyHash, KeyEqual> entries;
};

VeltoWeakKeyDictionary::VeltoWeakKeyDictionary() : VeltoWeakKeyDictionary(VeltoWeakKeyCallbacks{}) {}
VeltoWeakKeyDictionary::VeltoWeakKeyDictionary(const VeltoWeakKeyCallbacks &callbacks)
    : d(std::make_unique<Private>(callbacks))
{
}
VeltoWeakKeyDictionary::~VeltoWeakKeyDictionary() = default;

quint64 VeltoWeakKeyDictionary::count() const
{
    return d->entries.size();
}

QVariant VeltoWeakKeyDictionary::objectForKey(const void *key) const
{
    const auto found = d->entries.find(key);
    return found == d->entries.end() ? QVariant() : found->second;
}

void VeltoWeakKeyDictionary::setObject(const QVariant &value, const void *key)
{
    if (value.isValid())
        d->entries.insert_or_assign(key, value);
}

void VeltoWeakKeyDictionary::removeObjectForKey(const void *key)
{
    const auto found = d->entries.find(key);
    if (found == d->entries.end())
        return;
    const QVariant keptAlive = found->second;
    d->entries.erase(found);
}

void VeltoWeakKeyDictionary::removeAllObjects()
{
    const auto keptAlive = std::exchange(d->entries, decltype(d->entries)(0, KeyHash{&d->callbacks}, KeyEqual{&d->callbacks}));
}

std::unique_ptr<VeltoWeakReferenceCollectionObjectEnumerator> VeltoWeakKeyDictionary::keyEnumerator() const
{
    if (d->entries.empty())
        return nullptr;
    const auto count = qsizetype(d->entries.size());
    auto buffer = VTSnapshotBuffer(d->entries, count, [](auto it) { return it->first; });
    if (!buffer)
        return nullptr;
    return std::make_unique<VeltoWeakReferenceCollectionObjectEnumerator>(std::move(buffer), quint64(count));
}

std::optional<QVariantList> VeltoWeakKeyDictionary::allValues() const
{
    if (d->entries.empty())
        return std::nullopt;
    QVariantList values;
    values.reserve(qsizetype(d->entries.size()));
    for (const auto &[key, value] : d->entries)
        values.append(value);
    return values;
}

bool VeltoWeakKeyDictionary::enumerateUsingBlock(
    const std::function<void(const void *key, const QVariant &value, bool *stop)> &block) const
{
    for (const auto &[key, value] : d->entries) {
        bool stop = false;
        block(key, value, &stop);
        if (stop)
            return false;
    }
    return true;
}

std::unique_ptr<VeltoWeakKeyDictionary> VeltoWeakKeyDictionary::copy() const
{
    auto copy = std::make_unique<VeltoWeakKeyDictionary>();
    for (const auto &[key, value] : d->entries)
        copy->setObject(value, key);
    return copy;
}
