// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoPaths.h"

#include "VeltoSystemInfo.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

// The last path component of a path: [start, end), trailing "/" left out.
struct Component
{
    qsizetype start = 0;
    qsizetype end = 0;
};

Component lastComponent(QStringView path)
{
    qsizetype end = path.size();
    while (end > 0 && path[end - 1] == u'/')
        --end;
    const qsizetype slash = end > 0 ? path.first(end).lastIndexOf(u'/') : -1;
    return {slash + 1, end};
}

// Where the extension's dot lies in the last component, or -1 when it has none.
qsizetype extensionDot(QStringView path, Component component)
{
    const qsizetype dot = path.first(component.end).lastIndexOf(u'.');
    return dot > component.start && dot < component.end - 1 ? dot : -1;
}

// The extension of the last component, without its dot; empty when there is none.
QStringView extensionOf(QStringView path)
{
    const Component component = lastComponent(path);
    const qsizetype dot = extensionDot(path, component);
    return dot < 0 ? QStringView() : path.sliced(dot + 1, component.end - dot - 1);
}

} // namespace

bool hasPathExtensionVelto(QStringView path, QStringView extension)
{
    return extensionOf(path).compare(extension, Qt::CaseInsensitive) == 0;
}

QString pathExtensionVelto(QStringView path)
{
    return extensionOf(path).toString();
}

QString stringByAppendingPathComponentVelto(const QString &path, const QString &component)
{
    const QString raw = path.isEmpty() || component.isEmpty() ? path + component : path + u'/' + component;
    QString joined;
    joined.reserve(raw.size());
    for (QChar unit : raw) {
        if (unit != u'/' || !joined.endsWith(u'/'))
            joined += unit;
    }
    if (joined.size() > 1 && joined.endsWith(u'/'))
        joined.chop(1);
    return joined;
}

QString stringByChangingPathExtensionVelto(const QString &path, QStringView extension)
{
    const Component component = lastComponent(path);
    if (component.start == component.end)
        return path;
    const qsizetype dot = extensionDot(path, component);
    QString result = path.first(dot < 0 ? component.end : dot);
    if (!extension.isEmpty()) {
        result += u'.';
        result += extension;
    }
    return result;
}

QString stringByPathEquivalence(const QString &path)
{
    if (path == u"~" || path.startsWith(u"~/"))
        return QDir::cleanPath(VeltoSystem_RealHomeFolder() + path.sliced(1));
    return QDir::cleanPath(path);
}

bool isPathEquivalent(const QString &path, const QString &other)
{
    return stringByPathEquivalence(path).compare(stringByPathEquivalence(other), Qt::CaseInsensitive) == 0;
}

bool isPathInFolder(const QString &path, const QString &folder)
{
    const QString equivalent = stringByPathEquivalence(path);
    if (equivalent.isEmpty() || equivalent == u"/")
        return false;
    const qsizetype slash = equivalent.lastIndexOf(u'/');
    const QString parent = slash < 0 ? QString() : (slash == 0 ? u"/"_s : equivalent.first(slash));
    return isPathEquivalent(parent, folder);
}

bool isPathDescendantOf(const QString &path, const QString &folder)
{
    if (path.isNull() || folder.isNull())
        return false;
    return stringByPathEquivalence(path).startsWith(stringByPathEquivalence(folder));
}

QSet<QString> setWithComponentsSeparatedByString(const QString &string, const QString &separator)
{
    if (string.isEmpty())
        return {};
    if (separator.isEmpty())
        return {string};
    QStringList pieces = string.split(separator);
    // A trailing separator leaves an empty last piece; it does not count.
    if (pieces.size() > 1 && pieces.constLast().isEmpty())
        pieces.removeLast();
    return QSet<QString>(pieces.cbegin(), pieces.cend());
}

} // namespace velto
