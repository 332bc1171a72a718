// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoWeakObjectSet.h"

#include "VTInvocation_p.h"
#include "VTSnapshot_p.h"
#include "VeltoException.h"

#include <QDebug>
#include <unordered_set>

using namespace Qt::StringLiterals;

class VeltoWeakObjectSet::Private
{
public:
    void requireMutable(const char *operation) const
    {
        if (immutable)
            throw VeltoException(VeltoInternalInconsistencyException,
                                 u"VeltoWeakObjectSet::%1: mutating method sent to immutable object"_s
                                     .arg(QLatin1StringView(operation)));
    }

    // Iteration walks the members only (a QSet walks every bucket), which keeps snapshots of small sets cheap.
    std::unordered_set<QObject *> members;
    bool immutable = false;
};

VeltoWeakObjectSet::VeltoWeakObjectSet() : d(std::make_unique<Private>()) {}
VeltoWeakObjectSet::~VeltoWeakObjectSet() = default;

quint64 VeltoWeakObjectSet::count() const
{
    return quint64(d->members.size());
}

bool VeltoWeakObjectSet::containsObject(const QObject *object) const
{
    return d->members.count(const_cast<QObject *>(object)) != 0;
}

QObject *VeltoWeakObjectSet::member(const QObject *object) const
{
    return containsObject(object) ? const_cast<QObject *>(object) : nullptr;
}

void VeltoWeakObjectSet::addObject(QObject *object)
{
    d->requireMutable("addObject");
    if (object)
        d->members.insert(object);
}

void VeltoWeakObjectSet::removeObject(const QObject *object)
{
    d->requireMutable("removeObject");
    d->members.erase(const_cast<QObject *>(object));
}

void VeltoWeakObjectSet::removeAllObjects()
{
    d->requireMutable("removeAllObjects");
    d->members.clear();
}

QObject *VeltoWeakObjectSet::anyObject() const
{
    return d->members.empty() ? nullptr : *d->members.begin();
}

std::unique_ptr<VeltoWeakReferenceCollectionObjectEnumerator> VeltoWeakObjectSet::objectEnumerator() const
{
    const auto count = qsizetype(d->members.size());
    auto buffer = VTSnapshotBuffer(d->members, count, [](auto it) { return *it; });
    if (!buffer)
        return nullptr;
    return std::make_unique<VeltoWeakReferenceCollectionObjectEnumerator>(std::move(buffer), quint64(count));
}

QList<QObject *> VeltoWeakObjectSet::allObjects() const
{
    return QList<QObject *>(d->members.begin(), d->members.end());
}

QList<QObject *> VeltoWeakObjectSet::copyAllObjects() const
{
    return allObjects();
}

qsizetype VeltoWeakObjectSet::copyObjectsInto(QObject **buffer, qsizetype capacity) const
{
    qsizetype written = 0;
    for (auto it = d->members.begin(); it != d->members.end() && written < capacity; ++it)
        buffer[written++] = *it;
    return written;
}

void VeltoWeakObjectSet::makeObjectsPerformSelector(const char *selector, const QVariant &argument) const
{
    VTInvocation invocation(selector, {&argument});
    for (QObject *member : std::as_const(d->members)) {
        if (invocation.bindToClassOf(member))
            invocation.invoke(member);
    }
}

std::unique_ptr<VeltoWeakObjectSet> VeltoWeakObjectSet::copy() const
{
    auto copy = mutableCopy();
    copy->d->immutable = true;
    return copy;
}

std::unique_ptr<VeltoWeakObjectSet> VeltoWeakObjectSet::mutableCopy() const
{
    auto copy = std::make_unique<VeltoWeakObjectSet>();
    copy->d->members = d->members;
    return copy;
}

QString VeltoWeakObjectSet::description() const
{
    QString text = u"VeltoWeakObjectSet<0x%1> { \n"_s.arg(quintptr(this), 0, 16);
    for (QObject *member : std::as_const(d->members)) {
        QString shown;
        QDebug(&shown).nospace() << member;
        text += u"\t%1, \n"_s.arg(shown);
    }
    return text + u"}"_s;
}
