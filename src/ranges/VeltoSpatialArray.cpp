#include "VeltoSpatialArray.h"

#include "VTIdentityMap_p.h"
#include "VeltoBinarySearch.h"

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
    QList<VTSpatialEntry *> overlappingEntries; // in entry order
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

void insertSortedEntry(QList<VTSpatialEntry *> &entries, VTSpatialEntry *entry)
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

} // namespace

class VeltoSpatialArray::Private
{
public:
    std::vector<VTSpatialPoint *> sortedPoints; // points of the entries below, in point order
    VTIdentityMap<std::unique_ptr<VTSpatialEntry>> entryMap;

    quint64 firstIndexOfPointWithLocationGreaterOrEqualTo(double location) const
    {
        const quint64 n = sortedPoints.size();
        quint64 insertion = 0;
        const quint64 found = VeltoIndexOfBinarySearch(n, &insertion, [&](quint64 i) {
            return threeWay(location, sortedPoints[i]->location);
        });
        const quint64 index = found != VeltoNotFound ? found : insertion;
        return index < n ? index : VeltoNotFound;
    }

    // Calls block(entry, stop) for the entries of point k's list, then for the entries starting at the
    // points of k's location from k backwards. False when the block stopped it.
    template <typename Block>
    bool enumerateEntriesOverlappingPoint(quint64 k, Block &&block) const
    {
        bool stop = false;
        const VTSpatialPoint *point = sortedPoints[k];
        for (VTSpatialEntry *entry : point->overlappingEntries) {
            block(entry, &stop);
            if (stop)
                return false;
        }
        for (quint64 i = k + 1; i-- > 0 && sortedPoints[i]->location == point->location;) {
            if (!sortedPoints[i]->isStart)
                continue;
            block(sortedPoints[i]->entry, &stop);
            if (stop)
                return false;
        }
        return true;
    }

    quint64 insertSortedPoint(VTSpatialEntry *entry, bool isStart)
    {
        VTSpatialPoint *point = isStart ? &entry->start : &entry->end;
        point->entry = entry;
        point->isStart = isStart;
        point->location = isStart ? entry->edge.location : entry->edge.end();
        point->overlappingEntries.clear();
        quint64 insertion = 0;
        const quint64 found = VeltoIndexOfBinarySearch(sortedPoints.size(), &insertion, [&](quint64 i) {
            return comparePoint(*point, *sortedPoints[i]);
        });
        const quint64 index = found != VeltoNotFound ? found : insertion;
        sortedPoints.insert(sortedPoints.begin() + qptrdiff(index), point);
        if (index > 0) {
            enumerateEntriesOverlappingPoint(index - 1, [point](VTSpatialEntry *other, bool *) {
                if (strictlyInside(other, point->location))
                    insertSortedEntry(point->overlappingEntries, other);
            });
        }
        return index;
    }

    void addSortedEntry(VTSpatialEntry *entry)
    {
        const quint64 start = insertSortedPoint(entry, true);
        // The walk stops at the first point not strictly inside, even one at the entry's own start.
        for (quint64 k = start + 1; k < sortedPoints.size() && strictlyInside(entry, sortedPoints[k]->location); ++k)
            insertSortedEntry(sortedPoints[k]->overlappingEntries, entry);
        insertSortedPoint(entry, false);
    }

    void removeExistingSortedEntry(VTSpatialEntry *entry)
    {
        int removed = 0;
        for (quint64 k = firstIndexOfPointWithLocationGreaterOrEqualTo(entry->edge.location); k < sortedPoints.size();) {
            VTSpatialPoint *point = sortedPoints[k];
            if (point->entry == entry) {
                sortedPoints.erase(sortedPoints.begin() + qptrdiff(k));
                if (++removed == 2)
                    break;
                continue;
            }
            if (point->location > entry->edge.location)
                point->overlappingEntries.removeOne(entry);
            ++k;
        }
    }
};

VeltoSpatialArray::VeltoSpatialArray() : d(std::make_unique<Private>())
{
}

VeltoSpatialArray::~VeltoSpatialArray() = default;

void VeltoSpatialArray::addObject(std::shared_ptr<void> object, VeltoSpatialEdge edge)
{
    if (!object || d->entryMap.find(object.get()))
        return;
    auto entry = std::make_unique<VTSpatialEntry>();
    entry->object = std::move(object);
    entry->edge = edge;
    d->addSortedEntry(entry.get());
    const void *key = entry->object.get();
    d->entryMap.insert(key, std::move(entry));
}

void VeltoSpatialArray::setEdge(VeltoSpatialEdge edge, std::shared_ptr<void> object)
{
    const auto *found = d->entryMap.find(object.get());
    if (!found) {
        addObject(std::move(object), edge);
        return;
    }
    VTSpatialEntry *entry = found->get();
    if (entry->edge == edge)
        return;
    d->removeExistingSortedEntry(entry);
    entry->edge = edge;
    d->addSortedEntry(entry);
}

void VeltoSpatialArray::removeObject(const void *object)
{
    // Out of the map first; the entry (and with it the object) goes once its points are gone.
    const std::unique_ptr<VTSpatialEntry> entry = d->entryMap.take(object);
    if (entry)
        d->removeExistingSortedEntry(entry.get());
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
    if (d->sortedPoints.empty())
        return {0, 0};
    const double first = d->sortedPoints.front()->location;
    return {first, d->sortedPoints.back()->location - first};
}

const VeltoSpatialEntry *VeltoSpatialArray::entryForObject(const void *object) const
{
    const auto *found = d->entryMap.find(object);
    return found ? found->get() : nullptr;
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
    for (const VTSpatialPoint *point : d->sortedPoints) {
        if (!point->isStart)
            continue;
        block(point->entry->object, point->entry->edge, &stop);
        if (stop)
            return;
    }
}

void VeltoSpatialArray::enumerateObjectsInEdge(VeltoSpatialEdge edge, const ObjectBlock &block) const
{
    const std::vector<VTSpatialPoint *> &points = d->sortedPoints;
    if (points.empty())
        return;
    const quint64 first = d->firstIndexOfPointWithLocationGreaterOrEqualTo(edge.location);
    if (first != 0) {
        // Entries that begin before the query: those around the last point below it that reach it.
        const quint64 before = first == VeltoNotFound ? points.size() - 1 : first - 1;
        const bool finished = d->enumerateEntriesOverlappingPoint(before, [&](VTSpatialEntry *entry, bool *stop) {
            if (entry->edge.end() >= edge.location)
                block(entry->object, entry->edge, stop);
        });
        if (first == VeltoNotFound || !finished)
            return;
    }
    bool stop = false;
    const double end = edge.end();
    for (quint64 k = first; k < points.size() && points[k]->location <= end; ++k) {
        if (!points[k]->isStart)
            continue;
        block(points[k]->entry->object, points[k]->entry->edge, &stop);
        if (stop)
            return;
    }
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
