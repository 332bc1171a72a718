// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoReplacing.h"

namespace velto {

namespace {

// Runs \a pass with a replacer on \a string itself: short strings are edited in place, while a long one's
// buffered result (a fresh string) is handed back; the assignment moves no characters.
template <typename Pass>
quint64 replaceInString(QString &string, Pass pass)
{
    VeltoStringReplacer replacer(&string);
    const quint64 count = pass(replacer);
    if (&replacer.currentString() != &string)
        string = replacer.finalizedString();
    return count;
}

} // namespace

QString stringByReplacingAllOccurrencesOfString(const QString &string, const QString &target,
                                                const QString &replacement)
{
    VeltoStringReplacer replacer(string);
    replacer.replaceAllOccurrencesOfString(target, replacement);
    return replacer.finalizedString();
}

QString stringByReplacingAllOccurrencesOfCharactersInSet(const QString &string, const VeltoCharacterSet &set,
                                                         const QString &replacement)
{
    VeltoStringReplacer replacer(string);
    replacer.replaceAllCharactersInSet(set, replacement);
    return replacer.finalizedString();
}

QString stringByReplacingAllLineEndingsWithString(const QString &string, const QString &replacement)
{
    VeltoStringReplacer replacer(string);
    replacer.replaceAllLineEndingsWithString(replacement);
    return replacer.finalizedString();
}

QString stringByReplacingAllVeltoUsing(const QString &string, const VeltoStringReplacer::MatchBlock &block)
{
    VeltoStringReplacer replacer(string);
    replacer.replaceAllUsing(block);
    return replacer.finalizedString();
}

bool replaceAllOccurrencesOfString(QString &string, const QString &target, const QString &replacement)
{
    return replaceInString(string, [&](VeltoStringReplacer &replacer) {
               return replacer.replaceAllOccurrencesOfString(target, replacement);
           }) != 0;
}

quint64 replaceAllOccurrencesOfCharactersInSet(QString &string, const VeltoCharacterSet &set,
                                               const QString &replacement)
{
    return replaceInString(string, [&](VeltoStringReplacer &replacer) {
        return replacer.replaceAllCharactersInSet(set, replacement);
    });
}

void removeCharactersInSet(QString &string, const VeltoCharacterSet &set)
{
    replaceAllOccurrencesOfCharactersInSet(string, set, QString());
}

} // namespace velto
