// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSpatialArray.h
 * \brief VeltoSpatialArray: an index of objects by a one-dimensional extent (a VeltoSpatialEdge, such as
 * the vertical span of a laid-out item) that answers which objects meet a given extent without scanning
 * every object.
 *
 * All start and end coordinates are kept in one sorted sequence of points; each point lists the entries
 * that strictly surround it. A query costs one binary search, a look at one point's list and at the points
 * of equal location before it, and a walk over the points inside the query extent. The sequence is stored
 * in chunks of at most 256 points, so inserting or removing an entry costs two binary searches, moving
 * the rest of one chunk and the walk over the points inside its extent, in any order of insertion;
 * appending in order (layout order) is the cheapest.
 *
 * \code
 * VeltoSpatialArray lines;
 * lines.addObject(std::make_shared<Line>(), {0, 14});
 * lines.addObject(std::make_shared<Line>(), {14, 14});
 * for (const auto &line : lines.objectsInEdge({10, 2}))     // the first line only
 *     repaint(*std::static_pointer_cast<Line>(line));
 * \endcode
 *
 * The array keeps each object alive (a std::shared_ptr) until it is removed; objects are told apart by
 * their address. To index objects owned elsewhere, hand in a std::shared_ptr with a no-op deleter and
 * remove them before they go. No operation reports an error: unknown objects are ignored by removal,
 * lookups answer nothing or (0, 0).
 *
 * Kept behaviour: when an entry is inserted, the walk that records it on the points inside its extent
 * stops at the first point that is not strictly inside, and a point exactly at the entry's own start
 * (another entry beginning at the same coordinate, ordered after it) is not. Points further inside then
 * do not list the entry, and a query that begins there and relies on that list misses it. Inputs
 * whose coordinates are all distinct are not affected.
 *
 * Not thread-safe; do not change the array from inside one of its enumerations.
 */

#include "veltocore_export.h"

#include "VeltoSpatialEdge.h"

#include <QList>

#include <functional>
#include <memory>

/// \brief VeltoSpatialEntry: one indexed object and its edge, as the array holds them.
struct VeltoSpatialEntry
{
    std::shared_ptr<void> object;
    VeltoSpatialEdge edge;
};

/// \brief VeltoSpatialArray: an interval index over one axis.
class VELTOCORE_EXPORT VeltoSpatialArray
{
public:
    /// A block called with an object and its edge; setting *stop ends the enumeration after this call.
    using ObjectBlock = std::function<void(const std::shared_ptr<void> &object, VeltoSpatialEdge edge, bool *stop)>;
    /// A test of an object and its edge; setting *stop ends the enumeration after this call.
    using ObjectTest = std::function<bool(const std::shared_ptr<void> &object, VeltoSpatialEdge edge, bool *stop)>;

    VeltoSpatialArray();
    ~VeltoSpatialArray();
    VeltoSpatialArray(const VeltoSpatialArray &) = delete;
    VeltoSpatialArray &operator=(const VeltoSpatialArray &) = delete;

    /// addObject: indexes \a object by \a edge; an object already present (its edge stays) or a null one is ignored.
    void addObject(std::shared_ptr<void> object, VeltoSpatialEdge edge);
    /**
     * setEdge: moves \a object to \a edge; an unknown object is added, an identical edge (location and
     * length) changes nothing.
     */
    void setEdge(VeltoSpatialEdge edge, std::shared_ptr<void> object);
    /// removeObject: removes \a object and releases it; nothing for an unknown object.
    void removeObject(const void *object);
    /// removeAllObjects: removes and releases every object.
    void removeAllObjects();

    /// count: the number of objects.
    [[nodiscard]] quint64 count() const;
    /**
     * spatialBounds: the edge from the first point's location to the last point's (the lowest start to
     * the highest end); (0, 0) when empty.
     */
    [[nodiscard]] VeltoSpatialEdge spatialBounds() const;
    /// entryForObject: the entry of \a object, valid until it is changed or removed; nullptr when unknown.
    [[nodiscard]] const VeltoSpatialEntry *entryForObject(const void *object) const;
    [[nodiscard]] bool containsObject(const void *object) const;
    /// edgeForObject: the edge of \a object; (0, 0) when unknown.
    [[nodiscard]] VeltoSpatialEdge edgeForObject(const void *object) const;

    /// enumerateObjects: calls \a block for every object in the order of their starts.
    void enumerateObjects(const ObjectBlock &block) const;
    /**
     * enumerateObjectsInEdge: calls \a block for every object whose edge meets \a edge: it begins at or
     * before the query's end and ends at or after its start (an object ending exactly where the query
     * begins is reported, as is an object of length 0 at either end). Each object is reported once:
     * first those beginning before the query, then the others in the order of their starts.
     */
    void enumerateObjectsInEdge(VeltoSpatialEdge edge, const ObjectBlock &block) const;
    /**
     * objectsInEdge: the objects enumerateObjectsInEdge() reports for which \a test answers true; every
     * one of them without a test.
     */
    [[nodiscard]] QList<std::shared_ptr<void>> objectsInEdge(VeltoSpatialEdge edge, const ObjectTest &test = {}) const;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
