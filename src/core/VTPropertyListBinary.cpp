// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTPropertyListBinary_p.h"

#include "VTPropertyListKind_p.h"
#include "VeltoPropertyList.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 TrailerSize = 32;

// Object markers: the high four bits give the type, the low four a size or count.
enum Marker : uchar {
    False = 0x08,
    True = 0x09,
    IntegerType = 0x1,
    RealType = 0x2,
    DateMarker = 0x33,
    DataType = 0x4,
    AsciiType = 0x5,
    Utf16Type = 0x6,
    UidType = 0x8,
    ArrayType = 0xA,
    SetType = 0xC,
    DictionaryType = 0xD,
    CountFollows = 0xF,
};

bool isValidSize(quint64 size)
{
    return size == 1 || size == 2 || size == 4 || size == 8;
}

quint64 bigEndian(const uchar *bytes, quint64 size)
{
    quint64 value = 0;
    for (quint64 i = 0; i < size; ++i)
        value = (value << 8) | bytes[i];
    return value;
}

class Reader
{
public:
    explicit Reader(QByteArrayView data) : bytes(reinterpret_cast<const uchar *>(data.data())), size(quint64(data.size())) {}

    std::optional<QVariant> document()
    {
        if (size < quint64(VTPropertyListBinary::Magic.size()) + 1 + 1 + TrailerSize)
            return fail(u"the file is too short (%1 bytes) to hold a binary property list"_s.arg(size));
        if (std::memcmp(bytes, VTPropertyListBinary::Magic.data(), size_t(VTPropertyListBinary::Magic.size())) != 0)
            return fail(u"the file does not begin with \"bplist00\""_s);
        const uchar *trailer = bytes + size - TrailerSize;
        offsetSize = trailer[6];
        referenceSize = trailer[7];
        objectCount = bigEndian(trailer + 8, 8);
        const quint64 rootObject = bigEndian(trailer + 16, 8);
        tableOffset = bigEndian(trailer + 24, 8);
        if (!isValidSize(offsetSize))
            return fail(u"offset size %1 in the trailer is not 1, 2, 4 or 8"_s.arg(offsetSize));
        if (!isValidSize(referenceSize))
            return fail(u"object reference size %1 in the trailer is not 1, 2, 4 or 8"_s.arg(referenceSize));
        const quint64 trailerStart = size - TrailerSize;
        if (tableOffset < quint64(VTPropertyListBinary::Magic.size()) + 1 || tableOffset >= trailerStart)
            return fail(u"the offset table at %1 lies outside the objects (file of %2 bytes)"_s.arg(tableOffset).arg(size));
        if (objectCount == 0 || objectCount > (trailerStart - tableOffset) / offsetSize)
            return fail(u"the trailer declares %1 objects, but the offset table has room for %2"_s
                            .arg(objectCount).arg((trailerStart - tableOffset) / offsetSize));
        valueLimit = std::min(VeltoPropertyList::MaximumValueCount, qint64(std::max(quint64(VeltoPropertyList::SharedValueAllowance), size)));
        if (rootObject >= objectCount)
            return fail(u"the root object %1 is not among the %2 objects"_s.arg(rootObject).arg(objectCount));
        if (!read(rootObject, 0))
            return std::nullopt;
        return objects.value(rootObject).value;
    }

    QString error;

private:
    // What is known of an object once it was reached: its value, the number of values it stands for
    // and the depth of its deepest descendant below it, so that a shared object is read only once.
    struct Object
    {
        QVariant value;
        qint64 valueCount = 0;
        int height = 0;
        bool complete = false; // false while its own elements are being read: reaching it then is a cycle
    };

    const uchar *bytes;
    quint64 size;
    quint64 offsetSize = 0;
    quint64 referenceSize = 0;
    quint64 objectCount = 0;
    quint64 tableOffset = 0;
    qint64 valueLimit = 0;
    QHash<quint64, Object> objects;

    std::nullopt_t fail(const QString &message)
    {
        if (error.isEmpty())
            error = message;
        return std::nullopt;
    }

    bool reject(const QString &message)
    {
        fail(message);
        return false;
    }

    // Whether \a length bytes starting at \a position lie within the object area.
    bool fits(quint64 position, quint64 length) const
    {
        return position <= tableOffset && length <= tableOffset - position;
    }

    // Reads object \a index, reached at \a depth, into objects; false with the error set on failure.
    bool read(quint64 index, int depth)
    {
        if (const auto known = objects.constFind(index); known != objects.constEnd()) {
            if (!known->complete)
                return reject(u"object %1 contains itself (a reference cycle)"_s.arg(index));
            if (depth + known->height > VeltoPropertyList::MaximumDepth)
                return reject(u"nesting deeper than %1 levels"_s.arg(VeltoPropertyList::MaximumDepth));
            return true;
        }
        if (depth > VeltoPropertyList::MaximumDepth)
            return reject(u"nesting deeper than %1 levels"_s.arg(VeltoPropertyList::MaximumDepth));
        const quint64 offset = bigEndian(bytes + tableOffset + index * offsetSize, offsetSize);
        if (offset < quint64(VTPropertyListBinary::Magic.size()) || offset >= tableOffset)
            return reject(u"object %1 has offset %2, outside the objects (8 to %3)"_s.arg(index).arg(offset).arg(tableOffset));
        objects.insert(index, Object());
        Object object;
        if (!readObject(index, offset, depth, object))
            return false;
        object.complete = true;
        objects.insert(index, object);
        return true;
    }

    bool readObject(quint64 index, quint64 offset, int depth, Object &object)
    {
        const uchar marker = bytes[offset];
        const uchar type = marker >> 4;
        const uchar info = marker & 0x0F;
        quint64 position = offset + 1;
        object.valueCount = 1;
        switch (type) {
        case 0x0:
            if (marker != False && marker != True)
                return reject(u"object %1: marker 0x%2 (null or fill) is not a property-list value"_s.arg(index).arg(uint(marker), 2, 16, QLatin1Char('0')));
            object.value = marker == True;
            return true;
        case IntegerType:
            return readInteger(index, position, info, object.value);
        case RealType: {
            if (info != 2 && info != 3)
                return reject(u"object %1: a real of %2 bytes"_s.arg(index).arg(1 << info));
            const quint64 length = 1ULL << info;
            if (!fits(position, length))
                return reject(u"object %1: the real runs past the objects"_s.arg(index));
            object.value = info == 2 ? double(qFromBigEndian<float>(bytes + position)) : qFromBigEndian<double>(bytes + position);
            return true;
        }
        case DateMarker >> 4:
            return readDate(index, marker, position, object.value);
        case DataType: case AsciiType: case Utf16Type:
            return readBytes(index, type, info, position, object.value);
        case ArrayType: case DictionaryType:
            return readContainer(index, type, info, position, depth, object);
        case UidType:
            return reject(u"object %1: UID objects (keyed archives) are not property-list values"_s.arg(index));
        case SetType:
            return reject(u"object %1: sets are not property-list values"_s.arg(index));
        default:
            return reject(u"object %1: unknown marker 0x%2"_s.arg(index).arg(uint(marker), 2, 16, QLatin1Char('0')));
        }
    }

    bool readInteger(quint64 index, quint64 position, uchar info, QVariant &value)
    {
        if (info > 4)
            return reject(u"object %1: an integer of 2^%2 bytes"_s.arg(index).arg(uint(info)));
        const quint64 length = 1ULL << info;
        if (!fits(position, length))
            return reject(u"object %1: the integer runs past the objects"_s.arg(index));
        if (length <= 4) { // 1, 2 and 4 bytes are unsigned
            value = qint64(bigEndian(bytes + position, length));
        } else if (length == 8) { // 8 bytes are signed
            value = qint64(bigEndian(bytes + position, 8));
        } else { // 16 bytes: the high half only extends the sign of the low half
            const quint64 high = bigEndian(bytes + position, 8);
            const quint64 low = bigEndian(bytes + position + 8, 8);
            if (high == 0)
                value = low > quint64(std::numeric_limits<qint64>::max()) ? QVariant(low) : QVariant(qint64(low));
            else if (high == ~quint64(0) && qint64(low) < 0)
                value = qint64(low);
            else
                return reject(u"object %1: the integer does not fit in 64 bits"_s.arg(index));
        }
        return true;
    }

    bool readDate(quint64 index, uchar marker, quint64 position, QVariant &value)
    {
        if (marker != DateMarker || !fits(position, 8))
            return reject(u"object %1: malformed date"_s.arg(index));
        const double seconds = qFromBigEndian<double>(bytes + position);
        // Beyond ±1e12 s (about 31,700 years) no storable date exists; the bound keeps the conversion exact.
        if (!std::isfinite(seconds) || std::abs(seconds) > 1e12)
            return reject(u"object %1: the date is out of range"_s.arg(index));
        const QDateTime date = QDateTime::fromMSecsSinceEpoch(
            qint64(std::llround(seconds * 1000.0)) + VTPropertyListDates::ReferenceDateMSecsSinceEpoch, Qt::UTC);
        if (!VTPropertyListDates::isStorable(date))
            return reject(u"object %1: the date is out of range (years 1 to 9999)"_s.arg(index));
        value = date;
        return true;
    }

    // The element count of a data, string or container object: the low bits, or an integer object
    // that follows the marker. position moves past it.
    std::optional<quint64> count(quint64 index, uchar info, quint64 &position)
    {
        if (info != CountFollows)
            return info;
        if (!fits(position, 1) || (bytes[position] >> 4) != IntegerType || (bytes[position] & 0x0F) > 3)
            return fail(u"object %1: malformed length"_s.arg(index));
        const quint64 length = 1ULL << (bytes[position] & 0x0F);
        if (!fits(position + 1, length))
            return fail(u"object %1: the length runs past the objects"_s.arg(index));
        const quint64 result = bigEndian(bytes + position + 1, length);
        position += 1 + length;
        return result;
    }

    bool readBytes(quint64 index, uchar type, uchar info, quint64 position, QVariant &value)
    {
        const std::optional<quint64> length = count(index, info, position);
        if (!length)
            return false;
        const quint64 unit = type == Utf16Type ? 2 : 1;
        if (*length > (tableOffset - position) / unit)
            return reject(u"object %1 declares %2 elements, more than the %3 bytes left before the offset table"_s
                                 .arg(index).arg(*length).arg(tableOffset - position));
        const auto *start = bytes + position;
        if (type == DataType) {
            value = QByteArray(reinterpret_cast<const char *>(start), qsizetype(*length));
        } else if (type == AsciiType) {
            for (quint64 i = 0; i < *length; ++i) {
                if (start[i] >= 0x80)
                    return reject(u"object %1: byte 0x%2 in an ASCII string"_s.arg(index).arg(uint(start[i]), 2, 16, QLatin1Char('0')));
            }
            value = QString::fromLatin1(reinterpret_cast<const char *>(start), qsizetype(*length));
        } else {
            QString text(qsizetype(*length), Qt::Uninitialized);
            for (quint64 i = 0; i < *length; ++i)
                text[qsizetype(i)] = QChar(qFromBigEndian<quint16>(start + 2 * i));
            if (!isValidUtf16(text))
                return reject(u"object %1: a UTF-16 string with an unpaired surrogate"_s.arg(index));
            value = text;
        }
        return true;
    }

    static bool isValidUtf16(QStringView text)
    {
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
                ++i;
            else if (text[i].isSurrogate())
                return false;
        }
        return true;
    }

    bool readContainer(quint64 index, uchar type, uchar info, quint64 position, int depth, Object &object)
    {
        const std::optional<quint64> length = count(index, info, position);
        if (!length)
            return false;
        const quint64 references = type == DictionaryType ? 2 : 1;
        if (*length > (tableOffset - position) / referenceSize / references)
            return reject(u"object %1 declares %2 elements, more than the %3 bytes left before the offset table"_s
                                 .arg(index).arg(*length).arg(tableOffset - position));
        auto reference = [&](quint64 i) -> std::optional<quint64> {
            const quint64 target = bigEndian(bytes + position + i * referenceSize, referenceSize);
            if (target >= objectCount)
                return fail(u"object %1 refers to object %2 of %3"_s.arg(index).arg(target).arg(objectCount));
            return target;
        };
        // Reads element i and adds what it stands for to this container's counts.
        auto element = [&](quint64 i) -> const Object * {
            const std::optional<quint64> target = reference(i);
            if (!target || !read(*target, depth + 1))
                return nullptr;
            const Object &child = *objects.constFind(*target);
            object.valueCount += child.valueCount;
            object.height = std::max(object.height, child.height + 1);
            if (object.valueCount > valueLimit) {
                reject(u"the property list stands for more than %1 values"_s.arg(valueLimit));
                return nullptr;
            }
            return &child;
        };
        if (type == ArrayType) {
            QVariantList list;
            list.reserve(qsizetype(*length));
            for (quint64 i = 0; i < *length; ++i) {
                const Object *child = element(i);
                if (!child)
                    return false;
                list.append(child->value);
            }
            object.value = list;
            return true;
        }
        QVariantMap map;
        for (quint64 i = 0; i < *length; ++i) {
            const std::optional<quint64> keyIndex = reference(i);
            if (!keyIndex || !read(*keyIndex, depth + 1))
                return false;
            const QVariant key = objects.value(*keyIndex).value;
            if (key.typeId() != QMetaType::QString)
                return reject(u"object %1: dictionary key %2 is not a string"_s.arg(index).arg(*keyIndex));
            if (map.contains(key.toString()))
                return reject(u"object %1: the key \"%2\" appears twice"_s.arg(index).arg(key.toString().left(40)));
            const Object *child = element(*length + i);
            if (!child)
                return false;
            map.insert(key.toString(), child->value);
        }
        object.value = map;
        return true;
    }
};

// Writes objects children first. Equal strings, numbers, data and dates are stored once; containers
// never are, so a document never stands for more values than it has bytes (see SharedValueAllowance).
class Writer
{
public:
    QByteArray document(const QVariant &root)
    {
        const quint64 rootObject = add(root);
        const quint64 referenceSize = sizeFor(quint64(objects.size()) - 1);
        QByteArray out(VTPropertyListBinary::Magic.data(), VTPropertyListBinary::Magic.size());
        QList<quint64> offsets;
        offsets.reserve(objects.size());
        for (const Object &object : std::as_const(objects)) {
            offsets.append(quint64(out.size()));
            out += object.head;
            for (quint64 reference : object.references)
                appendBigEndian(out, reference, referenceSize);
        }
        const quint64 tableOffset = quint64(out.size());
        const quint64 offsetSize = sizeFor(offsets.last());
        for (quint64 offset : std::as_const(offsets))
            appendBigEndian(out, offset, offsetSize);
        out.append(6, '\0');
        out.append(char(offsetSize));
        out.append(char(referenceSize));
        appendBigEndian(out, quint64(objects.size()), 8);
        appendBigEndian(out, rootObject, 8);
        appendBigEndian(out, tableOffset, 8);
        return out;
    }

private:
    struct Object
    {
        QByteArray head;              ///< the marker and everything but the references
        QList<quint64> references;    ///< element objects (for dictionaries: keys, then values)
    };
    QList<Object> objects;
    QHash<QByteArray, quint64> indexOfObject;

    static quint64 sizeFor(quint64 largest)
    {
        return largest <= 0xFF ? 1 : largest <= 0xFFFF ? 2 : largest <= 0xFFFFFFFF ? 4 : 8;
    }

    static void appendBigEndian(QByteArray &out, quint64 value, quint64 size)
    {
        for (quint64 i = size; i > 0; --i)
            out.append(char(value >> (8 * (i - 1))));
    }

    static QByteArray integer(quint64 value, bool isNegative)
    {
        QByteArray out;
        if (isNegative || (value > 0xFFFFFFFF && value <= quint64(std::numeric_limits<qint64>::max()))) {
            out.append(char(0x13));
            appendBigEndian(out, value, 8);
        } else if (value > 0xFFFFFFFF) { // above the signed range: 16 bytes, high half zero
            out.append(char(0x14));
            appendBigEndian(out, 0, 8);
            appendBigEndian(out, value, 8);
        } else {
            const quint64 size = sizeFor(value);
            out.append(char((IntegerType << 4) | (size == 1 ? 0 : size == 2 ? 1 : 2)));
            appendBigEndian(out, value, size);
        }
        return out;
    }

    static QByteArray marker(uchar type, quint64 count)
    {
        if (count < CountFollows)
            return QByteArray(1, char((type << 4) | count));
        return char((type << 4) | CountFollows) + integer(count, false);
    }

    static QByteArray real(uchar marker, double value)
    {
        QByteArray out(1, char(marker));
        quint64 bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        appendBigEndian(out, bits, 8);
        return out;
    }

    quint64 add(const QVariant &value)
    {
        Object object;
        switch (propertyListKind(value)) {
        case VTPropertyListKind::Boolean:
            object.head = QByteArray(1, char(value.toBool() ? True : False));
            break;
        case VTPropertyListKind::Integer:
            object.head = integer(quint64(value.toLongLong()), value.toLongLong() < 0);
            break;
        case VTPropertyListKind::UnsignedInteger:
            object.head = integer(value.toULongLong(), false);
            break;
        case VTPropertyListKind::Real:
            object.head = real((RealType << 4) | 3, value.toDouble());
            break;
        case VTPropertyListKind::Date:
            object.head = real(DateMarker, double(value.toDateTime().toMSecsSinceEpoch()
                                                  - VTPropertyListDates::ReferenceDateMSecsSinceEpoch) / 1000.0);
            break;
        case VTPropertyListKind::Data:
            object.head = marker(DataType, quint64(value.toByteArray().size())) + value.toByteArray();
            break;
        case VTPropertyListKind::String:
            object.head = string(value.toString());
            break;
        case VTPropertyListKind::Array: {
            const QVariantList list = value.toList();
            object.head = marker(ArrayType, quint64(list.size()));
            for (const QVariant &element : list)
                object.references.append(add(element));
            break;
        }
        case VTPropertyListKind::Dictionary: {
            const QVariantMap map = value.toMap();
            object.head = marker(DictionaryType, quint64(map.size()));
            for (auto it = map.keyBegin(); it != map.keyEnd(); ++it)
                object.references.append(add(*it));
            for (const QVariant &element : map)
                object.references.append(add(element));
            break;
        }
        case VTPropertyListKind::None:
            Q_UNREACHABLE();
        }
        const VTPropertyListKind kind = propertyListKind(value);
        if (kind != VTPropertyListKind::Array && kind != VTPropertyListKind::Dictionary) {
            if (const auto known = indexOfObject.constFind(object.head); known != indexOfObject.constEnd())
                return *known;
            indexOfObject.insert(object.head, quint64(objects.size()));
        }
        objects.append(object);
        return quint64(objects.size()) - 1;
    }

    static QByteArray string(const QString &text)
    {
        const bool isAscii = std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
        if (isAscii)
            return marker(AsciiType, quint64(text.size())) + text.toLatin1();
        QByteArray out = marker(Utf16Type, quint64(text.size()));
        for (QChar c : text)
            appendBigEndian(out, c.unicode(), 2);
        return out;
    }
};

} // namespace

std::optional<QVariant> VTPropertyListBinary::read(QByteArrayView data, QString *errorMessage)
{
    Reader reader(data);
    std::optional<QVariant> result = reader.document();
    if (!result && errorMessage)
        *errorMessage = reader.error;
    return result;
}

QByteArray VTPropertyListBinary::write(const QVariant &root)
{
    return Writer().document(root);
}
