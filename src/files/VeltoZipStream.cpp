// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoZipStream.h"

#include "ByteArray+VeltoEnsuredGrowth.h"
#include "VTZlibCalls_p.h"

#include <cstdlib>
#include <new>

class VeltoZipStream::Private
{
public:
    z_stream *stream = nullptr; // from std::calloc, owned; null once finished
    QByteArray buffer;          // the output; its length is the capacity
    bool failed = false;        // an enlargement failed: the output is incomplete for good

    // The capacity rule: c + max(2c, 1024) in 32-bit arithmetic; false when that does not enlarge the
    // buffer (it wrapped past 4 GiB) or the memory cannot be had.
    bool grow()
    {
        const quint32 capacity = quint32(buffer.size());
        const quint32 twice = capacity * 2;
        const quint32 enlarged = capacity + (twice < 1025 ? 1024 : twice);
        if (enlarged <= quint64(buffer.size()) || !velto::ensureCanIncreaseLengthBy(buffer, enlarged - buffer.size()))
            return false;
        buffer.resize(enlarged);
        return true;
    }
};

VeltoZipStream::VeltoZipStream() : d(std::make_unique<Private>()) {}

VeltoZipStream::~VeltoZipStream()
{
    clearStream();
}

std::unique_ptr<VeltoZipStream> VeltoZipStream::initWithEstimatedInputDataLength(quint64 length)
{
    return initWithEstimatedOutputBufferCapacity(std::max<quint64>(6 * (length / 10), 1024));
}

std::unique_ptr<VeltoZipStream> VeltoZipStream::initWithEstimatedOutputBufferCapacity(quint64 capacity)
{
    std::unique_ptr<VeltoZipStream> zip(new VeltoZipStream);
    auto *stream = static_cast<z_stream *>(std::calloc(1, sizeof(z_stream)));
    if (!stream || !zip->setBufferCapacity(capacity) || VTDeflateInitGZip(*stream) != Z_OK) {
        std::free(stream);
        return nullptr;
    }
    zip->d->stream = stream;
    return zip;
}

bool VeltoZipStream::appendData(QByteArrayView data)
{
    return deflateWithData(data, false);
}

QByteArray VeltoZipStream::finalizeCompressedData()
{
    if (!deflateWithData({}, true))
        return {};
    QByteArray output = std::move(d->buffer);
    output.resize(qsizetype(d->stream->total_out));
    output.squeeze();
    d->buffer = QByteArray();
    clearStream();
    return output;
}

bool VeltoZipStream::deflateWithData(QByteArrayView data, bool flush)
{
    if (!d->stream || d->failed)
        return false;
    // A buffer set from outside that is shorter than the output so far cannot take more output.
    d->failed = quint64(d->buffer.size()) < d->stream->total_out
        || !VTDeflateInto(*d->stream, d->buffer, data, flush, [this](QByteArray &) { return d->grow(); });
    return !d->failed;
}

void VeltoZipStream::clearStream()
{
    if (!d->stream)
        return;
    deflateEnd(d->stream);
    std::free(d->stream);
    d->stream = nullptr;
}

z_stream_s *VeltoZipStream::zstream() const
{
    return d->stream;
}

void VeltoZipStream::setZstream(z_stream_s *stream)
{
    clearStream();
    d->stream = stream;
}

QByteArray VeltoZipStream::buffer() const
{
    return d->buffer;
}

void VeltoZipStream::setBuffer(const QByteArray &buffer)
{
    d->buffer = buffer;
}

quint64 VeltoZipStream::bufferCapacity() const
{
    return quint64(d->buffer.size());
}

bool VeltoZipStream::setBufferCapacity(quint64 capacity)
{
    const qint64 change = qint64(capacity) - qint64(d->buffer.size());
    if (capacity > quint64(std::numeric_limits<qsizetype>::max()) || (change > 0 && !velto::ensureCanIncreaseLengthBy(d->buffer, change)))
        return false;
    d->buffer.resize(qsizetype(capacity));
    return true;
}
