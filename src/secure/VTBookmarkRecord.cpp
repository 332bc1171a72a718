// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTBookmarkRecord_p.h"

#include "VTTextDecoding_p.h"

#include <QDir>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MagicSize = 4;

template <typename Integer>
void appendBigEndian(QByteArray &bytes, Integer value)
{
    char buffer[sizeof(Integer)];
    qToBigEndian(value, buffer);
    bytes.append(buffer, sizeof(Integer));
}

bool appendText(QByteArray &bytes, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    if (utf8.size() > 0xFFFF)
        return false;
    appendBigEndian(bytes, quint16(utf8.size()));
    bytes.append(utf8);
    return true;
}

quint16 checksum(QByteArrayView bytes)
{
    return qChecksum(bytes, Qt::ChecksumIso3309);
}

// Reads the record front to back; every read checks that its bytes are there.
class Reader
{
public:
    explicit Reader(QByteArrayView bytes) : m_bytes(bytes) {}

    template <typename Integer>
    std::optional<Integer> integer()
    {
        if (m_bytes.size() - m_position < qsizetype(sizeof(Integer)))
            return std::nullopt;
        const Integer value = qFromBigEndian<Integer>(m_bytes.data() + m_position);
        m_position += sizeof(Integer);
        return value;
    }

    // A length-prefixed UTF-8 text without zero characters; a null string when it is not one.
    QString text()
    {
        const std::optional<quint16> length = integer<quint16>();
        if (!length || m_bytes.size() - m_position < *length)
            return QString();
        const QByteArrayView utf8 = m_bytes.sliced(m_position, *length);
        m_position += *length;
        return utf8.contains('\0') ? QString() : VTStringFromUtf8ThenAscii(utf8);
    }

    qsizetype position() const { return m_position; }

private:
    QByteArrayView m_bytes;
    qsizetype m_position = MagicSize;
};

std::optional<VTBookmarkRecord> refuse(QString *problem, const QString &text)
{
    if (problem)
        *problem = text;
    return std::nullopt;
}

} // namespace

QByteArray VTBookmarkRecord::encoded() const
{
    QByteArray bytes(Magic, MagicSize);
    appendBigEndian(bytes, CurrentVersion);
    appendBigEndian(bytes, quint32(options & KnownOptions));
    appendBigEndian(bytes, identity.device);
    appendBigEndian(bytes, identity.inode);
    if (!appendText(bytes, path) || !appendText(bytes, name) || !appendText(bytes, documentRelativePath))
        return QByteArray();
    appendBigEndian(bytes, checksum(bytes));
    return bytes;
}

std::optional<VTBookmarkRecord> VTBookmarkRecord::decoded(QByteArrayView bytes, QString *problem)
{
    if (!bytes.startsWith(QByteArrayView(Magic, MagicSize)))
        return refuse(problem, u"it is not a bookmark record"_s);
    Reader reader(bytes);
    const std::optional<quint8> version = reader.integer<quint8>();
    if (version && *version > CurrentVersion)
        return refuse(problem, u"it was written in version %1, newer than this library reads"_s.arg(*version));
    VTBookmarkRecord record;
    const auto options = reader.integer<quint32>();
    const auto device = reader.integer<quint64>();
    const auto inode = reader.integer<quint64>();
    record.path = reader.text();
    record.name = reader.text();
    record.documentRelativePath = reader.text();
    const qsizetype checkedSize = reader.position();
    const auto storedChecksum = reader.integer<quint16>();
    if (version != CurrentVersion || !inode || !storedChecksum || record.path.isNull() || record.name.isNull()
        || record.documentRelativePath.isNull())
        return refuse(problem, u"it is cut short or malformed"_s);
    if (reader.position() != bytes.size())
        return refuse(problem, u"bytes follow its end"_s);
    if (*storedChecksum != checksum(bytes.first(checkedSize)))
        return refuse(problem, u"its checksum does not match"_s);
    // Written by encoded() from a clean absolute path, so anything else was not written by us.
    const bool cleanPath = record.path.startsWith(u'/') && QDir::cleanPath(record.path) == record.path;
    const bool plainName = !record.name.isEmpty() && (record.name == u"/" || !record.name.contains(u'/'));
    if (!cleanPath || !plainName || record.documentRelativePath.startsWith(u'/') || (*options & ~KnownOptions))
        return refuse(problem, u"it holds values no bookmark has"_s);
    record.options = *options;
    record.identity = {*device, *inode};
    return record;
}
