// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoStringReplacer.h"

#include "String+VeltoSearching.h"
#include "VeltoException.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr VeltoRange NoRange{VeltoNotFound, 0};

// The largest buffer a QString can hold, in units, with room left for its header and terminator.
constexpr quint64 MaximumBufferUnits = quint64(std::numeric_limits<qsizetype>::max() / 2) - 64;

void checkRange(VeltoRange range, qsizetype length, const char *operation)
{
    if (velto::isRangeInsideVelto(range, quint64(length)))
        return;
    throw VeltoException(VeltoRangeException,
                         u"VeltoStringReplacer::%1: range {%2, %3} out of bounds; string length %4"_s
                             .arg(QLatin1StringView(operation))
                             .arg(range.location)
                             .arg(range.length)
                             .arg(length));
}

// A block's match must lie between the search location and the end of the string; anything else would
// make a pass edit or copy outside the string. An empty match that deletes nothing at the search location
// would be found again forever.
void checkMatch(VeltoRange match, quint64 searchLocation, qsizetype stringLength, const QString &replacement)
{
    if (match.location < searchLocation || !velto::isRangeInsideVelto(match, quint64(stringLength))) {
        throw VeltoException(VeltoRangeException,
                             u"VeltoStringReplacer: match block returned {%1, %2}, outside the string (length %3) "
                             u"or before the search location %4"_s.arg(match.location)
                                 .arg(match.length)
                                 .arg(stringLength)
                                 .arg(searchLocation));
    }
    if (match.length == 0 && match.location == searchLocation && replacement.isEmpty()) {
        throw VeltoException(VeltoInvalidArgumentException,
                             u"VeltoStringReplacer: match block returned an empty match with an empty replacement "
                             u"at the search location %1; the pass would never advance"_s.arg(searchLocation));
    }
}

template <typename Block>
quint64 replaceInPlace(QString &string, VeltoRange range, Block &block)
{
    quint64 end = range.end();
    if (end <= range.location)
        return 0;
    quint64 searchLocation = range.location;
    qint64 lengthChange = 0;
    quint64 count = 0;
    QString replacement;
    while (end > searchLocation) {
        replacement = QString();
        const VeltoRange match = block(std::as_const(string), VeltoRange{searchLocation, end - searchLocation},
                                       lengthChange, &replacement);
        if (match.location == VeltoNotFound)
            break;
        checkMatch(match, searchLocation, string.size(), replacement);
        string.replace(qsizetype(match.location), qsizetype(match.length), replacement);
        ++count;
        const qint64 delta = qint64(replacement.size()) - qint64(match.length);
        // Resume after the inserted text, so a replacement holding the target is not matched again.
        searchLocation = match.location + quint64(replacement.size());
        // A match running past the range's end (a CR LF pair) can leave the end before the search location.
        end = qint64(end) + delta > qint64(searchLocation) ? quint64(qint64(end) + delta) : searchLocation;
        lengthChange += delta;
    }
    return count;
}

// Capacity for the next stretch of output: room for what is needed now plus the rest of the source, and,
// once matches have been seen, the growth so far projected over the rest. The ratio deliberately uses the
// capacity rather than the output length. 0 means "more than a QString can hold".
quint64 grownCapacity(quint64 capacity, quint64 needed, quint64 replacementLength, quint64 segment,
                      quint64 copyEnd, quint64 sourceLength, quint64 previousMatchLocation)
{
    quint64 estimate = capacity + 2 * replacementLength + segment + (sourceLength - copyEnd);
    if (capacity != previousMatchLocation && copyEnd != 0) {
        const double projected = (double(capacity) - double(previousMatchLocation)) / double(copyEnd)
                                 * double(sourceLength - copyEnd) * 1.1;
        if (!(projected < double(MaximumBufferUnits)))
            return 0;
        estimate += quint64(projected);
    }
    const quint64 grown = std::max(needed, estimate);
    return grown <= MaximumBufferUnits ? grown : 0;
}

template <typename Block>
QString replaceBuffered(Block &block, const QString &source, VeltoRange range, quint64 *matchCount)
{
    const quint64 sourceLength = quint64(source.size());
    const quint64 end = range.end();
    const char16_t *input = QStringView(source).utf16();
    quint64 searchLocation = range.location;
    quint64 copyStart = 0;
    quint64 outputLength = 0;
    quint64 capacity = 0;
    quint64 count = 0;
    quint64 previousMatchLocation = 0;
    qint64 lengthChange = 0;
    // The buffer is the result: sized to its whole capacity while it is written through a raw pointer,
    // cut to the output length at the end.
    QString buffer;
    char16_t *output = nullptr;
    QString replacement;
    for (;;) {
        replacement = QString();
        // A match running past the range's end (a CR LF pair) leaves an empty search range, not a wrapped one.
        const VeltoRange searchRange{searchLocation, end > searchLocation ? end - searchLocation : 0};
        const VeltoRange match = block(source, searchRange, lengthChange, &replacement);
        const bool found = match.location != VeltoNotFound;
        if (found)
            checkMatch(match, searchLocation, source.size(), replacement);
        const quint64 copyEnd = found ? match.location : sourceLength;
        const quint64 segment = copyEnd - copyStart;
        const quint64 replacementLength = quint64(replacement.size());
        const quint64 needed = outputLength + segment + replacementLength;
        if (needed > capacity) {
            const quint64 grown = grownCapacity(capacity, needed, replacementLength, segment, copyEnd, sourceLength,
                                                previousMatchLocation);
            if (grown == 0)
                return QString();
            try {
                // Cut to what is written first, so that growing moves only the output.
                buffer.resize(qsizetype(outputLength));
                buffer.reserve(qsizetype(grown));
                buffer.resize(qsizetype(grown));
            } catch (const std::bad_alloc &) {
                return QString();
            }
            capacity = grown;
            output = reinterpret_cast<char16_t *>(buffer.data());
        }
        if (segment != 0)
            std::memcpy(output + outputLength, input + copyStart, segment * sizeof(char16_t));
        outputLength += segment;
        if (!found) {
            if (matchCount)
                *matchCount = count;
            if (buffer.isNull())
                return u""_s;  // nothing was ever written (an empty source); null would mean "out of memory"
            buffer.resize(qsizetype(outputLength));
            return buffer;
        }
        if (replacementLength != 0)
            std::memcpy(output + outputLength, QStringView(replacement).utf16(), replacementLength * sizeof(char16_t));
        outputLength += replacementLength;
        lengthChange += qint64(replacementLength) - qint64(match.length);
        ++count;
        previousMatchLocation = match.location;
        copyStart = searchLocation = match.end();
    }
}

// The in-place pass for blocks that only search: they find the same matches in the unedited string as in
// the edited one, so the matches are written into a new buffer in one linear pass, which then becomes the
// caller's string. Editing as we go would shift the rest of the string once per match. If the buffer
// cannot be had, the string is edited as we go after all.
template <typename Block>
quint64 rebuildInPlace(QString &string, VeltoRange range, Block &block)
{
    quint64 count = 0;
    QString rebuilt = replaceBuffered(block, string, range, &count);
    if (rebuilt.isNull())
        return replaceInPlace(string, range, block);
    string = std::move(rebuilt);
    return count;
}

// The built-in blocks say so: they only search, so both passes see the same matches.
template <typename Block>
concept SearchingBlock = std::remove_cvref_t<Block>::OnlySearches;

// An empty MatchBlock matches nothing.
const VeltoStringReplacer::MatchBlock &orNothing(const VeltoStringReplacer::MatchBlock &block)
{
    static const VeltoStringReplacer::MatchBlock nothing = [](const QString &, VeltoRange, qint64, QString *) {
        return NoRange;
    };
    return block ? block : nothing;
}

// The built-in blocks. Each captures by reference, so a std::function holding one stores it inline.

struct StringMatch
{
    static constexpr bool OnlySearches = true;
    const QString &target;
    VeltoStringCompareOptions options;
    const QString &replacement;

    VeltoRange operator()(const QString &string, VeltoRange searchRange, qint64, QString *slot) const
    {
        const VeltoRange found = velto::rangeOfStringVelto(string, target, options, searchRange);
        if (found.location != VeltoNotFound)
            *slot = replacement;
        return found;
    }
};

struct SetMatch
{
    static constexpr bool OnlySearches = true;
    const VeltoCharacterSet &set;
    bool coalesced;
    const QString &replacement;

    VeltoRange operator()(const QString &string, VeltoRange searchRange, qint64, QString *slot) const
    {
        VeltoRange found = velto::rangeOfCharacterFromSetVelto(string, set, {}, searchRange);
        if (found.location == VeltoNotFound)
            return found;
        if (coalesced) {
            const char16_t *units = QStringView(string).utf16();
            const quint64 end = searchRange.end();
            while (found.end() < end && set.contains(units[found.end()]))
                ++found.length;
        }
        *slot = replacement;
        return found;
    }
};

struct LineEndingMatch
{
    static constexpr bool OnlySearches = true;
    const QString &replacement;

    VeltoRange operator()(const QString &string, VeltoRange searchRange, qint64, QString *slot) const
    {
        static const VeltoCharacterSet endings = VeltoCharacterSet::characterSetWithCharactersInString(u"\n\r");
        const char16_t *units = QStringView(string).utf16();
        const quint64 length = quint64(string.size());
        const quint64 end = searchRange.end();
        // A one-unit replacement equal to a lone ending would change nothing: step over such endings.
        const bool skipSame = replacement.size() == 1;
        quint64 location = searchRange.location;
        while (location < end) {
            VeltoRange found = velto::rangeOfCharacterFromSetVelto(string, endings, VeltoStringCompareOption::Literal,
                                                                  {location, end - location});
            if (found.location == VeltoNotFound)
                return found;
            if (units[found.location] == u'\r' && found.location + 1 < length && units[found.location + 1] == u'\n')
                found.length = 2;
            if (skipSame && found.length == 1 && units[found.location] == replacement.at(0).unicode()) {
                location = found.end();
                continue;
            }
            *slot = replacement;
            return found;
        }
        return NoRange;
    }
};

} // namespace

VeltoStringReplacer::VeltoStringReplacer(const QString &string)
    : m_ownedOriginal(string), m_original(&m_ownedOriginal)
{
}

VeltoStringReplacer::VeltoStringReplacer(QString *string)
    : m_original(string ? string : &m_ownedOriginal), m_working(string)
{
}

VeltoStringReplacer::~VeltoStringReplacer() = default;

std::unique_ptr<VeltoStringReplacer> VeltoStringReplacer::replacerWithString(const QString &string)
{
    return std::make_unique<VeltoStringReplacer>(string);
}

QString VeltoStringReplacer::filterString(const QString &string,
                                          const std::function<void(VeltoStringReplacer &replacer)> &filter)
{
    VeltoStringReplacer replacer(string);
    if (filter)
        filter(replacer);
    return replacer.finalizedString();
}

const QString &VeltoStringReplacer::originalString() const
{
    return *m_original;
}

const QString &VeltoStringReplacer::currentString() const
{
    return m_working ? *m_working : *m_original;
}

VeltoRange VeltoStringReplacer::currentStringRange() const
{
    return {0, quint64(currentString().size())};
}

QString VeltoStringReplacer::finalizedString() const
{
    return currentString();
}

bool VeltoStringReplacer::isMutated() const
{
    return m_working != nullptr;
}

QString &VeltoStringReplacer::mutableString()
{
    if (!m_working) {
        m_ownedWorking = *m_original;
        m_working = &m_ownedWorking;
    }
    return *m_working;
}

void VeltoStringReplacer::accessMutableString(const std::function<void(QString &string)> &access)
{
    if (access)
        access(mutableString());
}

template <typename Block>
quint64 VeltoStringReplacer::replaceAllWith(VeltoRange range, Block &block, const char *operation)
{
    const QString &current = currentString();
    checkRange(range, current.size(), operation);
    // The probe: when nothing matches, nothing is copied and the replacer stays as it was.
    QString probeSlot;
    if (block(current, range, 0, &probeSlot).location == VeltoNotFound)
        return 0;
    if (quint64(current.size()) <= BufferedPassThreshold) {
        if constexpr (SearchingBlock<Block>)
            return rebuildInPlace(mutableString(), range, block);
        else
            return replaceInPlace(mutableString(), range, block);
    }
    quint64 count = 0;
    QString rebuilt = replaceBuffered(block, current, range, &count);
    if (rebuilt.isNull()) {
        // Out of memory: fall back to the original string, dropping earlier edits.
        m_working = nullptr;
        m_ownedWorking = QString();
        return 0;
    }
    m_ownedWorking = std::move(rebuilt);
    m_working = &m_ownedWorking;
    return count;
}

quint64 VeltoStringReplacer::replaceAllUsing(const MatchBlock &block)
{
    return replaceAllWith(currentStringRange(), orNothing(block), "replaceAllUsing");
}

quint64 VeltoStringReplacer::replaceAllInRange(VeltoRange range, const MatchBlock &block)
{
    return replaceAllWith(range, orNothing(block), "replaceAllInRange");
}

quint64 VeltoStringReplacer::replaceAllInString(QString &string, VeltoRange range, const MatchBlock &block)
{
    if (range.length == 0)
        return 0;
    checkRange(range, string.size(), "replaceAllInString");
    return replaceInPlace(string, range, orNothing(block));
}

QString VeltoStringReplacer::newStringByReplacingAllBuffered(const MatchBlock &block, const QString &string,
                                                             VeltoRange range, quint64 *matchCount)
{
    checkRange(range, string.size(), "newStringByReplacingAllBuffered");
    return replaceBuffered(orNothing(block), string, range, matchCount);
}

quint64 VeltoStringReplacer::replaceAllOccurrencesOfString(const QString &target, const QString &replacement)
{
    return replaceAllOccurrencesOfString(target, {}, currentStringRange(), replacement);
}

quint64 VeltoStringReplacer::replaceAllOccurrencesOfString(const QString &target, VeltoRange range,
                                                           const QString &replacement)
{
    return replaceAllOccurrencesOfString(target, {}, range, replacement);
}

quint64 VeltoStringReplacer::replaceAllOccurrencesOfString(const QString &target, VeltoStringCompareOptions options,
                                                           VeltoRange range, const QString &replacement)
{
    StringMatch block{target, options, replacement};
    return replaceAllWith(range, block, "replaceAllOccurrencesOfString");
}

quint64 VeltoStringReplacer::replaceAllCharactersInSet(const VeltoCharacterSet &set, const QString &replacement)
{
    return replaceAllCharactersInSet(set, false, currentStringRange(), replacement);
}

quint64 VeltoStringReplacer::replaceAllCharactersInSet(const VeltoCharacterSet &set, VeltoRange range,
                                                       const QString &replacement)
{
    return replaceAllCharactersInSet(set, false, range, replacement);
}

quint64 VeltoStringReplacer::replaceAllCharactersInSet(const VeltoCharacterSet &set, bool coalesced, VeltoRange range,
                                                       const QString &replacement)
{
    SetMatch block{set, coalesced, replacement};
    return replaceAllWith(range, block, "replaceAllCharactersInSet");
}

quint64 VeltoStringReplacer::replaceAllLineEndingsWithString(const QString &replacement)
{
    LineEndingMatch block{replacement};
    return replaceAllWith(currentStringRange(), block, "replaceAllLineEndingsWithString");
}
