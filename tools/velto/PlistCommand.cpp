// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto plist FILE` prints a property list of either format as indented text; --xml and --binary
// convert it, to standard output or to the file given with -o.

#include "Commands.h"

#include "VeltoPropertyList.h"

#include <QDateTime>
#include <QFile>
#include <QSaveFile>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QString quotedString(const QString &text)
{
    QString out = u"\""_s;
    for (QChar c : text) {
        if (c == u'"' || c == u'\\')
            out += u'\\' + QString(c);
        else if (c == u'\n')
            out += u"\\n"_s;
        else if (c == u'\r')
            out += u"\\r"_s;
        else if (c == u'\t')
            out += u"\\t"_s;
        else if (c.unicode() < 0x20)
            out += u"\\u%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
        else
            out += c;
    }
    return out + u'"';
}

// One value as indented text: dictionaries in braces with quoted keys, arrays in brackets, strings
// quoted, reals always with a point or an exponent, data as hex in angle brackets, dates in ISO form.
QString text(const QVariant &value, int indent)
{
    const QString inner(indent + 2, u' ');
    const QString closing(indent, u' ');
    switch (value.typeId()) {
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        if (map.isEmpty())
            return u"{}"_s;
        QString out = u"{\n"_s;
        for (auto it = map.begin(); it != map.end(); ++it)
            out += inner + quotedString(it.key()) + u" = "_s + text(it.value(), indent + 2) + u'\n';
        return out + closing + u'}';
    }
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        if (list.isEmpty())
            return u"[]"_s;
        QString out = u"[\n"_s;
        for (const QVariant &element : list)
            out += inner + text(element, indent + 2) + u'\n';
        return out + closing + u']';
    }
    case QMetaType::QString:
        return quotedString(value.toString());
    case QMetaType::Bool:
        return value.toBool() ? u"true"_s : u"false"_s;
    case QMetaType::Double: {
        QString number = QString::number(value.toDouble(), 'g', 17);
        if (!number.contains(u'.') && !number.contains(u'e') && !number.contains(u'n'))
            number += u".0"_s;
        return number;
    }
    case QMetaType::QByteArray:
        return u'<' + QString::fromLatin1(value.toByteArray().toHex(' ')) + u'>';
    case QMetaType::QDateTime:
        return value.toDateTime().toUTC().toString(Qt::ISODateWithMs);
    default: // whole numbers
        return value.toString();
    }
}

bool writeTo(const QString &path, const QByteArray &bytes, QString *problem)
{
    if (path.isEmpty()) {
        std::fflush(stdout);
        QFile out;
        if (out.open(stdout, QIODevice::WriteOnly) && out.write(bytes) == bytes.size())
            return true;
        *problem = u"cannot write to standard output: %1"_s.arg(out.errorString());
        return false;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    *problem = u"cannot write %1: %2"_s.arg(path, file.errorString());
    return false;
}

int runPlist(const CommandLine &line)
{
    if (line.isSet(u"xml"_s) && line.isSet(u"binary"_s))
        return line.usageError(u"--xml and --binary exclude each other"_s);
    const QString path = line.arguments.first();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return line.failure(u"cannot read %1: %2"_s.arg(path, file.errorString()));
    VeltoError error;
    VeltoPropertyListFormat format = VeltoPropertyListXMLFormat;
    const std::optional<QVariant> value = VeltoPropertyList::read(file.readAll(), &format, &error);
    if (!value)
        return line.failure(u"%1: %2"_s.arg(path, error.descriptionForUserVelto()));

    QByteArray output;
    if (line.isSet(u"xml"_s) || line.isSet(u"binary"_s)) {
        output = VeltoPropertyList::write(*value, line.isSet(u"xml"_s) ? VeltoPropertyListXMLFormat : VeltoPropertyListBinaryFormat, &error);
        if (output.isNull())
            return line.failure(error.descriptionForUserVelto());
    } else {
        output = (text(*value, 0) + u'\n').toUtf8();
    }
    line.out.flush();
    QString problem;
    return writeTo(line.value(u"output"_s), output, &problem) ? int(ExitSuccess) : line.failure(problem);
}

const bool registered = registerCommand({
    .name = "plist",
    .summary = "print or convert a property list",
    .synopsis = {"[--xml | --binary] [-o FILE] FILE"},
    .description = "Reads FILE, a property list in the XML or the binary format (told apart by its first bytes), "
                   "and prints it as indented text: dictionaries in braces with quoted keys, arrays in brackets, "
                   "strings in quotes, reals with a decimal point, data as hex in angle brackets and dates in ISO "
                   "form. With --xml or --binary it writes the property list in that format instead. A file that "
                   "is no property list, or a value the chosen format cannot hold, is reported with status 1.",
    .options = {QCommandLineOption(u"xml"_s, u"Write the property list as XML."_s),
                QCommandLineOption(u"binary"_s, u"Write the property list in the binary format."_s),
                QCommandLineOption({u"o"_s, u"output"_s}, u"Write to FILE instead of standard output."_s, u"FILE"_s)},
    .arguments = {1, 1},
    .run = runPlist,
});

} // namespace
