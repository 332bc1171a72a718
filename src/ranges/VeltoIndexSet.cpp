// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoIndexSet.h"

#include "VeltoAbstractRangeArray.h"
#include "VeltoException.h"

#include <algorithm>

using namespace Qt::StringLiterals;

class VeltoIndexSet::Private : public QSharedData
{
public:
    // Sorted, none empty, each ending before the next begins (touching runs are joined).
    QList<VeltoRange> runs;

    // The first run ending after index, or runs.size().
    qsizetype firstRunEndingAfter(quint64 index) const
    {
        return std::partition_point(runs.cbegin(), runs.cend(), [index](VeltoRange run) { return run.end() <= index; })
            - runs.cbegin();
    }
};

namespace {

// The part of \a range below VeltoNotFound, where no index can be.
VeltoRange clamped(VeltoRange range)
{
    const quint64 location = std::min(range.location, VeltoNotFound);
    return {location, std::min(range.length, VeltoNotFound - location)};
}

void checkAddable(VeltoRange range)
{
    if (range.location >= VeltoNotFound || range.length > VeltoNotFound - range.location) {
        throw VeltoException(VeltoRangeException,
                             u"VeltoIndexSet indexes must be below VeltoNotFound; %1 is not"_s.arg(range.end() - 1));
    }
}

} // namespace

VeltoIndexSet::VeltoIndexSet() : d(new Private)
{
}

VeltoIndexSet::VeltoIndexSet(quint64 index) : VeltoIndexSet(VeltoRange{index, 1})
{
}

VeltoIndexSet::VeltoIndexSet(VeltoRange indexes) : VeltoIndexSet()
{
    addIndexesInRange(indexes);
}

VeltoIndexSet::VeltoIndexSet(const VeltoIndexSet &other) = default;
VeltoIndexSet &VeltoIndexSet::operator=(const VeltoIndexSet &other) = default;
VeltoIndexSet::~VeltoIndexSet() = default;

VeltoIndexSet VeltoIndexSet::indexSetWithNumberArray(const QVariantList &numbers)
{
    VeltoIndexSet set;
    for (const QVariant &number : numbers) {
        bool ok = false;
        const quint64 index = number.toULongLong(&ok);
        if (!ok) {
            throw VeltoException(VeltoInvalidArgumentException,
                                 u"indexSetWithNumberArray: %1 is not an unsigned integer"_s.arg(number.toString()));
        }
        set.addIndex(index);
    }
    return set;
}

VeltoIndexSet VeltoIndexSet::indexSetWithRangeArray(const VeltoAbstractRangeArray &ranges)
{
    VeltoIndexSet set;
    ranges.accessRangeBufferUsing([&set](const VeltoRange *buffer, quint64 count) {
        for (quint64 i = 0; i < count; ++i)
            set.addIndexesInRange(buffer[i]);
    });
    return set;
}

quint64 VeltoIndexSet::count() const
{
    quint64 total = 0;
    for (const VeltoRange &run : d->runs)
        total += run.length;
    return total;
}

bool VeltoIndexSet::isEmpty() const
{
    return d->runs.isEmpty();
}

quint64 VeltoIndexSet::firstIndex() const
{
    return d->runs.isEmpty() ? VeltoNotFound : d->runs.constFirst().location;
}

quint64 VeltoIndexSet::lastIndex() const
{
    return d->runs.isEmpty() ? VeltoNotFound : d->runs.constLast().end() - 1;
}

quint64 VeltoIndexSet::indexGreaterThanIndex(quint64 index) const
{
    return index >= VeltoNotFound - 1 ? VeltoNotFound : indexGreaterThanOrEqualToIndex(index + 1);
}

quint64 VeltoIndexSet::indexGreaterThanOrEqualToIndex(quint64 index) const
{
    const qsizetype run = d->firstRunEndingAfter(index);
    return run == d->runs.size() ? VeltoNotFound : std::max(d->runs.at(run).location, index);
}

quint64 VeltoIndexSet::indexLessThanIndex(quint64 index) const
{
    return index == 0 ? VeltoNotFound : indexLessThanOrEqualToIndex(index - 1);
}

quint64 VeltoIndexSet::indexLessThanOrEqualToIndex(quint64 index) const
{
    const auto after = std::partition_point(d->runs.cbegin(), d->runs.cend(),
                                            [index](VeltoRange run) { return run.location <= index; });
    if (after == d->runs.cbegin())
        return VeltoNotFound;
    return std::min((after - 1)->end() - 1, index);
}

bool VeltoIndexSet::containsIndex(quint64 index) const
{
    return containsIndexesInRange({index, 1});
}

bool VeltoIndexSet::containsIndexesInRange(VeltoRange indexes) const
{
    if (indexes.length == 0 || indexes != clamped(indexes))
        return false;
    const qsizetype run = d->firstRunEndingAfter(indexes.location);
    return run < d->runs.size() && d->runs.at(run).location <= indexes.location && d->runs.at(run).end() >= indexes.end();
}

bool VeltoIndexSet::containsIndexes(const VeltoIndexSet &other) const
{
    return std::all_of(other.d->runs.cbegin(), other.d->runs.cend(),
                       [this](VeltoRange run) { return containsIndexesInRange(run); });
}

bool VeltoIndexSet::intersectsIndexesInRange(VeltoRange indexes) const
{
    return countOfIndexesInRange(indexes) != 0;
}

quint64 VeltoIndexSet::countOfIndexesInRange(VeltoRange indexes) const
{
    indexes = clamped(indexes);
    quint64 total = 0;
    for (qsizetype run = d->firstRunEndingAfter(indexes.location);
         run < d->runs.size() && d->runs.at(run).location < indexes.end(); ++run) {
        const VeltoRange r = d->runs.at(run);
        total += std::min(r.end(), indexes.end()) - std::max(r.location, indexes.location);
    }
    return total;
}

VeltoRange VeltoIndexSet::indexRangeStartingAtOrAfterIndex(quint64 index) const
{
    const qsizetype run = d->firstRunEndingAfter(index);
    if (run == d->runs.size())
        return {VeltoNotFound, 0};
    const VeltoRange r = d->runs.at(run);
    const quint64 start = std::max(r.location, index);
    return {start, r.end() - start};
}

QList<VeltoRange> VeltoIndexSet::ranges() const
{
    return d->runs;
}

QList<quint64> VeltoIndexSet::indexes() const
{
    QList<quint64> all;
    for (const VeltoRange &run : d->runs) {
        for (quint64 index = run.location; index < run.end(); ++index)
            all.append(index);
    }
    return all;
}

void VeltoIndexSet::addIndex(quint64 index)
{
    addIndexesInRange({index, 1});
}

void VeltoIndexSet::addIndexesInRange(VeltoRange indexes)
{
    if (indexes.length == 0)
        return;
    checkAddable(indexes);
    QList<VeltoRange> &runs = d->runs;
    // Runs that overlap or touch the new ones join them.
    const qsizetype first = std::partition_point(runs.cbegin(), runs.cend(),
                                                 [&](VeltoRange run) { return run.end() < indexes.location; })
        - runs.cbegin();
    qsizetype last = first;
    VeltoRange joined = indexes;
    for (; last < runs.size() && runs.at(last).location <= indexes.end(); ++last)
        joined = VeltoUnionRange(joined, runs.at(last));
    runs.remove(first, last - first);
    runs.insert(first, joined);
}

void VeltoIndexSet::addIndexes(const VeltoIndexSet &other)
{
    const QList<VeltoRange> runs = other.d->runs;
    for (const VeltoRange &run : runs)
        addIndexesInRange(run);
}

void VeltoIndexSet::removeIndex(quint64 index)
{
    removeIndexesInRange({index, 1});
}

void VeltoIndexSet::removeIndexesInRange(VeltoRange indexes)
{
    indexes = clamped(indexes);
    if (indexes.length == 0)
        return;
    const qsizetype first = d->firstRunEndingAfter(indexes.location);
    if (first == d->runs.size() || d->runs.at(first).location >= indexes.end())
        return;
    QList<VeltoRange> &runs = d->runs;
    QList<VeltoRange> kept;
    qsizetype last = first;
    for (; last < runs.size() && runs.at(last).location < indexes.end(); ++last) {
        const VeltoRange run = runs.at(last);
        if (run.location < indexes.location)
            kept.append({run.location, indexes.location - run.location});
        if (run.end() > indexes.end())
            kept.append({indexes.end(), run.end() - indexes.end()});
    }
    runs.remove(first, last - first);
    for (qsizetype i = 0; i < kept.size(); ++i)
        runs.insert(first + i, kept.at(i));
}

void VeltoIndexSet::removeIndexes(const VeltoIndexSet &other)
{
    const QList<VeltoRange> runs = other.d->runs;
    for (const VeltoRange &run : runs)
        removeIndexesInRange(run);
}

void VeltoIndexSet::removeAllIndexes()
{
    d->runs.clear();
}

void VeltoIndexSet::shiftIndexesStartingAtIndex(quint64 index, qint64 delta)
{
    if (delta == 0 || index >= VeltoNotFound)
        return;
    const VeltoRange tail{index, VeltoNotFound - index};
    QList<VeltoRange> moving;
    for (qsizetype run = d->firstRunEndingAfter(index); run < d->runs.size(); ++run) {
        const VeltoRange r = d->runs.at(run);
        const quint64 start = std::max(r.location, index);
        moving.append({start, r.end() - start});
    }
    if (delta > 0 && !moving.isEmpty())
        checkAddable({moving.constLast().location + quint64(delta), moving.constLast().length});
    removeIndexesInRange(tail);
    quint64 down = 0;
    if (delta < 0) {
        down = std::min(quint64(0) - quint64(delta), index);
        removeIndexesInRange({index - down, down});
    }
    for (const VeltoRange &run : std::as_const(moving))
        addIndexesInRange({delta > 0 ? run.location + quint64(delta) : run.location - down, run.length});
}

bool VeltoIndexSet::operator==(const VeltoIndexSet &other) const
{
    return d->runs == other.d->runs;
}

QString VeltoIndexSet::description() const
{
    QStringList runs;
    for (const VeltoRange &run : std::as_const(d->runs)) {
        runs.append(run.length == 1 ? QString::number(run.location)
                                    : u"%1-%2"_s.arg(run.location).arg(run.end() - 1));
    }
    return u"("_s + runs.join(u", "_s) + u")"_s;
}

std::optional<VeltoIndexSet> VeltoIndexesForBitFlags(quint64 flags)
{
    if (flags == 0)
        return std::nullopt;
    VeltoIndexSet positions;
    quint64 seen = 0;
    for (int position = 0; position < 64; ++position) {
        // The mask is a 32-bit int, widened with its sign: bit 31's mask covers bits 31 to 63.
        const quint64 mask = quint64(qint64(qint32(quint32(1) << (position % 32))));
        if ((mask & flags) == 0)
            continue;
        positions.addIndex(quint64(position));
        seen |= mask;
        if (seen == flags)
            break;
    }
    return positions;
}
