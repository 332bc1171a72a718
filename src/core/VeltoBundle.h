// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoBundle.h
 * \brief A bundle of resources, chiefly localized string tables, rooted in a folder on disk or in the
 * Qt resources compiled into a binary.
 *
 * Layout under the root: `strings/<language>/<Table>.json`, each table one JSON object mapping keys to
 * display texts, for example `strings/de/Localizable.json` = `{"_Choose Folder": "Ordner wählen"}`. The
 * default table is "Localizable". A bundle uses one language for all lookups: the first of
 * preferredLanguages() it has a folder for (an exact tag, else the tag's language, "de" for "de-AT"),
 * else its development language, else the first language it has.
 *
 * Every binary (the application, a library, a plug-in) may own a bundle; bundleForClass() finds the
 * bundle of the binary that defines a class. The VeltoCore library owns the bundle of its own strings;
 * the application's executable owns mainBundle().
 *
 * \code
 * auto bundle = std::make_shared<VeltoBundle>(u"/usr/share/myapp"_s);
 * QString text = bundle->localizedString(u"_Choose Folder"_s, {});
 * \endcode
 */

#include "veltocore_export.h"

#include <QString>
#include <QStringList>

#include <memory>

struct QMetaObject;

/**
 * \brief VeltoBundle: a resource root with per-language string tables. Lookups are thread-safe; tables
 * are read on first use and kept.
 */
class VELTOCORE_EXPORT VeltoBundle
{
public:
    /// The table used when no table name is given.
    static constexpr QLatin1StringView DefaultTableName{"Localizable"};
    /// User-defaults key of the application's preferred languages (a list of language tags).
    static constexpr QLatin1StringView PreferredLanguagesKey{"com.velto.languages"};

    /**
     * Makes a bundle rooted at \a rootPath, a folder or a Qt resource path such as ":/velto/VeltoCore".
     * A root that does not exist gives a bundle without tables; every lookup then returns its default.
     */
    explicit VeltoBundle(const QString &rootPath, const QString &developmentLanguage = QStringLiteral("en"));
    ~VeltoBundle();
    VeltoBundle(const VeltoBundle &) = delete;
    VeltoBundle &operator=(const VeltoBundle &) = delete;

    /// rootPath: the folder or resource path given at construction.
    [[nodiscard]] QString rootPath() const;
    /// developmentLanguage: the language used when none of the preferred ones has a table.
    [[nodiscard]] QString developmentLanguage() const;
    /// localizations: the languages that have a folder under `strings/`, sorted.
    [[nodiscard]] QStringList localizations() const;
    /// localizationLanguage: the language this bundle looks strings up in; empty when it has none.
    [[nodiscard]] QString localizationLanguage() const;

    /**
     * localizedString: the text of \a key in \a table (the default table when \a table is empty) of the
     * bundle's language. A missing key gives \a value, or \a key itself when \a value is null or empty.
     * A table file that is missing or malformed counts as empty; a malformed one is reported once as a
     * warning.
     */
    [[nodiscard]] QString localizedString(const QString &key, const QString &value,
                                          const QString &table = QString()) const;

    /**
     * preferredLanguages: the user's languages, most preferred first: the list stored in the standard user
     * defaults under PreferredLanguagesKey when there is one, else the system's UI languages (from
     * LANGUAGE, LC_ALL, LC_MESSAGES and LANG), with the C and POSIX locales read as "en".
     */
    [[nodiscard]] static QStringList preferredLanguages();

    /// mainBundle: the application's bundle, rooted in its compiled-in resources (":/").
    [[nodiscard]] static std::shared_ptr<const VeltoBundle> mainBundle();

    /**
     * bundleForClass: the bundle of the binary that defines \a metaObject's class: a bundle registered
     * for that binary, mainBundle() for the application's executable, else nullptr (also for nullptr).
     */
    [[nodiscard]] static std::shared_ptr<const VeltoBundle> bundleForClass(const QMetaObject *metaObject);

    /**
     * registerBundleForBinaryContaining: makes \a bundle the bundle of the binary (executable, library
     * or plug-in) whose code or data contains \a address, for example `&MyClass::staticMetaObject`.
     * Returns false when no binary contains the address. A later registration replaces an earlier one.
     */
    [[nodiscard]] static bool registerBundleForBinaryContaining(const void *address,
                                                                std::shared_ptr<const VeltoBundle> bundle);

private:
    class Private;
    std::unique_ptr<Private> const d;
};
