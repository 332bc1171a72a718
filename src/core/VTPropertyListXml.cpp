// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTPropertyListXml_p.h"

#include "VTPropertyListKind_p.h"
#include "VeltoPropertyList.h"

#include <QDateTime>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

QString realText(double value)
{
    if (std::isnan(value))
        return u"nan"_s;
    if (std::isinf(value))
        return value > 0 ? u"+infinity"_s : u"-infinity"_s;
    return QString::number(value, 'g', 17);
}

// Text with its carriage returns as character references: a bare one would read back as a line feed.
void writeText(QXmlStreamWriter &xml, const QString &element, const QString &text)
{
    if (!text.contains(u'\r')) {
        xml.writeTextElement(element, text);
        return;
    }
    xml.writeStartElement(element);
    const QStringList pieces = text.split(u'\r');
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        if (i > 0)
            xml.writeEntityReference(u"#13"_s);
        xml.writeCharacters(pieces.at(i));
    }
    xml.writeEndElement();
}

void writeValue(QXmlStreamWriter &xml, const QVariant &value)
{
    switch (propertyListKind(value)) {
    case VTPropertyListKind::Boolean:
        xml.writeEmptyElement(value.toBool() ? u"true"_s : u"false"_s);
        break;
    case VTPropertyListKind::UnsignedInteger:
        xml.writeTextElement(u"integer"_s, QString::number(value.toULongLong()));
        break;
    case VTPropertyListKind::Integer:
        xml.writeTextElement(u"integer"_s, QString::number(value.toLongLong()));
        break;
    case VTPropertyListKind::Real:
        xml.writeTextElement(u"real"_s, realText(value.toDouble()));
        break;
    case VTPropertyListKind::String:
        writeText(xml, u"string"_s, value.toString());
        break;
    case VTPropertyListKind::Data:
        xml.writeTextElement(u"data"_s, QString::fromLatin1(value.toByteArray().toBase64()));
        break;
    case VTPropertyListKind::Date:
        xml.writeTextElement(u"date"_s, value.toDateTime().toUTC().toString(Qt::ISODateWithMs));
        break;
    case VTPropertyListKind::Array:
        xml.writeStartElement(u"array"_s);
        for (const QVariant &element : value.toList())
            writeValue(xml, element);
        xml.writeEndElement();
        break;
    case VTPropertyListKind::Dictionary: {
        xml.writeStartElement(u"dict"_s);
        const QVariantMap map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it) {
            writeText(xml, u"key"_s, it.key());
            writeValue(xml, it.value());
        }
        xml.writeEndElement();
        break;
    }
    case VTPropertyListKind::None:
        Q_UNREACHABLE();
    }
}

class Reader
{
public:
    explicit Reader(const QByteArray &data) : xml(data) {}

    std::optional<QVariant> document()
    {
        if (!nextElement() || xml.name() != u"plist")
            return fail(u"the document is not a property list"_s);
        if (!nextElement())
            return fail(u"the property list holds no value"_s);
        std::optional<QVariant> root = value(0);
        if (!root)
            return std::nullopt;
        // Nothing but the closing </plist> may follow.
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement() || (xml.isCharacters() && !xml.isWhitespace()))
                return fail(u"unexpected content after the value"_s);
        }
        if (xml.hasError())
            return fail(xml.errorString());
        return root;
    }

    QString error;

private:
    QXmlStreamReader xml;
    qint64 valueCount = 0;

    std::nullopt_t fail(const QString &message)
    {
        if (error.isEmpty())
            error = u"%1 (line %2)"_s.arg(xml.hasError() ? xml.errorString() : message).arg(xml.lineNumber());
        return std::nullopt;
    }

    // Advances to the next start element of this level; false at the parent's end element.
    bool nextElement()
    {
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement())
                return true;
            if (xml.isEndElement())
                return false;
            if (xml.isCharacters() && !xml.isWhitespace())
                return false;
        }
        return false;
    }

    std::optional<QString> text()
    {
        const QString content = xml.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
        if (xml.hasError())
            return fail(xml.errorString());
        return content;
    }

    // Reads the element the reader stands on.
    std::optional<QVariant> value(int depth)
    {
        if (depth > VeltoPropertyList::MaximumDepth)
            return fail(u"nesting deeper than %1 levels"_s.arg(VeltoPropertyList::MaximumDepth));
        if (++valueCount > VeltoPropertyList::MaximumValueCount)
            return fail(u"the property list holds more than %1 values"_s.arg(VeltoPropertyList::MaximumValueCount));
        const auto name = xml.name();
        if (name == u"dict")
            return dictionary(depth);
        if (name == u"array")
            return array(depth);
        if (name == u"true" || name == u"false") {
            const bool flag = name == u"true";
            std::optional<QString> content = text();
            if (!content)
                return std::nullopt;
            if (!content->trimmed().isEmpty())
                return fail(u"a boolean element has content"_s);
            return QVariant(flag);
        }
        if (name == u"string")
            return scalar([](const QString &s) { return std::optional<QVariant>(s); });
        if (name == u"integer")
            return scalar([](const QString &s) -> std::optional<QVariant> {
                bool ok = false;
                const qint64 number = s.trimmed().toLongLong(&ok);
                if (ok)
                    return QVariant(number);
                const quint64 unsignedNumber = s.trimmed().toULongLong(&ok);
                return ok ? std::optional<QVariant>(QVariant(unsignedNumber)) : std::nullopt;
            });
        if (name == u"real")
            return scalar([](const QString &s) -> std::optional<QVariant> {
                const QString t = s.trimmed().toLower();
                if (t == u"nan")
                    return QVariant(std::nan(""));
                if (t == u"+infinity" || t == u"infinity" || t == u"inf")
                    return QVariant(std::numeric_limits<double>::infinity());
                if (t == u"-infinity" || t == u"-inf")
                    return QVariant(-std::numeric_limits<double>::infinity());
                bool ok = false;
                const double number = t.toDouble(&ok);
                return ok ? std::optional<QVariant>(number) : std::nullopt;
            });
        if (name == u"date")
            return scalar([](const QString &s) -> std::optional<QVariant> {
                const QDateTime date = QDateTime::fromString(s.trimmed(), Qt::ISODateWithMs).toUTC();
                return VTPropertyListDates::isStorable(date) ? std::optional<QVariant>(date) : std::nullopt;
            });
        if (name == u"data")
            return scalar([](const QString &s) -> std::optional<QVariant> {
                QByteArray base64 = s.toLatin1();
                base64.removeIf([](char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; });
                auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
                return decoded ? std::optional<QVariant>(*decoded) : std::nullopt;
            });
        return fail(u"unknown element <%1>"_s.arg(name.toString()));
    }

    template <typename Convert>
    std::optional<QVariant> scalar(Convert convert)
    {
        const QString element = xml.name().toString();
        std::optional<QString> content = text();
        if (!content)
            return std::nullopt;
        std::optional<QVariant> result = convert(*content);
        if (!result)
            return fail(u"invalid <%1> value \"%2\""_s.arg(element, content->left(40)));
        return result;
    }

    std::optional<QVariant> array(int depth)
    {
        QVariantList list;
        while (nextElement()) {
            std::optional<QVariant> element = value(depth + 1);
            if (!element)
                return std::nullopt;
            list.append(*element);
        }
        if (xml.hasError() || !xml.isEndElement())
            return fail(u"malformed <array>"_s);
        return list;
    }

    std::optional<QVariant> dictionary(int depth)
    {
        QVariantMap map;
        while (nextElement()) {
            if (xml.name() != u"key")
                return fail(u"<dict> entry without <key>"_s);
            std::optional<QString> key = text();
            if (!key)
                return std::nullopt;
            if (!nextElement())
                return fail(u"<key>%1</key> has no value"_s.arg(key->left(40)));
            if (map.contains(*key))
                return fail(u"the key \"%1\" appears twice"_s.arg(key->left(40)));
            std::optional<QVariant> element = value(depth + 1);
            if (!element)
                return std::nullopt;
            map.insert(*key, *element);
        }
        if (xml.hasError() || !xml.isEndElement())
            return fail(u"malformed <dict>"_s);
        return map;
    }
};

} // namespace

QByteArray VTPropertyListXml::write(const QVariant &root)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    xml.writeStartElement(u"plist"_s);
    xml.writeAttribute(u"version"_s, u"1.0"_s);
    writeValue(xml, root);
    xml.writeEndElement();
    xml.writeEndDocument();
    return out;
}

std::optional<QVariant> VTPropertyListXml::read(const QByteArray &xml, QString *errorMessage)
{
    Reader reader(xml);
    std::optional<QVariant> result = reader.document();
    if (!result && errorMessage)
        *errorMessage = reader.error;
    return result;
}
