// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoUTI.h
 * \brief VeltoUTI: conversions between type identifiers ("public.png"), file-name extensions ("png") and
 * clipboard types, which on Linux desktops are MIME types ("image/png").
 *
 * \code
 * VeltoUTI::UTIForFileExtension(u"pdf"_s);          // "com.adobe.pdf"
 * VeltoUTI::pasteboardTypeForUTI(u"public.png"_s);  // "image/png"
 * VeltoUTI::isKnownUTI(u"com.velto.uti.outline"_s); // true: the applications' own space
 * \endcode
 *
 * Identifiers map to MIME types through a table of the common public identifiers kept with the library;
 * MIME types map to extensions and back through the shared MIME database (QMimeDatabase), which also
 * resolves MIME aliases ("text/rtf" and "application/rtf" are one type). An identifier the table does
 * not hold has no MIME type and no extension; a MIME type or extension no row reaches has no identifier
 * (a null QString). Identifiers compare without regard to letter case. Every operation may run on any
 * thread.
 */

#include "veltocore_export.h"

#include <QSet>
#include <QString>
#include <QStringList>

/// The identifier of Encapsulated PostScript.
inline constexpr QLatin1StringView VeltoUTI_EPS{"com.adobe.encapsulated-postscript"};
/// The identifier of a link's title on the clipboard.
inline constexpr QLatin1StringView VeltoUTI_URLName{"public.url-name"};

/// What the list conversions do with an element that has no counterpart.
enum class VeltoUTICulling {
    KeepUnknown, ///< the element itself goes into the result
    CullUnknown, ///< nothing goes into the result for it
};

/**
 * \brief VeltoUTI: class operations only.
 */
class VELTOCORE_EXPORT VeltoUTI
{
public:
    VeltoUTI() = delete;

    /// Identifiers of the applications' own types begin with this.
    static constexpr QLatin1StringView OwnIdentifierPrefix{"com.velto.uti."};

    /**
     * \brief knownUTIs: the five identifiers the applications always understand: the two promised-file
     * clipboard types, VeltoUTI_EPS, "public.url" and VeltoUTI_URLName. Made once, never changed.
     */
    [[nodiscard]] static const QSet<QString> &knownUTIs();

    /**
     * \brief isKnownUTI: false for a string without a "."; true for a member of knownUTIs(), for an identifier
     * beginning with OwnIdentifierPrefix, and for one that has a file-name extension; false otherwise.
     */
    [[nodiscard]] static bool isKnownUTI(const QString &string);

    /// fileExtensionForUTI: the preferred file-name extension of \a identifier ("png"), or a null QString.
    [[nodiscard]] static QString fileExtensionForUTI(const QString &identifier);
    /// UTIForFileExtension: the identifier for files named with \a extension (without its dot), or a null QString.
    [[nodiscard]] static QString UTIForFileExtension(const QString &extension);
    /// pasteboardTypeForUTI: the MIME type of \a identifier ("image/png"), or a null QString.
    [[nodiscard]] static QString pasteboardTypeForUTI(const QString &identifier);
    /// UTIForPasteboardType: the identifier of the MIME type \a type (aliases and letter case allowed), or a null QString.
    [[nodiscard]] static QString UTIForPasteboardType(const QString &type);

    /**
     * \brief pasteboardTypesForUTIs: each identifier's MIME type, in order; one without goes in unchanged,
     * or with CullUnknown is left out.
     */
    [[nodiscard]] static QStringList pasteboardTypesForUTIs(const QStringList &identifiers, VeltoUTICulling culling);
    /**
     * \brief UTIsForPasteboardTypes: in order, each clipboard type that already is a known identifier
     * (isKnownUTI()) unchanged, else its identifier; one without goes in unchanged, or with CullUnknown
     * is left out.
     */
    [[nodiscard]] static QStringList UTIsForPasteboardTypes(const QStringList &types, VeltoUTICulling culling);
};
