// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The zlib calls the compressed-data additions and VeltoZipStream share. The init calls always name the
// zlib version "1.2.11" and the size of the stream record: zlib checks only the version's first
// character and the record size, so any 1.x library accepts them. Input and output are handed to zlib in
// slices, since its counts are 32-bit while a QByteArray may hold more; the output buffer is a QByteArray
// that the caller's growth rule enlarges whenever the output has reached its end.

#include <QByteArray>
#include <QByteArrayView>

#include <zlib.h>

#include <algorithm>
#include <limits>

/// The zlib version every init call names.
inline constexpr char VTZlibVersion[] = "1.2.11";
/// The window bits of a gzip stream (15 plus 16 for the gzip wrapper).
inline constexpr int VTGZipWindowBits = 31;
/// The window bits that accept a zlib or a gzip stream, told apart by the header (15 plus 32).
inline constexpr int VTDetectHeaderWindowBits = 47;

/// VTDeflateInitZlib: deflateInit_ with the default level, for the zlib format.
inline int VTDeflateInitZlib(z_stream &stream)
{
    return deflateInit_(&stream, Z_DEFAULT_COMPRESSION, VTZlibVersion, int(sizeof(z_stream)));
}

/// VTDeflateInitGZip: deflateInit2_ with the default level, deflate, gzip window, memory level 8, default strategy.
inline int VTDeflateInitGZip(z_stream &stream)
{
    return deflateInit2_(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, VTGZipWindowBits, 8, Z_DEFAULT_STRATEGY,
                         VTZlibVersion, int(sizeof(z_stream)));
}

/// VTInflateInitZlib: inflateInit_, for the zlib format only.
inline int VTInflateInitZlib(z_stream &stream)
{
    return inflateInit_(&stream, VTZlibVersion, int(sizeof(z_stream)));
}

/// VTInflateInitDetectingHeader: inflateInit2_ that reads a zlib or a gzip stream.
inline int VTInflateInitDetectingHeader(z_stream &stream)
{
    return inflateInit2_(&stream, VTDetectHeaderWindowBits, VTZlibVersion, int(sizeof(z_stream)));
}

/// Input not yet handed to zlib: the stream's own input holds at most 4 GiB - 1 bytes at a time.
class VTZlibInput
{
public:
    explicit VTZlibInput(QByteArrayView input) : m_next(input.data()), m_left(input.size()) {}

    /// refill: gives the stream the next slice once it has consumed the current one.
    void refill(z_stream &stream)
    {
        if (stream.avail_in != 0 || m_left == 0)
            return;
        const qsizetype slice = std::min<qsizetype>(m_left, std::numeric_limits<uInt>::max());
        stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(m_next));
        stream.avail_in = uInt(slice);
        m_next += slice;
        m_left -= slice;
    }
    /// allGiven: whether the stream holds the last slice (so it may be told to finish).
    [[nodiscard]] bool allGiven() const { return m_left == 0; }

private:
    const char *m_next;
    qsizetype m_left;
};

/// VTPointOutputAt: points the stream's output at the unused tail of \a buffer (the first total_out bytes are output).
inline void VTPointOutputAt(z_stream &stream, QByteArray &buffer)
{
    const quint64 used = std::min<quint64>(stream.total_out, quint64(buffer.size()));
    stream.next_out = reinterpret_cast<Bytef *>(buffer.data() + used);
    stream.avail_out = uInt(std::min<quint64>(quint64(buffer.size()) - used, std::numeric_limits<uInt>::max()));
}

/**
 * VTDeflateInto: compresses all of \a input after the output so far: before each step, when the output
 * has reached the end of \a buffer, \a grow enlarges it; each step calls deflate (with Z_FINISH once the
 * last input is given when \a finish, else Z_NO_FLUSH), and steps repeat while a step filled all output
 * space or input is left. A step that can make no progress ends the loop, so a broken stream cannot
 * spin. \return false when \a grow failed or the stream is unusable (Z_STREAM_ERROR): the output is then
 * incomplete.
 */
template <typename Grow>
bool VTDeflateInto(z_stream &stream, QByteArray &buffer, QByteArrayView input, bool finish, Grow &&grow)
{
    VTZlibInput pending(input);
    for (;;) {
        pending.refill(stream);
        if (stream.total_out >= quint64(buffer.size()) && !grow(buffer))
            return false;
        VTPointOutputAt(stream, buffer);
        const int result = ::deflate(&stream, finish && pending.allGiven() ? Z_FINISH : Z_NO_FLUSH);
        if (result == Z_STREAM_ERROR)
            return false;
        if ((stream.avail_out != 0 && pending.allGiven()) || result == Z_BUF_ERROR)
            return true;
    }
}

/**
 * VTInflateInto: decompresses \a input into \a buffer with Z_SYNC_FLUSH steps, enlarging the buffer with
 * \a grow whenever the output has reached its end, while inflate answers Z_OK and the total output is
 * below \a maximum. \return the last inflate result (Z_STREAM_END for a complete stream), or Z_MEM_ERROR
 * when \a grow failed.
 */
template <typename Grow>
int VTInflateInto(z_stream &stream, QByteArray &buffer, QByteArrayView input, quint64 maximum, Grow &&grow)
{
    VTZlibInput pending(input);
    int result = Z_OK;
    while (result == Z_OK && stream.total_out < maximum) {
        pending.refill(stream);
        if (stream.total_out >= quint64(buffer.size()) && !grow(buffer))
            return Z_MEM_ERROR;
        VTPointOutputAt(stream, buffer);
        result = ::inflate(&stream, Z_SYNC_FLUSH);
    }
    return result;
}
