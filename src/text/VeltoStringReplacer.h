// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoStringReplacer.h
 * \brief VeltoStringReplacer: replace-every-match passes over a QString, where a match block decides what
 * matches and what replaces it.
 *
 * \code
 * VeltoStringReplacer replacer(text);                      // shares text; nothing is copied yet
 * replacer.replaceAllOccurrencesOfString(u"colour"_s, u"color"_s);
 * replacer.replaceAllCharactersInSet(VeltoCharacterSet::gremlinCharacterSet(), QString());
 * const QString result = replacer.finalizedString();        // still text itself when nothing matched
 * \endcode
 *
 * A pass first asks the block once whether anything matches at all; when nothing does, it returns 0 without
 * copying or allocating, and finalizedString() shares the data of the string the replacer was made with.
 * Otherwise a string of up to 524,288 UTF-16 units is edited in place (the working string, or the caller's
 * own QString, holds the result), and a longer one is rebuilt in a single pass into a new buffer that
 * becomes the result without a final copy.
 *
 * Cost of the in-place pass: the built-in passes (replaceAllOccurrencesOfString(),
 * replaceAllCharactersInSet(), replaceAllLineEndingsWithString()) only search, so they write the result
 * in one linear pass into a new buffer that the string then adopts. A caller's MatchBlock sees the string
 * as edited so far, so its pass edits as it goes, one QString::replace per match: each match that changes
 * the length shifts the rest of the string, and m such matches in n units cost O(m × n) (75,000 spaces
 * replaced by "%20" in 500,000 units take about half a second that way). Same-length replacements only
 * overwrite.
 *
 * For the common cases use the functions of String+VeltoReplacing.h; use a replacer to chain several
 * passes over one string, or to edit a caller's QString in place.
 *
 * Every location and length is in UTF-16 units. A replacer and the strings it edits belong to one thread at
 * a time. Not copyable: a replacer made on a caller's QString keeps a pointer to it.
 */

#include "VeltoCharacterSet.h"
#include "VeltoRange.h"
#include "VeltoStringCompareOptions.h"
#include "veltocore_export.h"

#include <QString>

#include <functional>
#include <memory>

/**
 * \brief VeltoStringReplacer: replace-all passes that avoid copying when nothing matches and switch from
 * in-place editing to a single buffered rebuild for long strings.
 */
class VELTOCORE_EXPORT VeltoStringReplacer
{
public:
    /**
     * MatchBlock: finds the next match. Called with the string being searched, the range to search (in
     * that string's coordinates), the cumulative length change of this pass so far (the sum of replacement
     * length minus matched length over the earlier replacements) and the replacement slot, which is null on
     * entry. Returns the range of the next match inside the search range and stores its replacement in the
     * slot (null or empty deletes the match), or returns a range at VeltoNotFound to end the pass.
     *
     * In place the block sees the already edited string; in a buffered pass (strings longer than
     * BufferedPassThreshold) it sees the unedited source in source coordinates. A block that only searches
     * behaves the same in both. An empty MatchBlock matches nothing. A match must not start before the search location nor end past the string
     * (VeltoRangeException), and an empty match replaced by nothing at the search location would never
     * advance (VeltoInvalidArgumentException).
     */
    using MatchBlock =
        std::function<VeltoRange(const QString &string, VeltoRange searchRange, qint64 lengthChange, QString *replacement)>;

    /// BufferedPassThreshold: strings longer than this many UTF-16 units are rebuilt instead of edited in place.
    static constexpr quint64 BufferedPassThreshold = 524'288;

    /// Makes a replacer on \a string (shared, not copied). A null string behaves as the empty string.
    explicit VeltoStringReplacer(const QString &string);
    /**
     * Makes a replacer whose in-place passes edit \a string, the caller's own object, which must outlive the
     * replacer. Once a pass over a string longer than BufferedPassThreshold has run, the result is a fresh
     * string and \a string is left as it was then: read the result through finalizedString(). A null
     * pointer gives a replacer on the null string.
     */
    explicit VeltoStringReplacer(QString *string);
    ~VeltoStringReplacer();
    VeltoStringReplacer(const VeltoStringReplacer &) = delete;
    VeltoStringReplacer &operator=(const VeltoStringReplacer &) = delete;

    /// replacerWithString: a new replacer on \a string, for callers that keep replacers on the heap.
    [[nodiscard]] static std::unique_ptr<VeltoStringReplacer> replacerWithString(const QString &string);
    /**
     * filterString: makes a replacer on \a string, calls \a filter once with it and returns its
     * finalizedString() (\a string itself when the filter replaced nothing). An empty filter returns \a string.
     */
    [[nodiscard]] static QString filterString(const QString &string,
                                              const std::function<void(VeltoStringReplacer &replacer)> &filter);

    /// originalString: the string the replacer was made with (for the QString * form, that very object).
    [[nodiscard]] const QString &originalString() const;
    /// currentString: the working copy once there is one, else originalString().
    [[nodiscard]] const QString &currentString() const;
    /// currentStringRange: (0, length of currentString()).
    [[nodiscard]] VeltoRange currentStringRange() const;
    /// finalizedString: currentString(), not copied; shares the original's data when nothing was replaced.
    [[nodiscard]] QString finalizedString() const;
    /// isMutated: whether there is a working copy (the QString * form has one from the start).
    [[nodiscard]] bool isMutated() const;
    /// mutableString: the working copy, made first (sharing the original's data until written) if needed.
    [[nodiscard]] QString &mutableString();
    /// accessMutableString: calls \a access with mutableString(); an empty function does nothing.
    void accessMutableString(const std::function<void(QString &string)> &access);

    /** \name Passes. Each returns the number of replacements made. */
    ///@{
    /// replaceAllUsing: replaceAllInRange() over currentStringRange().
    quint64 replaceAllUsing(const MatchBlock &block);
    /**
     * replaceAllInRange: replaces every match \a block finds in \a range of currentString(). Nothing
     * matching leaves the replacer untouched. When the buffered pass runs out of memory the working copy is
     * dropped (edits of earlier passes included, currentString() is originalString() again) and 0 is returned.
     * \throws VeltoException named VeltoRangeException when \a range does not lie inside currentString().
     */
    quint64 replaceAllInRange(VeltoRange range, const MatchBlock &block);
    /**
     * replaceAllInString: the in-place pass on \a string, whatever its length, editing as it goes (see the
     * cost above). An empty range gives 0 (wherever it lies).
     * \throws VeltoException named VeltoRangeException when a non-empty \a range does not lie inside \a string.
     */
    static quint64 replaceAllInString(QString &string, VeltoRange range, const MatchBlock &block);
    /**
     * newStringByReplacingAllBuffered: \a string with every match in \a range replaced, built in one pass
     * into a new buffer (\a string is not edited). Stores the number of replacements in \a matchCount when
     * given. Returns a null string, without writing \a matchCount, when memory runs out; an empty result is
     * empty but not null.
     * \throws VeltoException named VeltoRangeException when \a range does not lie inside \a string.
     */
    [[nodiscard]] static QString newStringByReplacingAllBuffered(const MatchBlock &block, const QString &string,
                                                                VeltoRange range, quint64 *matchCount = nullptr);

    /// replaceAllOccurrencesOfString: every occurrence of \a target in the whole current string (an empty
    /// target matches nothing); searching resumes after each match, never inside inserted text.
    quint64 replaceAllOccurrencesOfString(const QString &target, const QString &replacement);
    /// replaceAllOccurrencesOfString: within \a range (VeltoRangeException when outside the string).
    quint64 replaceAllOccurrencesOfString(const QString &target, VeltoRange range, const QString &replacement);
    /// replaceAllOccurrencesOfString: within \a range, compared with \a options (see rangeOfStringVelto).
    quint64 replaceAllOccurrencesOfString(const QString &target, VeltoStringCompareOptions options, VeltoRange range,
                                          const QString &replacement);
    /// replaceAllCharactersInSet: each member of \a set in the whole current string, one replacement per
    /// match (a unit, or a surrogate pair whose code point is a member).
    quint64 replaceAllCharactersInSet(const VeltoCharacterSet &set, const QString &replacement);
    /// replaceAllCharactersInSet: within \a range (VeltoRangeException when outside the string), not coalesced.
    quint64 replaceAllCharactersInSet(const VeltoCharacterSet &set, VeltoRange range, const QString &replacement);
    /**
     * replaceAllCharactersInSet: within \a range; when \a coalesced, a found member is extended one UTF-16
     * unit at a time while the next unit lies inside the search range and is itself a member, so a run of
     * members becomes one copy of \a replacement (a surrogate pair's units are tested one by one there).
     */
    quint64 replaceAllCharactersInSet(const VeltoCharacterSet &set, bool coalesced, VeltoRange range,
                                      const QString &replacement);
    /**
     * replaceAllLineEndingsWithString: every CR LF pair, lone CR and lone LF in the current string becomes
     * \a replacement. A CR followed by LF is one ending even when the LF lies just past the search range.
     * A one-unit replacement leaves the endings already equal to it alone (and does not count them).
     */
    quint64 replaceAllLineEndingsWithString(const QString &replacement);
    ///@}

private:
    template <typename Block>
    quint64 replaceAllWith(VeltoRange range, Block &block, const char *operation);

    QString m_ownedOriginal;
    QString m_ownedWorking;
    const QString *m_original;
    QString *m_working = nullptr;
};
