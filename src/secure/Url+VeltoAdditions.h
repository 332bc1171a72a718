// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Url+VeltoAdditions.h
 * \brief Additions to QUrl for files: URLs from paths that may begin with "~" (always the real home
 * folder), loosely typed text made into a URL, links and container paths resolved, comparison by path
 * and by file identity, containment with the remaining subpath, and the forms shown to users.
 *
 * \code
 * const QUrl notes = velto::fileURLWithVeltoPath(u"~/Documents/notes.txt"_s);   // in the real home
 * velto::URLWithVeltoValidatedString(u"example.com/page"_s);                      // http://example.com/page
 * velto::fileSubpathDescendingFromEnclosingFolderURL(notes, velto::fileURLWithVeltoPath(u"~"_s));
 *                                                                                // "Documents/notes.txt"
 * velto::filePathForUserDisplay(notes);                                          // "~/Documents/notes.txt"
 * \endcode
 *
 * An empty QUrl stands for "no URL": every function gives false, an empty URL or a null string for it.
 */

#include "veltocore_export.h"

#include <QMap>
#include <QString>
#include <QUrl>
#include <QVariant>

/// The facts resourceValueForKey() reads about a file, without following a final symbolic link.
enum class VeltoURLResourceKey {
    IsDirectory,             ///< bool
    IsRegularFile,           ///< bool
    IsSymbolicLink,          ///< bool
    FileSize,                ///< qint64, in bytes
    ContentModificationDate, ///< QDateTime
};

namespace velto {

/** \name File URLs from paths */
///@{
/**
 * hasTildePrefixInVeltoPath: whether \a path is not empty and begins with "~". Then, when \a fullURL is
 * given, it gets the real home folder (VeltoFileManager::userHomeFolderURL()) plus the rest of the path:
 * the "~" and one "/" after it removed, the rest cut at the first "#" or "?" and percent-decoded (kept
 * as written when it does not decode). "~name" names a folder in the real home, not another user's.
 */
VELTOCORE_EXPORT bool hasTildePrefixInVeltoPath(const QString &path, QUrl *fullURL = nullptr);

/**
 * fileURLWithVeltoPath: the file URL of \a path: the real-home URL for a "~" path
 * (hasTildePrefixInVeltoPath()), else QUrl::fromLocalFile() of the path made absolute against the
 * current folder. An empty URL for an empty path.
 */
[[nodiscard]] VELTOCORE_EXPORT QUrl fileURLWithVeltoPath(const QString &path);
///@}

/** \name Text to URL */
///@{
/**
 * URLWithVeltoValidatedString: what a person probably meant by typing or pasting \a text, as a URL, or
 * an empty URL. Longer than 600 UTF-16 units: empty. Text without line breaks follows the loose-text rule
 * below. Text with line breaks (VeltoCharacterSet::newlineCharacterSet()): the rule for the text with
 * every line break removed; failing that, for the part before the first line break; failing that, for
 * the text as it is.
 *
 * The loose-text rule: the text must be 1 to 600 units long and parse as a URL (QUrl strict mode).
 * Text starting with "#", or with a scheme ("https:", "mailto:", "localhost:"), is that URL. Else text
 * starting with "/" becomes "file://" + text, and text starting with "~" becomes "file:" + text
 * (veltoFilePath() reads it in the real home); text holding "@" becomes "mailto:" + text when that
 * parses; else, when the part before the first "/" holds a "." and no space, "http://" + text when that
 * parses; anything else gives an empty URL.
 */
[[nodiscard]] VELTOCORE_EXPORT QUrl URLWithVeltoValidatedString(const QString &text);
///@}

/** \name Resolution */
///@{
/**
 * URLByResolvingSymlinkOrAliasFile: for a symbolic link, the file URL of the file it finally leads to
 * (every link in the path resolved); for anything else, including a dangling link, \a url itself.
 */
[[nodiscard]] VELTOCORE_EXPORT QUrl URLByResolvingSymlinkOrAliasFile(const QUrl &url);

/**
 * URLByResolvingToRealFileOutsideSandbox: outside a sandbox (VeltoApplication::isRunningInsideSandbox())
 * \a url itself. Inside, for a file in the container's "data" folder
 * (VeltoFileManager::applicationSandboxFolderURL() plus "data/"), the same relative path in the real
 * home folder, but only when that is the same file (isFileEqualNodeAsURL(): a hard link, or a link
 * leading there); \a url itself otherwise.
 */
[[nodiscard]] VELTOCORE_EXPORT QUrl URLByResolvingToRealFileOutsideSandbox(const QUrl &url);
///@}

/** \name Resource values */
///@{
/**
 * resourceValueForKey: the value of \a key for the file of \a url (a final symbolic link is not
 * followed: a link to a folder is no folder), or \a defaultValueVelto when it cannot be read.
 */
[[nodiscard]] VELTOCORE_EXPORT QVariant resourceValueForKey(const QUrl &url, VeltoURLResourceKey key,
                                                            const QVariant &defaultValueVelto = QVariant());
/// boolResourceValueForKey: resourceValueForKey() read as a boolean; false when it cannot be read.
[[nodiscard]] VELTOCORE_EXPORT bool boolResourceValueForKey(const QUrl &url, VeltoURLResourceKey key);
/// isFileDirectoryVelto: boolResourceValueForKey() of VeltoURLResourceKey::IsDirectory.
[[nodiscard]] VELTOCORE_EXPORT bool isFileDirectoryVelto(const QUrl &url);
///@}

/** \name Comparison and containment */
///@{
/**
 * isFileEquivalentPathAsURL: false when either URL is empty; true for equal URLs; else whether their
 * paths are equivalent (velto::isPathEquivalent(): tilde, ".", ".." and letter case do not matter).
 */
[[nodiscard]] VELTOCORE_EXPORT bool isFileEquivalentPathAsURL(const QUrl &url, const QUrl &other);
/**
 * isFileEqualNodeAsURL: isFileEquivalentPathAsURL(), or both lead to one existing file (the same
 * VeltoFileIdentity: a hard link, a symbolic link and its target, a path through a linked folder).
 */
[[nodiscard]] VELTOCORE_EXPORT bool isFileEqualNodeAsURL(const QUrl &url, const QUrl &other);
/// isFileInFolderAtURL: both are file URLs and \a url's file lies directly in \a folder (velto::isPathInFolder()).
[[nodiscard]] VELTOCORE_EXPORT bool isFileInFolderAtURL(const QUrl &url, const QUrl &folder);
/**
 * isFileInDescendentOfFolderAtURL: both are file URLs and \a url's path starts with \a folder's
 * (velto::isPathDescendantOf(), a plain prefix test kept on purpose: a folder is its own descendant).
 */
[[nodiscard]] VELTOCORE_EXPORT bool isFileInDescendentOfFolderAtURL(const QUrl &url, const QUrl &folder);
/**
 * fileSubpathDescendingFromEnclosingFolderURL: the path of \a url below \a folder, both standardised
 * (velto::stringByPathEquivalence()) and compared ignoring letter case: an empty string for the folder
 * itself, "a/b" for "<folder>/a/b" (in \a url's letter case), a null string when \a url is not below it
 * ("<folder>2/x" is not).
 */
[[nodiscard]] VELTOCORE_EXPORT QString fileSubpathDescendingFromEnclosingFolderURL(const QUrl &url, const QUrl &folder);
///@}

/** \name Display and paths */
///@{
/// filePathForUserDisplay: a file URL's path with the real home shown as "~"; veltoStringifyWithoutPercentEncoding() of others.
[[nodiscard]] VELTOCORE_EXPORT QString filePathForUserDisplay(const QUrl &url);
/// filePathForDebugDisplay: a file URL's path; veltoStringifyWithoutPercentEncoding() of others.
[[nodiscard]] VELTOCORE_EXPORT QString filePathForDebugDisplay(const QUrl &url);
/// veltoStringify: the URL as text, percent-encoded ("https://example.com/a%20b").
[[nodiscard]] VELTOCORE_EXPORT QString veltoStringify(const QUrl &url);
/// veltoStringifyWithoutPercentEncoding: veltoStringify() percent-decoded; as encoded when it does not decode.
[[nodiscard]] VELTOCORE_EXPORT QString veltoStringifyWithoutPercentEncoding(const QUrl &url);
/// veltoFilePath: veltoFilePathRelativeToBaseURL() without a base.
[[nodiscard]] VELTOCORE_EXPORT QString veltoFilePath(const QUrl &url);
/**
 * veltoFilePathRelativeToBaseURL: the local path of a file URL; a null string for other URLs. A URL
 * written after its scheme as "~/..." or "//~/..." is read in the real home folder (the rest cut at "#"
 * or "?" and percent-decoded). With \a base, a URL written as "//server/rest" (neither "///" nor
 * "//localhost/") is \a base's path plus "server/rest", percent-decoded. Otherwise the URL's path.
 */
[[nodiscard]] VELTOCORE_EXPORT QString veltoFilePathRelativeToBaseURL(const QUrl &url, const QUrl &base);
/// hasFilePathExtensionVelto: whether \a url's path has \a extension (velto::hasPathExtensionVelto(), any case).
[[nodiscard]] VELTOCORE_EXPORT bool hasFilePathExtensionVelto(const QUrl &url, QStringView extension);
///@}

/** \name Query strings */
///@{
/**
 * URLByPercentEncodingStringVelto: the URL of \a text percent-encoded with
 * stringByAddingVeltoPercentEncoding(); with \a queryStringArguments, followed by "?" and "key=value"
 * pairs joined by "&", in key order, keys and values encoded with "&", "=", "+", "#" and "?" encoded as
 * well. An empty URL when the result does not parse.
 */
[[nodiscard]] VELTOCORE_EXPORT QUrl URLByPercentEncodingStringVelto(const QString &text,
                                                                    const QMap<QString, QString> &queryStringArguments = {});
/**
 * veltoQueryStringDictionary: the "key=value" pairs of \a url's query, percent-decoded ("key" alone has
 * an empty value; of repeated keys the last wins; pairs that do not decode are left out).
 */
[[nodiscard]] VELTOCORE_EXPORT QMap<QString, QString> veltoQueryStringDictionary(const QUrl &url);
///@}

} // namespace velto
