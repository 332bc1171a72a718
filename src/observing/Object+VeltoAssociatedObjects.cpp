// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Object+VeltoAssociatedObjects.h"

#include <QHash>

#include <utility>

namespace {

// The hidden child that holds an owner's attachments; its destruction (with the owner) ends them.
class VTAssociations : public QObject
{
public:
    struct Entry
    {
        QObject *object = nullptr;
        bool owned = false;
    };

    explicit VTAssociations(QObject *owner) : QObject(owner) {}
    ~VTAssociations() override
    {
        // Detach first, so that an owned object's destructor that looks its owner up finds nothing half-gone.
        const auto entries = std::exchange(attachments, {});
        for (const Entry &entry : entries) {
            if (entry.owned)
                delete entry.object;
        }
    }

    static VTAssociations *of(const QObject *owner)
    {
        for (QObject *child : owner->children()) {
            if (auto *associations = dynamic_cast<VTAssociations *>(child))
                return associations;
        }
        return nullptr;
    }

    void set(const void *key, Entry entry)
    {
        const Entry previous = attachments.value(key);
        if (entry.object)
            attachments.insert(key, entry);
        else
            attachments.remove(key);
        if (previous.owned && previous.object != entry.object)
            delete previous.object;
    }

    QHash<const void *, Entry> attachments;
};

void attach(QObject *owner, const void *key, QObject *object, bool owned)
{
    if (!owner)
        return;
    VTAssociations *associations = VTAssociations::of(owner);
    if (!associations) {
        if (!object)
            return;
        associations = new VTAssociations(owner);
    }
    associations->set(key, {object, owned});
}

} // namespace

namespace velto {

QObject *associatedObjectForKey(const QObject *owner, const void *key)
{
    const VTAssociations *associations = owner ? VTAssociations::of(owner) : nullptr;
    return associations ? associations->attachments.value(key).object : nullptr;
}

void setAssociatedObject(QObject *owner, const void *key, QObject *object)
{
    attach(owner, key, object, true);
}

void setAssociatedObjectWeakly(QObject *owner, const void *key, QObject *object)
{
    attach(owner, key, object, false);
}

} // namespace velto
