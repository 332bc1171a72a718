// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoPropertyList.h"

#include "VTPropertyListBinary_p.h"
#include "VTPropertyListKind_p.h"
#include "VTPropertyListXml_p.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

VeltoError propertyListError(VeltoCocoaErrorCode code, const QString &detail)
{
    const QString text = code == VeltoCocoaErrorPropertyListReadCorrupt ? u"The property list cannot be read: %1."_s
                                                                         : u"The property list cannot be written: %1."_s;
    return VeltoError(VeltoCocoaErrorDomain, code, {{VeltoLocalizedDescriptionKey, text.arg(detail)}});
}

// The first character of text that the format cannot store: an unpaired surrogate in either format,
// and in XML the characters outside XML 1.0's character range.
std::optional<char16_t> unstorableCharacter(QStringView text, VeltoPropertyListFormat format)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        if (QChar::isSurrogate(c))
            return c;
        if (format == VeltoPropertyListXMLFormat
            && ((c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') || c == 0xFFFE || c == 0xFFFF))
            return c;
    }
    return std::nullopt;
}

// Walks a value before it is written and names the first part the format cannot store, so that a
// document is either complete or not written at all.
class WritableCheck
{
public:
    explicit WritableCheck(VeltoPropertyListFormat format) : format(format) {}

    bool value(const QVariant &value, int depth)
    {
        if (depth > VeltoPropertyList::MaximumDepth)
            return reject(u"nests deeper than %1 levels"_s.arg(VeltoPropertyList::MaximumDepth));
        if (++count > VeltoPropertyList::MaximumValueCount)
            return reject(u"makes the property list hold more than %1 values"_s.arg(VeltoPropertyList::MaximumValueCount));
        switch (propertyListKind(value)) {
        case VTPropertyListKind::None:
            return reject(value.isValid() ? u"is a %1, which is not a property-list value"_s.arg(QLatin1StringView(value.typeName()))
                                          : u"is an invalid QVariant, which is not a property-list value"_s);
        case VTPropertyListKind::String:
            return string(value.toString());
        case VTPropertyListKind::Date:
            return VTPropertyListDates::isStorable(value.toDateTime())
                || reject(u"is a date outside the years 1 to 9999 (or invalid)"_s);
        case VTPropertyListKind::Array: {
            const QVariantList list = value.toList();
            for (qsizetype i = 0; i < list.size(); ++i) {
                path.append({QString(), i});
                if (!this->value(list.at(i), depth + 1))
                    return false;
                path.removeLast();
            }
            return true;
        }
        case VTPropertyListKind::Dictionary: {
            const QVariantMap map = value.toMap();
            for (auto it = map.begin(); it != map.end(); ++it) {
                path.append({it.key(), -1});
                if (!string(it.key(), u"has a key"_s) || !this->value(it.value(), depth + 1))
                    return false;
                path.removeLast();
            }
            return true;
        }
        default:
            return true;
        }
    }

    QString problem;

private:
    // Where the walk is: an index into an array, or (index -1) a key. Formatted only for the error.
    struct Step
    {
        QString key;
        qsizetype index;
    };

    VeltoPropertyListFormat format;
    qint64 count = 0;
    QList<Step> path;

    bool string(const QString &text, const QString &what = u"is a string"_s)
    {
        const std::optional<char16_t> bad = unstorableCharacter(text, format);
        if (!bad)
            return true;
        const QString code = u"U+"_s + QString::number(uint(*bad), 16).rightJustified(4, u'0').toUpper();
        return reject(QChar::isSurrogate(*bad) ? u"%1 with the unpaired surrogate %2"_s.arg(what, code)
                                               : u"%1 with %2, which XML cannot carry"_s.arg(what, code));
    }

    bool reject(const QString &what)
    {
        QString place = u"root"_s;
        for (const Step &step : std::as_const(path))
            place += step.index >= 0 ? u"[%1]"_s.arg(step.index) : u"[\"%1\"]"_s.arg(step.key.left(40));
        problem = u"%1 %2"_s.arg(place, what);
        return false;
    }
};

} // namespace

std::optional<VeltoPropertyListFormat> VeltoPropertyList::formatOfData(const QByteArray &data)
{
    if (data.startsWith(VTPropertyListBinary::Magic))
        return VeltoPropertyListBinaryFormat;
    QByteArrayView text(data);
    for (QByteArrayView mark : {QByteArrayView("\xEF\xBB\xBF"), QByteArrayView("\xFE\xFF"), QByteArrayView("\xFF\xFE")}) {
        if (text.startsWith(mark)) {
            // A UTF-16 document is XML; its encoding is the XML reader's business.
            if (mark.size() == 2)
                return VeltoPropertyListXMLFormat;
            text = text.sliced(mark.size());
        }
    }
    const auto first = std::find_if(text.begin(), text.end(), [](char c) { return !QChar::isSpace(uchar(c)); });
    if (first != text.end() && *first == '<')
        return VeltoPropertyListXMLFormat;
    return std::nullopt;
}

std::optional<QVariant> VeltoPropertyList::read(const QByteArray &data, VeltoPropertyListFormat *format, VeltoError *error)
{
    const std::optional<VeltoPropertyListFormat> detected = formatOfData(data);
    QString message;
    std::optional<QVariant> value;
    if (!detected) {
        if (data.isEmpty())
            message = u"the data is empty"_s;
        else if (data.startsWith("bplist"))
            message = u"binary version \"%1\" is not supported (only \"bplist00\")"_s.arg(QString::fromLatin1(data.left(8).toPercentEncoding()));
        else
            message = u"the data is neither an XML nor a binary property list"_s;
    } else if (*detected == VeltoPropertyListBinaryFormat) {
        value = VTPropertyListBinary::read(data, &message);
    } else {
        value = VTPropertyListXml::read(data, &message);
    }
    if (!value) {
        if (error)
            *error = propertyListError(VeltoCocoaErrorPropertyListReadCorrupt, message);
        return std::nullopt;
    }
    if (format)
        *format = *detected;
    return value;
}

QByteArray VeltoPropertyList::write(const QVariant &root, VeltoPropertyListFormat format, VeltoError *error)
{
    WritableCheck check(format);
    if (format != VeltoPropertyListXMLFormat && format != VeltoPropertyListBinaryFormat)
        check.problem = u"format %1 is not a property-list format"_s.arg(int(format));
    else
        check.value(root, 0);
    if (!check.problem.isEmpty()) {
        if (error)
            *error = propertyListError(VeltoCocoaErrorPropertyListWriteInvalid, check.problem);
        return {};
    }
    return format == VeltoPropertyListBinaryFormat ? VTPropertyListBinary::write(root) : VTPropertyListXml::write(root);
}

bool VeltoPropertyList::isPropertyListValue(const QVariant &value)
{
    switch (propertyListKind(value)) {
    case VTPropertyListKind::None:
        return false;
    case VTPropertyListKind::Date:
        return value.toDateTime().isValid();
    case VTPropertyListKind::Array: {
        const QVariantList list = value.toList();
        return std::all_of(list.begin(), list.end(), isPropertyListValue);
    }
    case VTPropertyListKind::Dictionary: {
        const QVariantMap map = value.toMap();
        return std::all_of(map.begin(), map.end(), isPropertyListValue);
    }
    default:
        return true;
    }
}

QVariant VeltoPropertyList::normalized(const QVariant &value)
{
    if (!isPropertyListValue(value))
        return {};
    switch (propertyListKind(value)) {
    case VTPropertyListKind::UnsignedInteger: {
        const quint64 number = value.toULongLong();
        return number > quint64(std::numeric_limits<qint64>::max()) ? QVariant(number) : QVariant(qint64(number));
    }
    case VTPropertyListKind::Integer:
        return QVariant(value.toLongLong());
    case VTPropertyListKind::Real:
        return QVariant(value.toDouble());
    case VTPropertyListKind::Date:
        return QVariant(value.toDateTime().toUTC());
    case VTPropertyListKind::Array: {
        QVariantList list;
        for (const QVariant &element : value.toList())
            list.append(normalized(element));
        return list;
    }
    case VTPropertyListKind::Dictionary: {
        QVariantMap map = value.toMap();
        for (QVariant &element : map)
            element = normalized(element);
        return map;
    }
    default:
        return value;
    }
}
