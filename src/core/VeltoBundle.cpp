// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoBundle.h"

#include "VeltoCoreLogging_p.h"
#include "VeltoUserDefaults.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QMutex>

#include <dlfcn.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using StringTable = QHash<QString, QString>;

StringTable readTable(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QJsonParseError parseError{};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (!document.isObject()) {
        qCWarning(lcVeltoBundle, "VeltoBundle: string table %s is not a JSON object (%s at offset %d)",
                  qUtf8Printable(path), qUtf8Printable(parseError.errorString()), parseError.offset);
        return {};
    }
    StringTable table;
    const QJsonObject object = document.object();
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it->isString())
            table.insert(it.key(), it->toString());
        else
            qCWarning(lcVeltoBundle, "VeltoBundle: %s: value of \"%s\" is not a string; skipped",
                      qUtf8Printable(path), qUtf8Printable(it.key()));
    }
    return table;
}

// The first available language matching the preferences: an exact tag, else the tag's language part.
QString chooseLanguage(const QStringList &available, const QStringList &preferred, const QString &development)
{
    auto find = [&available](const QString &tag) -> QString {
        for (const QString &language : available) {
            if (language.compare(tag, Qt::CaseInsensitive) == 0)
                return language;
        }
        return {};
    };
    for (QString tag : preferred) {
        tag.replace(u'_', u'-');
        if (QString match = find(tag); !match.isEmpty())
            return match;
        if (QString match = find(tag.section(u'-', 0, 0)); !match.isEmpty())
            return match;
    }
    if (available.contains(development))
        return development;
    return available.value(0);
}

QString canonicalBinaryPath(const void *address)
{
    Dl_info info{};
    if (address == nullptr || dladdr(address, &info) == 0 || info.dli_fname == nullptr)
        return {};
    QString path = QString::fromLocal8Bit(info.dli_fname);
    // The main executable is reported by the name it was started with, maybe relative; /proc knows it.
    if (!path.startsWith(u'/'))
        path = u"/proc/self/exe"_s;
    return QFileInfo(path).canonicalFilePath();
}

int anchorInThisLibrary;

struct BinaryRegistry
{
    QMutex mutex;
    QHash<QString, std::shared_ptr<const VeltoBundle>> bundles;

    BinaryRegistry()
    {
        // This library owns the bundle of its own embedded strings.
        bundles.insert(canonicalBinaryPath(&anchorInThisLibrary),
                       std::make_shared<VeltoBundle>(u":/velto/VeltoCore"_s));
    }
};

BinaryRegistry &registry()
{
    static BinaryRegistry instance;
    return instance;
}

} // namespace

class VeltoBundle::Private
{
public:
    QString rootPath;
    QString developmentLanguage;
    mutable QMutex mutex;
    mutable bool languageChosen = false;
    mutable QString language;
    mutable QHash<QString, StringTable> tables;

    QString stringsPath() const { return rootPath + u"/strings"_s; }

    QStringList localizations() const
    {
        QStringList languages = QDir(stringsPath()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        std::sort(languages.begin(), languages.end());
        return languages;
    }

    // Called with the mutex held.
    const QString &chosenLanguage() const
    {
        if (!languageChosen) {
            language = chooseLanguage(localizations(), VeltoBundle::preferredLanguages(), developmentLanguage);
            languageChosen = true;
        }
        return language;
    }
};

VeltoBundle::VeltoBundle(const QString &rootPath, const QString &developmentLanguage) : d(new Private)
{
    d->rootPath = rootPath;
    d->developmentLanguage = developmentLanguage;
}

VeltoBundle::~VeltoBundle() = default;

QString VeltoBundle::rootPath() const
{
    return d->rootPath;
}

QString VeltoBundle::developmentLanguage() const
{
    return d->developmentLanguage;
}

QStringList VeltoBundle::localizations() const
{
    return d->localizations();
}

QString VeltoBundle::localizationLanguage() const
{
    QMutexLocker locker(&d->mutex);
    return d->chosenLanguage();
}

QString VeltoBundle::localizedString(const QString &key, const QString &value, const QString &table) const
{
    const QString tableName = table.isEmpty() ? QString(DefaultTableName) : table;
    {
        QMutexLocker locker(&d->mutex);
        const QString &language = d->chosenLanguage();
        if (!language.isEmpty()) {
            auto it = d->tables.find(tableName);
            if (it == d->tables.end())
                it = d->tables.insert(tableName, readTable(u"%1/%2/%3.json"_s.arg(d->stringsPath(), language, tableName)));
            if (auto found = it->constFind(key); found != it->constEnd())
                return *found;
        }
    }
    return value.isEmpty() ? key : value;
}

QStringList VeltoBundle::preferredLanguages()
{
    const QStringList stored = VeltoUserDefaults::standardUserDefaults()->objectForKey(PreferredLanguagesKey).toStringList();
    if (!stored.isEmpty())
        return stored;
    // The C and POSIX locales name no language; their messages are English.
    QStringList languages = QLocale::system().uiLanguages();
    for (QString &language : languages) {
        if (language == u"C" || language == u"POSIX")
            language = u"en"_s;
    }
    languages.removeDuplicates();
    return languages;
}

std::shared_ptr<const VeltoBundle> VeltoBundle::mainBundle()
{
    static const auto bundle = std::make_shared<const VeltoBundle>(u":"_s);
    return bundle;
}

std::shared_ptr<const VeltoBundle> VeltoBundle::bundleForClass(const QMetaObject *metaObject)
{
    const QString binary = canonicalBinaryPath(metaObject);
    if (binary.isEmpty())
        return nullptr;
    BinaryRegistry &binaries = registry();
    {
        QMutexLocker locker(&binaries.mutex);
        if (auto found = binaries.bundles.constFind(binary); found != binaries.bundles.constEnd())
            return *found;
    }
    if (binary == QFileInfo(u"/proc/self/exe"_s).canonicalFilePath())
        return mainBundle();
    return nullptr;
}

bool VeltoBundle::registerBundleForBinaryContaining(const void *address, std::shared_ptr<const VeltoBundle> bundle)
{
    const QString binary = canonicalBinaryPath(address);
    if (binary.isEmpty())
        return false;
    BinaryRegistry &binaries = registry();
    QMutexLocker locker(&binaries.mutex);
    binaries.bundles.insert(binary, std::move(bundle));
    return true;
}
