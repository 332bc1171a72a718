// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoZipStream.h
 * \brief VeltoZipStream: a gzip compressor for data that arrives in pieces.
 *
 * Each piece is compressed as it comes, so the input never has to be held whole; the compressed output
 * collects in one buffer that grows as needed. Use velto::dataByCompressingGZip() when the input is
 * already in memory: both give the same gzip bytes.
 *
 * \code
 * auto zip = VeltoZipStream::initWithEstimatedInputDataLength(file.size());
 * while (!file.atEnd())
 *     if (!zip->appendData(file.read(65536)))
 *         return false;                              // memory ran out: the output would be incomplete
 * const QByteArray gz = zip->finalizeCompressedData();
 * \endcode
 *
 * Not thread-safe: one thread feeds one stream. The zlib stream record and the output buffer belong to
 * the object until finalizeCompressedData() hands the output out.
 */

#include "veltocore_export.h"

#include <QByteArray>
#include <QByteArrayView>

#include <memory>

struct z_stream_s;

/// VeltoZipStream: incremental gzip compression into a growing buffer.
class VELTOCORE_EXPORT VeltoZipStream
{
public:
    ~VeltoZipStream();
    VeltoZipStream(const VeltoZipStream &) = delete;
    VeltoZipStream &operator=(const VeltoZipStream &) = delete;

    /**
     * initWithEstimatedInputDataLength: initWithEstimatedOutputBufferCapacity() with
     * max(6 × (length ÷ 10), 1024) bytes (integer division first), room for typical text compressed.
     */
    [[nodiscard]] static std::unique_ptr<VeltoZipStream> initWithEstimatedInputDataLength(quint64 length);
    /**
     * initWithEstimatedOutputBufferCapacity: a stream ready for data, with an output buffer of
     * \a capacity bytes and a zlib stream set up for gzip at the default level. Null when memory for
     * either cannot be had or zlib cannot start.
     */
    [[nodiscard]] static std::unique_ptr<VeltoZipStream> initWithEstimatedOutputBufferCapacity(quint64 capacity);

    /// appendData: compresses \a data without flushing. \return false when the stream is finished or failed.
    [[nodiscard]] bool appendData(QByteArrayView data);
    /**
     * finalizeCompressedData: flushes and returns the complete gzip data, taking the buffer out of the
     * stream; the stream is finished afterwards. Null when the stream had already failed (memory ran out
     * while growing the buffer, so the output would be incomplete) or was finished before.
     */
    [[nodiscard]] QByteArray finalizeCompressedData();
    /**
     * deflateWithData: the working step: hands \a data (any length) to zlib, with Z_FINISH when \a flush,
     * else Z_NO_FLUSH, until it is consumed and the output space was not filled. When the output has
     * reached the buffer's end, its capacity c becomes c + max(2c, 1024), computed in 32 bits; when that
     * does not grow it (past 4 GiB) or the memory cannot be had, the stream fails and stops.
     * \return false when the stream is finished or failed.
     */
    [[nodiscard]] bool deflateWithData(QByteArrayView data, bool flush);
    /// clearStream: ends and frees the zlib stream, if there is one. The buffer stays.
    void clearStream();

    /// zstream: the zlib stream record (from std::calloc), or null once the stream is finished.
    [[nodiscard]] z_stream_s *zstream() const;
    /**
     * setZstream: ends and frees the current record (clearStream()) and adopts \a stream, which must come
     * from std::calloc() and be set up for deflating (or be null). The object frees it.
     */
    void setZstream(z_stream_s *stream);
    /// buffer: the output buffer; its first zstream()->total_out bytes are the output so far.
    [[nodiscard]] QByteArray buffer() const;
    /// setBuffer: replaces the output buffer; it must begin with the output so far. Its length is the new capacity.
    void setBuffer(const QByteArray &buffer);
    /// bufferCapacity: the output buffer's length in bytes.
    [[nodiscard]] quint64 bufferCapacity() const;
    /// setBufferCapacity: resizes the output buffer, keeping what it holds up to the new length; false when memory is short.
    [[nodiscard]] bool setBufferCapacity(quint64 capacity);

private:
    VeltoZipStream();

    class Private;
    std::unique_ptr<Private> const d;
};
