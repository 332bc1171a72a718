// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Url+VeltoAdditions.h"

#include "String+VeltoPaths.h"
#include "String+VeltoURLAdditions.h"
#include "VTURLRules_p.h"
#include "VeltoApplication.h"
#include "VeltoCharacterSet.h"
#include "VeltoFileIdentity.h"
#include "VeltoFileManager.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MaximumLooseTextLength = 600;

QUrl strictURL(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    return url.isValid() ? url : QUrl();
}

// \a text decoded, or \a text itself when it does not decode.
QString decodedOrAsWritten(const QString &text)
{
    const QString decoded = velto::stringByRemovingVeltoPercentEncoding(text);
    return decoded.isNull() ? text : decoded;
}

// What follows "~/" in a resource specifier, read as a path in the real home folder.
QString realHomePathFor(const QString &rest)
{
    const auto end = std::find_if(rest.cbegin(), rest.cend(), [](QChar unit) { return unit == u'#' || unit == u'?'; });
    const QString path = decodedOrAsWritten(QString(rest.cbegin(), end - rest.cbegin()));
    return velto::stringByAppendingPathComponentVelto(VeltoFileManager::userHomeFolderURL().toLocalFile(), path);
}

// Everything after "scheme:", as written (percent-encoded).
QString resourceSpecifier(const QUrl &url)
{
    return url.toString(QUrl::RemoveScheme | QUrl::FullyEncoded);
}

std::optional<struct stat> linkStatus(const QUrl &url)
{
    struct stat status;
    if (!url.isLocalFile() || ::lstat(QFile::encodeName(url.toLocalFile()).constData(), &status) != 0)
        return std::nullopt;
    return status;
}

// For keys and values of a query: the URL set without the characters that separate query parts.
QString encodedQueryPart(const QString &text)
{
    QString encoded = velto::stringByAddingVeltoPercentEncoding(text);
    encoded.replace(u'&', u"%26"_s).replace(u'=', u"%3D"_s).replace(u'+', u"%2B"_s);
    return encoded.replace(u'#', u"%23"_s).replace(u'?', u"%3F"_s);
}

} // namespace

QUrl VTURLFromString(const QString &text)
{
    if (text.isEmpty() || text.size() > MaximumLooseTextLength)
        return QUrl();
    const QUrl parsed = strictURL(text);
    if (!parsed.isValid())
        return QUrl();
    if (text.startsWith(u'#') || !parsed.scheme().isEmpty())
        return parsed;
    if (text.startsWith(u'/'))
        return strictURL(u"file://"_s + text);
    // QUrl takes no "~" for a host, so "~/x" is written "file:~/x"; veltoFilePath() reads both forms.
    if (text.startsWith(u'~'))
        return strictURL(u"file:"_s + text);
    if (text.contains(u'@')) {
        const QUrl mail = strictURL(u"mailto:"_s + text);
        if (mail.isValid())
            return mail;
    }
    const QString host = text.section(u'/', 0, 0);
    if (host.contains(u'.') && !host.contains(u' '))
        return strictURL(u"http://"_s + text);
    return QUrl();
}

QUrl VTRealFileForContainerURL(const QUrl &url, const QString &containerDataFolder, const QString &homeFolder)
{
    if (!url.isLocalFile() || containerDataFolder.isEmpty())
        return url;
    const QString path = velto::stringByPathEquivalence(url.toLocalFile());
    const QString prefix = velto::stringByPathEquivalence(containerDataFolder) + u'/';
    if (!path.startsWith(prefix))
        return url;
    const QUrl candidate = QUrl::fromLocalFile(velto::stringByAppendingPathComponentVelto(homeFolder, path.sliced(prefix.size())));
    return velto::isFileEqualNodeAsURL(candidate, url) ? candidate : url;
}

namespace velto {

bool hasTildePrefixInVeltoPath(const QString &path, QUrl *fullURL)
{
    if (!path.startsWith(u'~'))
        return false;
    if (fullURL) {
        const QString rest = path.sliced(path.startsWith(u"~/") ? 2 : 1);
        *fullURL = QUrl::fromLocalFile(realHomePathFor(rest));
    }
    return true;
}

QUrl fileURLWithVeltoPath(const QString &path)
{
    if (path.isEmpty())
        return QUrl();
    QUrl url;
    if (hasTildePrefixInVeltoPath(path, &url))
        return url;
    return QUrl::fromLocalFile(QDir::isAbsolutePath(path) ? path : QDir::current().filePath(path));
}

QUrl URLWithVeltoValidatedString(const QString &text)
{
    if (text.size() > MaximumLooseTextLength)
        return QUrl();
    const VeltoCharacterSet &lineBreaks = VeltoCharacterSet::newlineCharacterSet();
    const auto isLineBreak = [&lineBreaks](QChar unit) { return lineBreaks.contains(unit.unicode()); };
    const auto firstBreak = std::find_if(text.cbegin(), text.cend(), isLineBreak);
    if (firstBreak == text.cend())
        return VTURLFromString(text);
    QString joined = text;
    joined.removeIf(isLineBreak);
    for (const QString &candidate : {joined, QString(text.cbegin(), firstBreak - text.cbegin())}) {
        const QUrl url = VTURLFromString(candidate);
        if (url.isValid() && !url.isEmpty())
            return url;
    }
    return VTURLFromString(text);
}

QUrl URLByResolvingSymlinkOrAliasFile(const QUrl &url)
{
    const std::optional<struct stat> status = linkStatus(url);
    if (!status || !S_ISLNK(status->st_mode))
        return url;
    const QString target = QFileInfo(url.toLocalFile()).canonicalFilePath();
    return target.isEmpty() ? url : QUrl::fromLocalFile(target);
}

QUrl URLByResolvingToRealFileOutsideSandbox(const QUrl &url)
{
    if (!VeltoApplication::isRunningInsideSandbox())
        return url;
    const QUrl container = VeltoFileManager::applicationSandboxFolderURL();
    if (container.isEmpty())
        return url;
    return VTRealFileForContainerURL(url, container.toLocalFile() + u"data"_s,
                                     VeltoFileManager::userHomeFolderURL().toLocalFile());
}

QVariant resourceValueForKey(const QUrl &url, VeltoURLResourceKey key, const QVariant &defaultValueVelto)
{
    const std::optional<struct stat> status = linkStatus(url);
    if (!status)
        return defaultValueVelto;
    switch (key) {
    case VeltoURLResourceKey::IsDirectory:
        return S_ISDIR(status->st_mode);
    case VeltoURLResourceKey::IsRegularFile:
        return S_ISREG(status->st_mode);
    case VeltoURLResourceKey::IsSymbolicLink:
        return S_ISLNK(status->st_mode);
    case VeltoURLResourceKey::FileSize:
        return qint64(status->st_size);
    case VeltoURLResourceKey::ContentModificationDate:
        return QDateTime::fromMSecsSinceEpoch(qint64(status->st_mtim.tv_sec) * 1000 + status->st_mtim.tv_nsec / 1000000);
    }
    return defaultValueVelto;
}

bool boolResourceValueForKey(const QUrl &url, VeltoURLResourceKey key)
{
    return resourceValueForKey(url, key, false).toBool();
}

bool isFileDirectoryVelto(const QUrl &url)
{
    return boolResourceValueForKey(url, VeltoURLResourceKey::IsDirectory);
}

bool isFileEquivalentPathAsURL(const QUrl &url, const QUrl &other)
{
    if (url.isEmpty() || other.isEmpty())
        return false;
    return url == other || isPathEquivalent(url.path(), other.path());
}

bool isFileEqualNodeAsURL(const QUrl &url, const QUrl &other)
{
    if (isFileEquivalentPathAsURL(url, other))
        return true;
    const std::optional<VeltoFileIdentity> identity = VeltoFileIdentity::ofURL(url);
    return identity && identity == VeltoFileIdentity::ofURL(other);
}

bool isFileInFolderAtURL(const QUrl &url, const QUrl &folder)
{
    return url.isLocalFile() && folder.isLocalFile() && isPathInFolder(url.toLocalFile(), folder.toLocalFile());
}

bool isFileInDescendentOfFolderAtURL(const QUrl &url, const QUrl &folder)
{
    return url.isLocalFile() && folder.isLocalFile() && isPathDescendantOf(url.toLocalFile(), folder.toLocalFile());
}

QString fileSubpathDescendingFromEnclosingFolderURL(const QUrl &url, const QUrl &folder)
{
    if (url.isEmpty() || folder.isEmpty())
        return QString();
    const QString path = stringByPathEquivalence(url.path());
    QString folderPath = stringByPathEquivalence(folder.path());
    if (path.compare(folderPath, Qt::CaseInsensitive) == 0)
        return u""_s;
    if (!folderPath.endsWith(u'/'))
        folderPath += u'/';
    if (folderPath.size() > path.size() || !path.startsWith(folderPath, Qt::CaseInsensitive))
        return QString();
    return path.sliced(folderPath.size());
}

QString filePathForUserDisplay(const QUrl &url)
{
    return url.isLocalFile() ? VeltoFileManager::pathByAbbreviatingRealHomeWithTilde(url.toLocalFile())
                             : veltoStringifyWithoutPercentEncoding(url);
}

QString filePathForDebugDisplay(const QUrl &url)
{
    return url.isLocalFile() ? url.toLocalFile() : veltoStringifyWithoutPercentEncoding(url);
}

QString veltoStringify(const QUrl &url)
{
    return url.toString(QUrl::FullyEncoded);
}

QString veltoStringifyWithoutPercentEncoding(const QUrl &url)
{
    return decodedOrAsWritten(veltoStringify(url));
}

QString veltoFilePath(const QUrl &url)
{
    return veltoFilePathRelativeToBaseURL(url, QUrl());
}

QString veltoFilePathRelativeToBaseURL(const QUrl &url, const QUrl &base)
{
    if (!url.isLocalFile())
        return QString();
    const QString specifier = resourceSpecifier(url);
    if (specifier.startsWith(u"~/"))
        return realHomePathFor(specifier.sliced(2));
    if (specifier.startsWith(u"//~/"))
        return realHomePathFor(specifier.sliced(4));
    if (!base.isEmpty() && specifier.startsWith(u"//") && !specifier.startsWith(u"///")
        && !specifier.startsWith(u"//localhost/"))
        return stringByAppendingPathComponentVelto(base.path(), decodedOrAsWritten(specifier.sliced(2)));
    return url.path();
}

bool hasFilePathExtensionVelto(const QUrl &url, QStringView extension)
{
    return hasPathExtensionVelto(url.path(), extension);
}

QUrl URLByPercentEncodingStringVelto(const QString &text, const QMap<QString, QString> &queryStringArguments)
{
    QString written = stringByAddingVeltoPercentEncoding(text);
    if (!queryStringArguments.isEmpty()) {
        QStringList pairs;
        for (auto argument = queryStringArguments.cbegin(); argument != queryStringArguments.cend(); ++argument)
            pairs << encodedQueryPart(argument.key()) + u'=' + encodedQueryPart(argument.value());
        written += u'?' + pairs.join(u'&');
    }
    return strictURL(written);
}

QMap<QString, QString> veltoQueryStringDictionary(const QUrl &url)
{
    QMap<QString, QString> dictionary;
    const QStringList pairs = url.query(QUrl::FullyEncoded).split(u'&', Qt::SkipEmptyParts);
    for (const QString &pair : pairs) {
        const qsizetype equals = pair.indexOf(u'=');
        const QString key = stringByRemovingVeltoPercentEncoding(equals < 0 ? pair : pair.first(equals));
        const QString value = equals < 0 ? u""_s : stringByRemovingVeltoPercentEncoding(pair.sliced(equals + 1));
        if (!key.isNull() && !value.isNull())
            dictionary.insert(key, value);
    }
    return dictionary;
}

} // namespace velto
