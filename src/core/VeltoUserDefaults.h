// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoUserDefaults.h
 * \brief A per-user store of property-list values (QVariant) by key, persisted through QSettings.
 *
 * Each application has one standard store, `~/.config/<organization>/<application>.plist`, an XML
 * property list that keeps every value's type (a boolean stays a boolean) and that a person can edit.
 * Values are bool, whole and real numbers, QString, QByteArray, QDateTime, and lists and string-keyed
 * maps of these. Tests and tools point the standard store elsewhere with setStandardUserDefaults().
 *
 * \code
 * auto defaults = VeltoUserDefaults::standardUserDefaults();
 * VeltoError error;
 * if (!defaults->setObject(true, u"com.velto.debug.Layout.isEnabled"_s, &error))
 *     qWarning() << error.descriptionForUserVelto();   // the file could not be written
 * bool on = defaults->objectForKey(u"com.velto.debug.Layout.isEnabled"_s).toBool();
 * \endcode
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QString>
#include <QVariant>

#include <memory>

/**
 * \brief VeltoUserDefaults: read, write and remove property-list values by key. Thread-safe; every write
 * reaches the file before the call returns, or the call returns false, fills its error and leaves the
 * store as the file still holds it. Keys are flat strings ("com.velto.debug.Layout.isEnabled").
 *
 * Write failures are errors of the general domain: code 513 (VeltoCocoaErrorFileWriteNoPermission) when
 * the file or its folder may not be written, otherwise 512 (the domain's unknown write error), with the
 * text "The user defaults could not be saved to <file>.".
 *
 * A file that cannot be read as a property list is never overwritten: it is moved aside to
 * "<file>.corrupt" (a warning says so) and the store starts empty.
 */
class VELTOCORE_EXPORT VeltoUserDefaults
{
public:
    /// Opens (or will create) the store in \a filePath.
    explicit VeltoUserDefaults(const QString &filePath);
    ~VeltoUserDefaults();
    VeltoUserDefaults(const VeltoUserDefaults &) = delete;
    VeltoUserDefaults &operator=(const VeltoUserDefaults &) = delete;

    /**
     * standardUserDefaults: the application's store, made on first use from the organization and
     * application names of QCoreApplication (the executable's name when none is set).
     */
    [[nodiscard]] static std::shared_ptr<VeltoUserDefaults> standardUserDefaults();
    /// setStandardUserDefaults: replaces the standard store; nullptr goes back to the application's own.
    static void setStandardUserDefaults(std::shared_ptr<VeltoUserDefaults> defaults);
    /// standardFilePath: where the application's own standard store lives.
    [[nodiscard]] static QString standardFilePath();

    /// filePath: the store's file.
    [[nodiscard]] QString filePath() const;

    /// objectForKey: the stored value, else the registered default, else an invalid QVariant.
    [[nodiscard]] QVariant objectForKey(const QString &key) const;
    /**
     * setObject: stores \a value under \a key and writes the file; an invalid (null) QVariant removes the
     * key. Values are stored as they read back from the file: whole numbers as qint64, string lists as
     * QVariantList.
     * \return false when the value is not a property-list value (\a error: VeltoCoreErrorDomain, code 4,
     * VeltoCoreErrorPlistType) or the file could not be written; the stored value then stays as it was.
     */
    [[nodiscard]] bool setObject(const QVariant &value, const QString &key, VeltoError *error = nullptr);
    /**
     * removeObjectForKey: removes the stored value and writes the file; the registered default, if any,
     * shows again. \return false, with \a error, when the file could not be written (the value stays).
     */
    [[nodiscard]] bool removeObjectForKey(const QString &key, VeltoError *error = nullptr);
    /// registerDefaults: values objectForKey() returns for keys with no stored value. Not persisted.
    void registerDefaults(const QVariantMap &defaults);
    /// dictionaryRepresentation: every registered and stored value, stored values winning.
    [[nodiscard]] QVariantMap dictionaryRepresentation() const;
    /**
     * synchronize: writes pending changes and reads changes made by other processes.
     * \return false, with \a error, when the file could not be written.
     */
    [[nodiscard]] bool synchronize(VeltoError *error = nullptr);

private:
    class Private;
    std::unique_ptr<Private> const d;
};
