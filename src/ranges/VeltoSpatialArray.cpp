// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSpatialArray.h"

#include "VTChunkedSequence_p.h"
#include "VTIdentityMap_p.h"
#include "VeltoBinarySearch.h"

#include <QVarLengthArray>

#include <functional>
#include <vector>

namespace {

struct VTSpatialEntry;

// A start or end coordinate of an entry, with the entries that strictly surround it.
struct VTSpatialPoint
{
    VTSpatialEntry *entry = nullptr;
    bool isStart = false;
    double location = 0;
    // In entry order. Most points lie inside no entry or one, so the list rarely allocates.
    QVarLengthArray<VTSpatialEntry *, 2> overlappingEntries;
};

// An entry owns its two points, so an entry's points live exactly as long as the entry.
struct VTSpatialEntry : VeltoSpatialEntry
{
    VTSpatialPoint start;
    VTSpatialPoint end;
};

template <typename T>
qint64 threeWay(const T &a, const T &b)
{
    return a < b ? -1 : (b < a ? 1 : 0);
}

qint64 compareAddresses(const void *a, const void *b)
{
    const std::less<const void *> less;
    return less(a, b) ? -1 : (less(b, a) ? 1 : 0);
}

// Entry order: by start, then by end, then by the object's address.
qint64 compareEntry(const VTSpatialEntry *a, const VTSpatialEntry *b)
{
    if (const qint64 byStart = threeWay(a->edge.location, b->edge.location))
        return byStart;
    if (const qint64 byEnd = threeWay(a->edge.end(), b->edge.end()))
        return byEnd;
    return compareAddresses(a->object.get(), b->object.get());
}

// Point order: by location; at one location an entry of length 0 puts its start first, and otherwise an
// end comes before a start (an entry ending at x before one starting at x); then by the entry's address.
qint64 comparePoint(const VTSpatialPoint &a, const VTSpatialPoint &b)
{
    if (const qint64 byLocation = threeWay(a.location, b.location))
        return byLocation;
    if (a.isStart != b.isStart) {
        if (a.entry == b.entry)
            return a.isStart ? -1 : 1;
        return a.isStart ? 1 : -1;
    }
    return compareAddresses(a.entry, b.entry);
}

template <typename Entries>
void insertSortedEntry(Entries &entries, VTSpatialEntry *entry)
{
    quint64 insertion = 0;
    const quint64 found = VeltoIndexOfBinarySearch(quint64(entries.size()), &insertion, [&](quint64 i) {
        return compareEntry(entry, entries.at(qsizetype(i)));
    });
    entries.insert(qsizetype(found != VeltoNotFound ? found : insertion), entry);
}

bool strictlyInside(const VTSpatialEntry *entry, double location)
{
    return entry->edge.location < location && location < entry->edge.end();
}

// A point in the sorted sequence, with its location beside it so that searches read no point.
struct VTPointSlot
{
    double location;
    VTSpatialPoint *point;
};

// The points in point order, in chunks: inserting in random order moves one chunk, not half the points.
using VTSortedPoints = VTChunkedSequence<VTPointSlot>;
using VTPointPosition = VTSortedPoints::Position;

} // namespace

class VeltoSpatialArray::Private
{
public:
    VTSortedPoints sortedPoints; // points of the entries below, in point order
    VTIdentityMap<VTSpatialEntry> entryMap; // the entries themselves: their points refer to them

    const VTSpatialPoint &pointAt(VTPointPosition k) const { return *sortedPoints.at(k).point; }

    // The first point whose location is not below \a location, or the end.
    VTPointPosition firstPointWithLocationGreaterOrEqualTo(double location) const
    {
        return sortedPoints.lowerBound([location](const VTPointSlot &slot) { return slot.location < location; });
    }

    // Calls block(entry, stop) for the entries of point k's list, then for the entries starting at the
    // points of k's location from k backwards. False when the block stopped it.
    template <typename Block>
    bool enumerateEntriesOverlappingPoint(VTPointPosition k, Block &&block) const
    {
        bool stop = false;
        const VTSpatialPoint &point = pointAt(k);
        for (VTSpatialEntry *entry : point.overlappingEntries) {
            block(entry, &stop);
            if (stop)
                return false;
        }
        for (VTPointPosition i = k; pointAt(i).location == point.location; i = sortedPoints.previous(i)) {
            if (pointAt(i).isStart) {
                block(pointAt(i).entry, &stop);
                if (stop)
                    return false;
            }
            if (!sortedPoints.hasPrevious(i))
                break;
        }
        return true;
    }

    VTPointPosition insertSortedPoint(VTSpatialEntry *entry, bool isStart)
    {
        VTSpatialPoint *point = isStart ? &entry->start : &entry->end;
        point->entry = entry;
        point->isStart = isStart;
        point->location = isStart ? entry->edge.location : entry->edge.end();
        point->overlappingEntries.clear();
        // In front of the first point that does not sort before it (point order has no ties).
        const VTPointPosition at = sortedPoints.lowerBound([point](const VTPointSlot &slot) {
            if (const qint64 byLocation = threeWay(slot.location, point->location))
                return byLocation < 0;
            return comparePoint(*slot.point, *point) < 0;
        });
        const VTPointPosition inserted = sortedPoints.insert(at, {point->location, point});
        if (sortedPoints.hasPrevious(inserted)) {
            enumerateEntriesOverlappingPoint(sortedPoints.previous(inserted), [point](VTSpatialEntry *other, bool *) {
                if (strictlyInside(other, point->location))
                    insertSortedEntry(point->overlappingEntries, other);
            });
        }
        return inserted;
    }

    void addSortedEntry(VTSpatialEntry *entry)
    {
        // The walk stops at the first point not strictly inside, even one at the entry's own start.
        for (VTPointPosition k = sortedPoints.next(insertSortedPoint(entry, true));
             !sortedPoints.isEnd(k) && strictlyInside(entry, sortedPoints.at(k).location); k = sortedPoints.next(k))
            insertSortedEntry(sortedPoints.at(k).point->overlappingEntries, entry);
        insertSortedPoint(entry, false);
    }

    void removeExistingSortedEntry(VTSpatialEntry *entry)
    {
        int removed = 0;
        for (VTPointPosition k = firstPointWithLocationGreaterOrEqualTo(entry->edge.location); !sortedPoints.isEnd(k);) {
            VTSpatialPoint *point = sortedPoints.at(k).point;
            if (point->entry == entry) {
                k = sortedPoints.erase(k);
                if (++removed == 2)
                    break;
                continue;
            }
            if (point->location > entry->edge.location)
                point->overlappingEntries.removeOne(entry);
            k = sortedPoints.next(k);
        }
    }

    // Calls block(slot) for every point from \a k on while it answers true.
    template <typename Block>
    void walkForward(VTPointPosition k, Block &&block) const
    {
        for (; !sortedPoints.isEnd(k) && block(sortedPoints.at(k)); k = sortedPoints.next(k)) {
        }
    }
};

VeltoSpatialArray::VeltoSpatialArray() : d(std::make_unique<Private>())
{
}

VeltoSpatialArray::~VeltoSpatialArray() = default;

void VeltoSpatialArray::addObject(std::shared_ptr<void> object, VeltoSpatialEdge edge)
{
    if (!object)
        return;
    const auto [entry, isNew] = d->entryMap.findOrInsert(object.get());
    if (!isNew)
        return;
    entry.object = std::move(object);
    entry.edge = edge;
    d->addSortedEntry(&entry);
}

void VeltoSpatialArray::setEdge(VeltoSpatialEdge edge, std::shared_ptr<void> object)
{
    VTSpatialEntry *entry = d->entryMap.find(object.get());
    if (!entry) {
        addObject(std::move(object), edge);
        return;
    }
    if (entry->edge == edge)
        return;
    d->removeExistingSortedEntry(entry);
    entry->edge = edge;
    d->addSortedEntry(entry);
}

void VeltoSpatialArray::removeObject(const void *object)
{
    VTSpatialEntry *entry = d->entryMap.find(object);
    if (!entry)
        return;
    d->removeExistingSortedEntry(entry);
    // The object goes last, with the array whole again: releasing it may run code that uses the array.
    const std::shared_ptr<void> released = std::move(entry->object);
    d->entryMap.remove(object);
}

void VeltoSpatialArray::removeAllObjects()
{
    d->sortedPoints.clear();
    d->entryMap.clear();
}

quint64 VeltoSpatialArray::count() const
{
    return d->entryMap.count();
}

VeltoSpatialEdge VeltoSpatialArray::spatialBounds() const
{
    if (d->sortedPoints.isEmpty())
        return {0, 0};
    const double first = d->sortedPoints.front().location;
    return {first, d->sortedPoints.back().location - first};
}

const VeltoSpatialEntry *VeltoSpatialArray::entryForObject(const void *object) const
{
    return d->entryMap.find(object);
}

bool VeltoSpatialArray::containsObject(const void *object) const
{
    return entryForObject(object) != nullptr;
}

VeltoSpatialEdge VeltoSpatialArray::edgeForObject(const void *object) const
{
    const VeltoSpatialEntry *entry = entryForObject(object);
    return entry ? entry->edge : VeltoSpatialEdge{0, 0};
}

void VeltoSpatialArray::enumerateObjects(const ObjectBlock &block) const
{
    bool stop = false;
    d->walkForward(d->sortedPoints.begin(), [&](const VTPointSlot &slot) {
        if (slot.point->isStart)
            block(slot.point->entry->object, slot.point->entry->edge, &stop);
        return !stop;
    });
}

void VeltoSpatialArray::enumerateObjectsInEdge(VeltoSpatialEdge edge, const ObjectBlock &block) const
{
    const VTSortedPoints &points = d->sortedPoints;
    if (points.isEmpty())
        return;
    const VTPointPosition first = d->firstPointWithLocationGreaterOrEqualTo(edge.location);
    if (points.hasPrevious(first)) {
        // Entries that begin before the query: those around the last point below it that reach it.
        const bool finished = d->enumerateEntriesOverlappingPoint(points.previous(first), [&](VTSpatialEntry *entry, bool *stop) {
            if (entry->edge.end() >= edge.location)
                block(entry->object, entry->edge, stop);
        });
        if (points.isEnd(first) || !finished)
            return;
    }
    bool stop = false;
    const double end = edge.end();
    d->walkForward(first, [&](const VTPointSlot &slot) {
        if (slot.location > end)
            return false;
        if (slot.point->isStart)
            block(slot.point->entry->object, slot.point->entry->edge, &stop);
        return !stop;
    });
}

QList<std::shared_ptr<void>> VeltoSpatialArray::objectsInEdge(VeltoSpatialEdge edge, const ObjectTest &test) const
{
    QList<std::shared_ptr<void>> objects;
    enumerateObjectsInEdge(edge, [&](const std::shared_ptr<void> &object, VeltoSpatialEdge objectEdge, bool *stop) {
        if (!test || test(object, objectEdge, stop))
            objects.append(object);
    });
    return objects;
}
