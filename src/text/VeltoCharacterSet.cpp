// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoCharacterSet.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <bit>
#include <memory>

namespace {

constexpr unsigned PlaneCount = 17;
constexpr unsigned WordsPerPlane = 0x10000 / 64;

struct Plane
{
    std::array<quint64, WordsPerPlane> words{};
};

// The two uniform planes are shared by every set and never written: a write always copies a plane
// that anything else holds (see writablePlane()).
const std::shared_ptr<Plane> &emptyPlane()
{
    static const std::shared_ptr<Plane> plane = std::make_shared<Plane>();
    return plane;
}

const std::shared_ptr<Plane> &fullPlane()
{
    static const std::shared_ptr<Plane> plane = [] {
        auto full = std::make_shared<Plane>();
        full->words.fill(~quint64(0));
        return full;
    }();
    return plane;
}

// Visits the inclusive code-point span [first, last] one plane at a time.
template<typename Visit>
void forEachPlaneSpan(char32_t first, char32_t last, Visit visit)
{
    while (first <= last) {
        const unsigned plane = first >> 16;
        const char32_t planeLast = std::min<char32_t>(last, (plane << 16) | 0xFFFF);
        visit(plane, first & 0xFFFF, planeLast & 0xFFFF);
        first = planeLast + 1;
    }
}

// Sets or clears the bits [first, last] (offsets inside one plane) word by word.
void setBits(quint64 *words, unsigned first, unsigned last, bool on)
{
    for (unsigned word = first >> 6; word <= last >> 6; ++word) {
        const unsigned lo = word == first >> 6 ? first & 63 : 0;
        const unsigned hi = word == last >> 6 ? last & 63 : 63;
        const quint64 mask = (hi == 63 ? ~quint64(0) : (quint64(1) << (hi + 1)) - 1) & ~((quint64(1) << lo) - 1);
        words[word] = on ? words[word] | mask : words[word] & ~mask;
    }
}

// The inclusive code-point span of a range, clipped to the code space; false when nothing is left.
bool spanOfRange(VeltoRange range, char32_t &first, char32_t &last)
{
    if (range.length == 0 || range.location > VeltoCharacterSet::MaximumCodePoint)
        return false;
    first = char32_t(range.location);
    last = char32_t(std::min<quint64>(range.location + (range.length - 1), VeltoCharacterSet::MaximumCodePoint));
    return true;
}

} // namespace

class VeltoCharacterSet::Data : public QSharedData
{
public:
    Data() { planes.fill(emptyPlane()); }
    std::array<std::shared_ptr<Plane>, PlaneCount> planes;
};

namespace {

VeltoCharacterSet::Data *sharedEmptyData()
{
    // Held forever, so default construction never allocates.
    static VeltoCharacterSet::Data *const data = [] {
        auto *empty = new VeltoCharacterSet::Data;
        empty->ref.ref();
        return empty;
    }();
    return data;
}

} // namespace

VeltoCharacterSet::VeltoCharacterSet()
    : d(sharedEmptyData())
{
    syncPlaneWords();
}

VeltoCharacterSet::VeltoCharacterSet(const VeltoCharacterSet &other) = default;

VeltoCharacterSet::VeltoCharacterSet(VeltoCharacterSet &&other) noexcept
    : d(other.d)
{
    syncPlaneWords();
}

VeltoCharacterSet &VeltoCharacterSet::operator=(const VeltoCharacterSet &other) = default;

VeltoCharacterSet &VeltoCharacterSet::operator=(VeltoCharacterSet &&other) noexcept
{
    // A moved-from set stays a valid set with its old members: sharing is cheaper than resetting it.
    d = other.d;
    syncPlaneWords();
    return *this;
}

VeltoCharacterSet::~VeltoCharacterSet() = default;

void VeltoCharacterSet::syncPlaneWords() noexcept
{
    const Data *data = d.constData();
    for (unsigned plane = 0; plane < PlaneCount; ++plane)
        m_planeWords[plane] = data->planes[plane]->words.data();
}

quint64 *VeltoCharacterSet::writablePlane(unsigned plane)
{
    std::shared_ptr<Plane> &slot = d->planes[plane]; // detaches the plane table if it is shared
    if (slot.use_count() > 1)
        slot = std::make_shared<Plane>(*slot);
    syncPlaneWords();
    return slot->words.data();
}

VeltoCharacterSet VeltoCharacterSet::characterSetWithCharactersInString(QStringView characters)
{
    VeltoCharacterSet set;
    set.addCharactersInString(characters);
    return set;
}

VeltoCharacterSet VeltoCharacterSet::characterSetWithRange(VeltoRange range)
{
    VeltoCharacterSet set;
    set.addCharactersInRange(range);
    return set;
}

bool VeltoCharacterSet::isEmpty() const noexcept
{
    return std::all_of(d->planes.begin(), d->planes.end(), [](const std::shared_ptr<Plane> &plane) {
        return plane == emptyPlane()
            || std::all_of(plane->words.begin(), plane->words.end(), [](quint64 w) { return w == 0; });
    });
}

quint64 VeltoCharacterSet::count() const noexcept
{
    quint64 total = 0;
    for (const std::shared_ptr<Plane> &plane : d->planes) {
        if (plane == emptyPlane())
            continue;
        for (quint64 word : plane->words)
            total += std::popcount(word);
    }
    return total;
}

VeltoCharacterSet VeltoCharacterSet::invertedSet() const
{
    VeltoCharacterSet inverted = *this;
    inverted.invert();
    return inverted;
}

VeltoCharacterSet VeltoCharacterSet::characterSetByAddingCharactersInRange(VeltoRange range) const
{
    VeltoCharacterSet result = *this;
    result.addCharactersInRange(range);
    return result;
}

VeltoCharacterSet VeltoCharacterSet::characterSetByAddingCharactersInString(QStringView characters) const
{
    VeltoCharacterSet result = *this;
    result.addCharactersInString(characters);
    return result;
}

VeltoCharacterSet VeltoCharacterSet::characterSetByFormingUnion(const VeltoCharacterSet &other) const
{
    VeltoCharacterSet result = *this;
    result.formUnionWithCharacterSet(other);
    return result;
}

void VeltoCharacterSet::addCharacter(char16_t unit)
{
    addCodePoint(unit);
}

void VeltoCharacterSet::addCodePoint(char32_t codePoint)
{
    if (codePoint > MaximumCodePoint || contains(codePoint))
        return;
    quint64 *words = writablePlane(codePoint >> 16);
    words[(codePoint & 0xFFFF) >> 6] |= quint64(1) << (codePoint & 63);
}

void VeltoCharacterSet::addCharactersInRange(VeltoRange range)
{
    char32_t first, last;
    if (!spanOfRange(range, first, last))
        return;
    forEachPlaneSpan(first, last, [this](unsigned plane, unsigned lo, unsigned hi) {
        if (lo == 0 && hi == 0xFFFF) {
            d->planes[plane] = fullPlane();
            syncPlaneWords();
        } else {
            setBits(writablePlane(plane), lo, hi, true);
        }
    });
}

void VeltoCharacterSet::addCharactersInString(QStringView characters)
{
    // Not toUcs4(): it turns an unpaired surrogate into U+FFFD, and such a unit is added as itself.
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const char16_t unit = characters[i].unicode();
        if (QChar::isHighSurrogate(unit) && i + 1 < characters.size() && characters[i + 1].isLowSurrogate())
            addCodePoint(QChar::surrogateToUcs4(unit, characters[++i].unicode()));
        else
            addCodePoint(unit);
    }
}

void VeltoCharacterSet::removeCharactersInRange(VeltoRange range)
{
    char32_t first, last;
    if (!spanOfRange(range, first, last))
        return;
    forEachPlaneSpan(first, last, [this](unsigned plane, unsigned lo, unsigned hi) {
        if (d->planes[plane] == emptyPlane())
            return;
        if (lo == 0 && hi == 0xFFFF) {
            d->planes[plane] = emptyPlane();
            syncPlaneWords();
        } else {
            setBits(writablePlane(plane), lo, hi, false);
        }
    });
}

namespace {

// Combines \a other into \a set plane by plane; uniform planes short-cut the word loop.
// Planes both sides share are left alone, which is right for union and intersection (a op a == a).
template<typename Combine>
void combinePlanes(std::array<std::shared_ptr<Plane>, PlaneCount> &mine,
                   const std::array<std::shared_ptr<Plane>, PlaneCount> &theirs, Combine combine)
{
    for (unsigned plane = 0; plane < PlaneCount; ++plane) {
        if (mine[plane] == theirs[plane])
            continue;
        auto combined = std::make_shared<Plane>(*mine[plane]);
        for (unsigned i = 0; i < WordsPerPlane; ++i)
            combined->words[i] = combine(combined->words[i], theirs[plane]->words[i]);
        mine[plane] = std::move(combined);
    }
}

} // namespace

void VeltoCharacterSet::formUnionWithCharacterSet(const VeltoCharacterSet &other)
{
    combinePlanes(d->planes, other.d->planes, [](quint64 a, quint64 b) { return a | b; });
    syncPlaneWords();
}

void VeltoCharacterSet::formIntersectionWithCharacterSet(const VeltoCharacterSet &other)
{
    combinePlanes(d->planes, other.d->planes, [](quint64 a, quint64 b) { return a & b; });
    syncPlaneWords();
}

void VeltoCharacterSet::removeCharacterSetVelto(const VeltoCharacterSet &other)
{
    // Not combinePlanes(): a shared plane must become empty here, not stay as it is.
    const auto theirs = other.d->planes; // other may be *this
    for (unsigned plane = 0; plane < PlaneCount; ++plane) {
        if (d->planes[plane] == emptyPlane() || theirs[plane] == emptyPlane())
            continue;
        if (d->planes[plane] == theirs[plane] || theirs[plane] == fullPlane()) {
            d->planes[plane] = emptyPlane();
            continue;
        }
        auto remaining = std::make_shared<Plane>(*d->planes[plane]);
        for (unsigned i = 0; i < WordsPerPlane; ++i)
            remaining->words[i] &= ~theirs[plane]->words[i];
        d->planes[plane] = std::move(remaining);
    }
    syncPlaneWords();
}

void VeltoCharacterSet::invert()
{
    for (std::shared_ptr<Plane> &plane : d->planes) {
        if (plane == emptyPlane()) {
            plane = fullPlane();
        } else if (plane == fullPlane()) {
            plane = emptyPlane();
        } else {
            auto inverted = std::make_shared<Plane>();
            for (unsigned i = 0; i < WordsPerPlane; ++i)
                inverted->words[i] = ~plane->words[i];
            plane = std::move(inverted);
        }
    }
    syncPlaneWords();
    // The last plane ends at U+10FFFF, so nothing beyond the code space can become a member.
}

bool operator==(const VeltoCharacterSet &a, const VeltoCharacterSet &b) noexcept
{
    for (unsigned plane = 0; plane < PlaneCount; ++plane) {
        if (a.m_planeWords[plane] != b.m_planeWords[plane]
            && !std::equal(a.m_planeWords[plane], a.m_planeWords[plane] + WordsPerPlane, b.m_planeWords[plane]))
            return false;
    }
    return true;
}

// --- Named sets --------------------------------------------------------------------------------------

namespace {

VeltoCharacterSet setOf(std::initializer_list<char32_t> codePoints)
{
    VeltoCharacterSet set;
    for (char32_t codePoint : codePoints)
        set.addCodePoint(codePoint);
    return set;
}

VeltoCharacterSet withRange(VeltoCharacterSet set, char32_t first, char32_t last)
{
    set.addCharactersInRange(VeltoMakeRange(first, quint64(last) - first + 1));
    return set;
}

// Copies of sets are cheap: they share planes.
VeltoCharacterSet unionOf(std::initializer_list<VeltoCharacterSet> sets)
{
    VeltoCharacterSet result;
    for (const VeltoCharacterSet &set : sets)
        result.formUnionWithCharacterSet(set);
    return result;
}

VeltoCharacterSet byCategory(std::initializer_list<QChar::Category> categories)
{
    VeltoCharacterSet set;
    for (char32_t codePoint = 0; codePoint <= VeltoCharacterSet::MaximumCodePoint; ++codePoint) {
        const QChar::Category category = QChar::category(codePoint);
        if (std::find(categories.begin(), categories.end(), category) != categories.end())
            set.addCodePoint(codePoint);
    }
    return set;
}

} // namespace

const VeltoCharacterSet &VeltoCharacterSet::whitespaceCharacterSet()
{
    static const VeltoCharacterSet set = [] {
        VeltoCharacterSet spaces = byCategory({QChar::Separator_Space});
        spaces.addCodePoint(0x09);
        return spaces;
    }();
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::newlineCharacterSet()
{
    static const VeltoCharacterSet set = withRange(setOf({0x85, 0x2028, 0x2029}), 0x0A, 0x0D);
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::whitespaceAndNewlineCharacterSet()
{
    static const VeltoCharacterSet set = unionOf({whitespaceCharacterSet(), newlineCharacterSet()});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::alphanumericCharacterSet()
{
    static const VeltoCharacterSet set = unionOf({letterCharacterSet(),
        byCategory({QChar::Number_DecimalDigit, QChar::Number_Letter, QChar::Number_Other})});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::letterCharacterSet()
{
    static const VeltoCharacterSet set = byCategory({QChar::Letter_Uppercase, QChar::Letter_Lowercase,
        QChar::Letter_Titlecase, QChar::Letter_Modifier, QChar::Letter_Other, QChar::Mark_NonSpacing,
        QChar::Mark_SpacingCombining, QChar::Mark_Enclosing});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::decimalDigitCharacterSet()
{
    static const VeltoCharacterSet set = byCategory({QChar::Number_DecimalDigit});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::punctuationCharacterSet()
{
    static const VeltoCharacterSet set = byCategory({QChar::Punctuation_Connector, QChar::Punctuation_Dash,
        QChar::Punctuation_Open, QChar::Punctuation_Close, QChar::Punctuation_InitialQuote,
        QChar::Punctuation_FinalQuote, QChar::Punctuation_Other});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::gremlinCharacterSet()
{
    static const VeltoCharacterSet set =
        withRange(withRange(withRange(withRange(setOf({0x0B}), 0x00, 0x08), 0x0E, 0x1F), 0x7F, 0x83), 0x86, 0x9F);
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::privateUseAreaCharacterSet()
{
    static const VeltoCharacterSet set = withRange({}, 0xE000, 0xF8FF);
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::strictDecimalDigitCharacterSet()
{
    static const VeltoCharacterSet set = withRange({}, u'0', u'9');
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::strictNonDecimalDigitCharacterSet()
{
    static const VeltoCharacterSet set = strictDecimalDigitCharacterSet().invertedSet();
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::paragraphBreakCharacterSet()
{
    static const VeltoCharacterSet set = setOf({0x0A, 0x0C, 0x0D, 0x2029});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::lineBreakCharacterSet()
{
    static const VeltoCharacterSet set = unionOf({paragraphBreakCharacterSet(), setOf({0x2028, 0x85})});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::spaceCharacterSet()
{
    static const VeltoCharacterSet set =
        withRange(setOf({0x20, 0xA0, 0x202F, 0x205F, 0x3000, 0x303F}), 0x2000, 0x200B);
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::allWhitespaceCharacterSet()
{
    static const VeltoCharacterSet set = unionOf(
        {paragraphBreakCharacterSet(), lineBreakCharacterSet(), whitespaceAndNewlineCharacterSet(), setOf({0x0B})});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::nonWhitespaceCharacterSet()
{
    static const VeltoCharacterSet set = allWhitespaceCharacterSet().invertedSet();
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::nonAlphanumericCharacterSet()
{
    static const VeltoCharacterSet set = alphanumericCharacterSet().invertedSet();
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::nonPrintingCharacterSet()
{
    static const VeltoCharacterSet set = unionOf(
        {gremlinCharacterSet(), allWhitespaceCharacterSet(), directionalityCharacterSet(), spaceCharacterSet()});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::textContainerBreakCharacterSet()
{
    static const VeltoCharacterSet set = setOf({0x0C});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::hexCodeCharacterSet()
{
    static const VeltoCharacterSet set = characterSetWithCharactersInString(u"0123456789abcdefABCDEF");
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::attachmentCharacterSet()
{
    static const VeltoCharacterSet set = setOf({0xFFFC});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::arrowFunctionKeyCharacterSet()
{
    static const VeltoCharacterSet set = withRange({}, 0xF700, 0xF703);
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::directionalityCharacterSet()
{
    static const VeltoCharacterSet set = withRange(setOf({0x200E, 0x200F}), 0x202A, 0x202E);
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::openQuoteCharacterSet()
{
    static const VeltoCharacterSet set = setOf({0x27, 0x22, 0x2018, 0x201C, 0xAB, 0x2039});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::closeQuoteCharacterSet()
{
    static const VeltoCharacterSet set = setOf({0x27, 0x22, 0x2019, 0x201D, 0xBB, 0x203A});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::quoteCharacterSet()
{
    static const VeltoCharacterSet set =
        unionOf({openQuoteCharacterSet(), closeQuoteCharacterSet(), setOf({0x201E, 0x201A})});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::sentenceTerminalCharacterSet()
{
    // The full stop is not a member: whether it ends a sentence depends on what follows it.
    static const VeltoCharacterSet set =
        unionOf({setOf({0x0A, u'!', u'?', 0xFF61, 0x3002}), paragraphBreakCharacterSet()});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::fullStopCharacterSet()
{
    static const VeltoCharacterSet set = setOf({u'.', 0x0589, 0x06D4, 0xFE52, 0xFF0E});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::conditionalSentenceTerminalCharacterSet()
{
    static const VeltoCharacterSet set = unionOf({sentenceTerminalCharacterSet(), fullStopCharacterSet()});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::groupingPunctuationCharacterSet()
{
    static const VeltoCharacterSet set =
        unionOf({quoteCharacterSet(), characterSetWithCharactersInString(u"()[]{}<>\u00BF\u00A1")});
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::openingGroupingPunctuationCharacterSet()
{
    static const VeltoCharacterSet set = characterSetWithCharactersInString(u"([{<");
    return set;
}

const VeltoCharacterSet &VeltoCharacterSet::closingGroupingPunctuationCharacterSet()
{
    static const VeltoCharacterSet set = characterSetWithCharactersInString(u")]}>");
    return set;
}
