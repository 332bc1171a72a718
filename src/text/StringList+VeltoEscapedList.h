// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file StringList+VeltoEscapedList.h
 * \brief A list of strings stored in one string: the elements joined by a separator unit, with an escape
 * unit protecting separators and escapes inside the elements.
 *
 * \code
 * const QString stored = velto::componentsJoinedByCharacter({u"a,b"_s, u"c;d"_s}, u';', u'\\');   // a,b;c\;d
 * const QStringList back = velto::componentsSeparatedByCharactersInSet(
 *     stored, VeltoCharacterSet::characterSetWithCharactersInString(u";"), u'\\');         // {"a,b", "c;d"}
 * \endcode
 *
 * A list round-trips when it is not empty and its last element is not empty (or it is the single empty
 * element): the format keeps two quirks on purpose. A trailing separator ends the list without an empty
 * last element, while a leading one gives an empty first element; and the empty string reads as one
 * empty element, so the empty list does not come back.
 */

#include "VeltoCharacterSet.h"
#include "veltocore_export.h"

#include <QString>
#include <QStringList>

namespace velto {

/**
 * componentsJoinedByCharacter: the elements of \a list, each escaped, joined with \a separator. Escaping
 * puts \a escape before every \a separator and every \a escape in an element. The empty list gives the
 * empty string; a single element gives that element escaped.
 */
[[nodiscard]] VELTOCORE_EXPORT QString componentsJoinedByCharacter(const QStringList &list, char16_t separator,
                                                                   char16_t escape);

/**
 * componentsSeparatedByCharactersInSet: splits \a string at the units that are members of \a separators,
 * honouring \a escape:
 * - a separator ends the current element and starts the next;
 * - \a escape before a separator or another \a escape stands for that unit alone, and the element goes on;
 *   an \a escape that is the last unit stands for itself;
 * - \a escape before any other unit is kept together with that unit, literally.
 * \a escape is always read as the escape, even when \a separators holds it. The text after the last
 * separator is the last element, except that a trailing separator adds no empty element. A string with
 * neither separators nor escapes gives a one-element list holding it; the empty string gives one empty
 * element.
 */
[[nodiscard]] VELTOCORE_EXPORT QStringList componentsSeparatedByCharactersInSet(const QString &string,
                                                                               const VeltoCharacterSet &separators,
                                                                               char16_t escape);

} // namespace velto
