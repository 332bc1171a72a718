// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoCharacterSet.h
 * \brief VeltoCharacterSet: a set of Unicode code points with constant-time membership, and the named
 * sets the library's text operations share (gremlins, spaces, line and paragraph breaks, quotes, ...).
 *
 * \code
 * const VeltoCharacterSet &breaks = VeltoCharacterSet::lineBreakCharacterSet();
 * if (breaks.contains(text.at(i).unicode())) ...
 * VeltoCharacterSet digits = VeltoCharacterSet::characterSetWithCharactersInString(u"0123456789");
 * digits.addCharacter(u'.');
 * \endcode
 *
 * Members are code points (0 to U+10FFFF). A UTF-16 unit is a code point below U+10000, so the sets
 * answer for single units too (unpaired surrogates included); contains() of a unit and of a code point is
 * the same call. Storage is one 8 KB bitmap per Unicode plane that holds any member (planes with no
 * member or with every member share one static plane each), so membership is two loads and a bit test.
 *
 * A VeltoCharacterSet is a value: copies share their planes until one of them changes (a plane is copied
 * on its first write). The named sets are built on first use under a once-only guard and are immutable
 * for the life of the process; copy one to change it. Reading a set from several threads is safe.
 */

#include "VeltoRange.h"
#include "veltocore_export.h"

#include <QSharedDataPointer>
#include <QStringView>

class VELTOCORE_EXPORT VeltoCharacterSet
{
public:
    /// The largest code point; contains() answers false above it.
    static constexpr char32_t MaximumCodePoint = 0x10FFFF;

    /// An empty set.
    VeltoCharacterSet();
    VeltoCharacterSet(const VeltoCharacterSet &other);
    VeltoCharacterSet(VeltoCharacterSet &&other) noexcept;
    VeltoCharacterSet &operator=(const VeltoCharacterSet &other);
    VeltoCharacterSet &operator=(VeltoCharacterSet &&other) noexcept;
    ~VeltoCharacterSet();

    /// characterSetWithCharactersInString: every code point of \a characters (a surrogate pair counts
    /// as its code point, an unpaired surrogate as itself).
    [[nodiscard]] static VeltoCharacterSet characterSetWithCharactersInString(QStringView characters);
    /// characterSetWithRange: the code points location .. location + length - 1 (clipped to U+10FFFF).
    [[nodiscard]] static VeltoCharacterSet characterSetWithRange(VeltoRange range);

    /// contains: whether \a codePoint (or UTF-16 unit) is a member. Constant time.
    [[nodiscard]] bool contains(char32_t codePoint) const noexcept
    {
        if (codePoint > MaximumCodePoint)
            return false;
        const quint64 *words = m_planeWords[codePoint >> 16];
        return (words[(codePoint & 0xFFFF) >> 6] >> (codePoint & 63)) & 1;
    }
    /// isEmpty: true when no code point is a member.
    [[nodiscard]] bool isEmpty() const noexcept;
    /// count: the number of member code points.
    [[nodiscard]] quint64 count() const noexcept;

    /// copyImmutable: a copy (a value never changes behind its holder's back).
    [[nodiscard]] VeltoCharacterSet copyImmutable() const { return *this; }
    /// invertedSet: every code point up to U+10FFFF that is not a member.
    [[nodiscard]] VeltoCharacterSet invertedSet() const;
    /// characterSetByAddingCharactersInRange: a copy with the code points of \a range added.
    [[nodiscard]] VeltoCharacterSet characterSetByAddingCharactersInRange(VeltoRange range) const;
    /// characterSetByAddingCharactersInString: a copy with the code points of \a characters added.
    [[nodiscard]] VeltoCharacterSet characterSetByAddingCharactersInString(QStringView characters) const;
    /// characterSetByFormingUnion: a copy holding the members of both sets.
    [[nodiscard]] VeltoCharacterSet characterSetByFormingUnion(const VeltoCharacterSet &other) const;

    /// addCharacter: adds one UTF-16 unit.
    void addCharacter(char16_t unit);
    /// addCodePoint: adds one code point; values above U+10FFFF are ignored.
    void addCodePoint(char32_t codePoint);
    /// addCharactersInRange: adds the code points of \a range (clipped to U+10FFFF).
    void addCharactersInRange(VeltoRange range);
    /// addCharactersInString: adds every code point of \a characters.
    void addCharactersInString(QStringView characters);
    /// removeCharactersInRange: removes the code points of \a range.
    void removeCharactersInRange(VeltoRange range);
    /// formUnionWithCharacterSet: adds every member of \a other.
    void formUnionWithCharacterSet(const VeltoCharacterSet &other);
    /// formIntersectionWithCharacterSet: keeps only the members also in \a other.
    void formIntersectionWithCharacterSet(const VeltoCharacterSet &other);
    /// removeCharacterSetVelto: removes every member of \a other.
    void removeCharacterSetVelto(const VeltoCharacterSet &other);
    /// invert: members become non-members and the other way round (up to U+10FFFF).
    void invert();

    friend VELTOCORE_EXPORT bool operator==(const VeltoCharacterSet &a, const VeltoCharacterSet &b) noexcept;

    /** \name Sets defined by Unicode character properties (as Qt's QChar reports them) */
    ///@{
    /// whitespaceCharacterSet: space separators (category Zs) and U+0009 (tab); no newlines.
    [[nodiscard]] static const VeltoCharacterSet &whitespaceCharacterSet();
    /// newlineCharacterSet: U+000A-U+000D, U+0085, U+2028 and U+2029.
    [[nodiscard]] static const VeltoCharacterSet &newlineCharacterSet();
    /// whitespaceAndNewlineCharacterSet: the union of the two above.
    [[nodiscard]] static const VeltoCharacterSet &whitespaceAndNewlineCharacterSet();
    /// alphanumericCharacterSet: letters, marks and numbers (categories L*, M*, N*).
    [[nodiscard]] static const VeltoCharacterSet &alphanumericCharacterSet();
    /// letterCharacterSet: letters and marks (categories L*, M*).
    [[nodiscard]] static const VeltoCharacterSet &letterCharacterSet();
    /// decimalDigitCharacterSet: decimal digits of every script (category Nd).
    [[nodiscard]] static const VeltoCharacterSet &decimalDigitCharacterSet();
    /// punctuationCharacterSet: punctuation (categories P*).
    [[nodiscard]] static const VeltoCharacterSet &punctuationCharacterSet();
    ///@}

    /** \name The library's named sets (members listed in docs/platform-mapping.md's text section) */
    ///@{
    [[nodiscard]] static const VeltoCharacterSet &gremlinCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &privateUseAreaCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &strictDecimalDigitCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &strictNonDecimalDigitCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &paragraphBreakCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &lineBreakCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &spaceCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &allWhitespaceCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &nonWhitespaceCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &nonAlphanumericCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &nonPrintingCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &textContainerBreakCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &hexCodeCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &attachmentCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &arrowFunctionKeyCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &directionalityCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &openQuoteCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &closeQuoteCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &quoteCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &sentenceTerminalCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &fullStopCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &conditionalSentenceTerminalCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &groupingPunctuationCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &openingGroupingPunctuationCharacterSet();
    [[nodiscard]] static const VeltoCharacterSet &closingGroupingPunctuationCharacterSet();
    ///@}

    class Data;

private:
    void syncPlaneWords() noexcept;
    quint64 *writablePlane(unsigned plane);

    QSharedDataPointer<Data> d;
    // Raw views of d's planes (the shared empty or full plane where a plane is uniform), so that
    // contains() stays inline and needs no indirection through the shared data.
    const quint64 *m_planeWords[17];
};
