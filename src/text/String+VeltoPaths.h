// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file String+VeltoPaths.h
 * \brief File paths as strings: extensions, an equivalence form for comparing paths, folder membership,
 * and splitting a string into a set of pieces.
 *
 * \code
 * if (velto::hasPathExtensionVelto(path, u"TXT")) ...                      // "notes.txt" matches
 * velto::isPathEquivalent(u"~/Documents/../notes.txt", QDir::homePath() + u"/NOTES.txt");   // true
 * \endcode
 *
 * Paths are "/"-separated. The path extension is the text after the last "." of the last path component
 * (trailing "/" ignored), when that "." is neither the component's first nor its last character: "a.tar.gz"
 * has "gz", ".profile" and "name." have none. No function here touches the file system.
 */

#include "veltocore_export.h"

#include <QSet>
#include <QString>
#include <QStringView>

namespace velto {

/**
 * hasPathExtensionVelto: whether the extension of \a path equals \a extension (given without its dot),
 * ignoring case. A path without an extension matches only the empty \a extension.
 */
[[nodiscard]] VELTOCORE_EXPORT bool hasPathExtensionVelto(QStringView path, QStringView extension);

/// pathExtensionVelto: the extension of \a path without its dot ("gz" for "a.tar.gz"); empty when it has none.
[[nodiscard]] VELTOCORE_EXPORT QString pathExtensionVelto(QStringView path);

/**
 * stringByAppendingPathComponentVelto: \a path and \a component joined by one "/": "/" runs inside
 * the result become one and a trailing "/" goes ("/a/" and "b//c/" give "/a/b/c"); "." and ".." stay as
 * they are. An empty \a component gives \a path with the same clean-up; an empty \a path gives
 * \a component with it, relative as given.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByAppendingPathComponentVelto(const QString &path, const QString &component);

/**
 * stringByChangingPathExtensionVelto: \a path with its extension (and trailing "/") removed and
 * "." + \a extension appended; an empty \a extension only removes it. \a path comes back unchanged when
 * its last component is empty or "/" ("", "/", "//").
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByChangingPathExtensionVelto(const QString &path, QStringView extension);

/**
 * stringByPathEquivalence: the form in which paths are compared: a leading "~" alone or before "/" is
 * replaced by the real home folder of the user running the process (from the password database,
 * getpwuid_r(getuid()); QDir::homePath() when there is no entry), so a changed HOME does not move it;
 * "~name" is left alone. The result is then standardized as QDir::cleanPath() does: repeated "/", "."
 * components and trailing "/" removed, "name/.." pairs resolved ("/a/./b/../c/" gives "/a/c"; a
 * relative path keeps its leading ".."). Symbolic links are not resolved. Empty for an empty path.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByPathEquivalence(const QString &path);

/// isPathEquivalent: whether the equivalence forms of \a path and \a other are equal, ignoring case.
[[nodiscard]] VELTOCORE_EXPORT bool isPathEquivalent(const QString &path, const QString &other);

/**
 * isPathInFolder: whether the folder holding \a path (its equivalence form without the last component)
 * is equivalent to \a folder. The root and the empty path lie in no folder; a relative one-component
 * path lies in the empty folder.
 */
[[nodiscard]] VELTOCORE_EXPORT bool isPathInFolder(const QString &path, const QString &folder);

/**
 * isPathDescendantOf: whether the equivalence form of \a path starts with that of \a folder, a plain
 * case-sensitive prefix test. Kept on purpose: a folder is its own descendant, and a sibling whose name
 * extends the folder's counts too ("/a/bc" is a descendant of "/a/b"). False when either is null.
 */
[[nodiscard]] VELTOCORE_EXPORT bool isPathDescendantOf(const QString &path, const QString &folder);

/**
 * setWithComponentsSeparatedByString: the set of pieces of \a string between occurrences of
 * \a separator, empty pieces included, except that a trailing separator adds no empty piece
 * ("a,,b," gives {"a", "", "b"}). An empty \a string gives the empty set (whatever the separator);
 * an empty \a separator gives the set holding \a string.
 */
[[nodiscard]] VELTOCORE_EXPORT QSet<QString> setWithComponentsSeparatedByString(const QString &string,
                                                                               const QString &separator);

} // namespace velto
