// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoUserDefaults.h"

#include "VeltoCoreLogging_p.h"
#include "VeltoLogSink.h"
#include "VeltoPropertyList.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QSettings>
#include <QStandardPaths>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

bool readPlist(QIODevice &device, QSettings::SettingsMap &map)
{
    const QByteArray data = device.readAll();
    if (data.trimmed().isEmpty())
        return true;
    VeltoError error;
    const std::optional<QVariant> root = VeltoPropertyList::read(data, nullptr, &error);
    if (!root || root->typeId() != QMetaType::QVariantMap) {
        qCWarning(lcVeltoDefaults, "VeltoUserDefaults: unreadable store: %s",
                  qUtf8Printable(root ? u"the top level is not a dictionary"_s : error.localizedDescription()));
        return false;
    }
    const QVariantMap values = root->toMap();
    for (auto it = values.begin(); it != values.end(); ++it)
        map.insert(it.key(), it.value());
    return true;
}

bool writePlist(QIODevice &device, const QSettings::SettingsMap &map)
{
    QVariantMap values;
    for (auto it = map.begin(); it != map.end(); ++it)
        values.insert(it.key(), it.value());
    // A store that cannot be written whole is not written at all: the file on disk stays as it was.
    VeltoError error;
    const QByteArray document = VeltoPropertyList::write(values, VeltoPropertyListXMLFormat, &error);
    if (document.isNull()) {
        qCWarning(lcVeltoDefaults, "VeltoUserDefaults: store not written: %s", qUtf8Printable(error.localizedDescription()));
        return false;
    }
    return device.write(document) >= 0;
}

QSettings::Format plistFormat()
{
    static const QSettings::Format format = QSettings::registerFormat(u"plist"_s, readPlist, writePlist);
    return format;
}

struct StandardStore
{
    QMutex mutex;
    std::shared_ptr<VeltoUserDefaults> defaults;
};

StandardStore &standardStore()
{
    static StandardStore store;
    return store;
}

} // namespace

class VeltoUserDefaults::Private
{
public:
    QString filePath;
    mutable QMutex mutex;
    std::unique_ptr<QSettings> settings;
    bool writeFailed = false;
    QVariantMap registered;

    void open()
    {
        settings = std::make_unique<QSettings>(filePath, plistFormat());
        if (settings->status() != QSettings::FormatError)
            return;
        // Keep what the unreadable file holds for a person to look at; start afresh beside it.
        settings.reset();
        QString aside = filePath + u".corrupt"_s;
        if (QFile::exists(aside))
            aside += u"-"_s + QDateTime::currentDateTimeUtc().toString(u"yyyyMMddHHmmsszzz"_s);
        if (QFile::rename(filePath, aside))
            VeltoLogSink::warn(u"user defaults file %1 could not be read; moved aside to %2"_s.arg(filePath, aside));
        else
            VeltoLogSink::warn(u"user defaults file %1 could not be read or moved aside"_s.arg(filePath));
        settings = std::make_unique<QSettings>(filePath, plistFormat());
    }

    // QSettings keeps a failed status for good: after a failed write the next change starts from a fresh
    // one over the same file. Called with the mutex held, before a change.
    void prepareToWrite()
    {
        if (!writeFailed)
            return;
        settings = std::make_unique<QSettings>(filePath, plistFormat());
        writeFailed = false;
    }

    // Writes the file. A failure is reported, and \a undo puts back what the file still holds, so that
    // the store never shows a value that a relaunch would lose. Called with the mutex held.
    bool write(VeltoError *error, const std::function<void()> &undo = {})
    {
        settings->sync();
        if (settings->status() == QSettings::NoError)
            return true;
        if (undo)
            undo();
        writeFailed = true;
        const QFileInfo file(filePath);
        const bool permission = file.exists() ? !file.isWritable() : !QFileInfo(file.path()).isWritable();
        const QString text = u"The user defaults could not be saved to %1."_s.arg(filePath);
        qCWarning(lcVeltoDefaults, "VeltoUserDefaults: %s", qUtf8Printable(text));
        if (error)
            *error = VeltoError::errorWithDomain(VeltoCocoaErrorDomain,
                                                 permission ? VeltoCocoaErrorFileWriteNoPermission
                                                            : VeltoCocoaErrorFileWriteUnknown,
                                                 text);
        return false;
    }

    // The undo step for a change of \a key: the value it had, or no value.
    std::function<void()> restoring(const QString &key)
    {
        if (!settings->contains(key))
            return [this, key] { settings->remove(key); };
        return [this, key, old = settings->value(key)] { settings->setValue(key, old); };
    }
};

VeltoUserDefaults::VeltoUserDefaults(const QString &filePath) : d(new Private)
{
    d->filePath = filePath;
    d->open();
}

VeltoUserDefaults::~VeltoUserDefaults() = default;

std::shared_ptr<VeltoUserDefaults> VeltoUserDefaults::standardUserDefaults()
{
    StandardStore &store = standardStore();
    QMutexLocker locker(&store.mutex);
    if (!store.defaults)
        store.defaults = std::make_shared<VeltoUserDefaults>(standardFilePath());
    return store.defaults;
}

void VeltoUserDefaults::setStandardUserDefaults(std::shared_ptr<VeltoUserDefaults> defaults)
{
    StandardStore &store = standardStore();
    QMutexLocker locker(&store.mutex);
    store.defaults = std::move(defaults);
}

QString VeltoUserDefaults::standardFilePath()
{
    QString application = QCoreApplication::applicationName();
    if (application.isEmpty())
        application = QFileInfo(u"/proc/self/exe"_s).completeBaseName();
    const QString organization = QCoreApplication::organizationName();
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return organization.isEmpty() ? u"%1/%2.plist"_s.arg(folder, application)
                                  : u"%1/%2/%3.plist"_s.arg(folder, organization, application);
}

QString VeltoUserDefaults::filePath() const
{
    return d->filePath;
}

QVariant VeltoUserDefaults::objectForKey(const QString &key) const
{
    QMutexLocker locker(&d->mutex);
    QVariant value = d->settings->value(key);
    return value.isValid() ? value : d->registered.value(key);
}

bool VeltoUserDefaults::setObject(const QVariant &value, const QString &key, VeltoError *error)
{
    if (!value.isValid())
        return removeObjectForKey(key, error);
    // Stored as it will read back after a relaunch, so a value's type never depends on that.
    const QVariant normalized = VeltoPropertyList::normalized(value);
    if (!normalized.isValid()) {
        const QString text = u"a %1 is not a property-list value; \"%2\" unchanged"_s.arg(
            QLatin1StringView(value.typeName()), key);
        qCWarning(lcVeltoDefaults, "VeltoUserDefaults::setObject: %s", qUtf8Printable(text));
        if (error)
            *error = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorPlistType, text);
        return false;
    }
    // The store is XML: a value it cannot carry (a control character in a string, say) is refused here,
    // where the caller can be told, rather than failing every later save.
    if (VeltoError refusal; VeltoPropertyList::write(normalized, VeltoPropertyListXMLFormat, &refusal).isNull()) {
        qCWarning(lcVeltoDefaults, "VeltoUserDefaults::setObject: \"%s\" unchanged: %s", qUtf8Printable(key),
                  qUtf8Printable(refusal.localizedDescription()));
        if (error)
            *error = refusal;
        return false;
    }
    QMutexLocker locker(&d->mutex);
    d->prepareToWrite();
    auto undo = d->restoring(key);
    d->settings->setValue(key, normalized);
    return d->write(error, undo);
}

bool VeltoUserDefaults::removeObjectForKey(const QString &key, VeltoError *error)
{
    QMutexLocker locker(&d->mutex);
    d->prepareToWrite();
    auto undo = d->restoring(key);
    d->settings->remove(key);
    return d->write(error, undo);
}

void VeltoUserDefaults::registerDefaults(const QVariantMap &defaults)
{
    QMutexLocker locker(&d->mutex);
    d->registered.insert(defaults);
}

QVariantMap VeltoUserDefaults::dictionaryRepresentation() const
{
    QMutexLocker locker(&d->mutex);
    QVariantMap all = d->registered;
    const QStringList keys = d->settings->allKeys();
    for (const QString &key : keys)
        all.insert(key, d->settings->value(key));
    return all;
}

bool VeltoUserDefaults::synchronize(VeltoError *error)
{
    QMutexLocker locker(&d->mutex);
    d->prepareToWrite();
    return d->write(error);
}
