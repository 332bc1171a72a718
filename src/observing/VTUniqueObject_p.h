// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// VTUniqueObject: a marker whose identity is its value. Copies are the same marker (equal, same hash);
// two markers made separately are never equal, so one can serve as a key that only itself finds,
// also after being copied into a hash as its key.

#include <QHashFunctions>

#include <memory>

class VTUniqueObject
{
public:
    VTUniqueObject() : m_identity(std::make_shared<const char>('\0')) {}

    friend bool operator==(const VTUniqueObject &a, const VTUniqueObject &b) { return a.m_identity == b.m_identity; }
    friend size_t qHash(const VTUniqueObject &object, size_t seed = 0) { return qHash(object.m_identity.get(), seed); }

    /// address: the identity this marker (and each of its copies) stands for.
    const void *address() const { return m_identity.get(); }

private:
    std::shared_ptr<const char> m_identity;
};
