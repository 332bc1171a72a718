// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The guided tour's frame: numbered stops, indented lines, files in the tour's temporary folder.
// A subsystem's stop is a function taking a Tour, registered with registerTourStop() (Commands.h).

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTextStream>

using namespace Qt::StringLiterals;

class Tour
{
public:
    Tour(QTextStream &out, const QString &folder) : out(out), folder(folder) {}

    void stop(const QString &title)
    {
        out << '\n' << u"== %1. %2 "_s.arg(++number).arg(title).leftJustified(78, u'=') << '\n';
    }
    void say(const QString &line) { out << "  " << line << '\n'; out.flush(); }
    QString path(const QString &name) const { return QDir(folder).filePath(name); }
    bool writeFile(const QString &name, const QByteArray &contents) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
    }

    QTextStream &out;
    QString folder;

private:
    int number = 0;
};

/// quoted: \a text in double quotes with line feeds and carriage returns shown as \n and \r.
inline QString quoted(const QString &text)
{
    QString shown = text;
    shown.replace(u'\n', u"\\n"_s).replace(u'\r', u"\\r"_s);
    return u"\"%1\""_s.arg(shown);
}

