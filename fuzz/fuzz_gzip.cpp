// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Compressed data comes from files and the network. The gzip and zlib readers, bounded and not, must
// never crash on any bytes, and what they give must agree: a zlib stream reads the same through the
// header-detecting reader, a bounded read is a prefix of the unbounded one and is at least as long as
// its limit allows, and data compressed by either writer (or fed to VeltoZipStream in pieces) reads
// back unchanged. Anything else aborts.

#include "ByteArray+VeltoAdditions.h"
#include "FuzzSupport.h"
#include "VeltoZipStream.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const QByteArray gzip = velto::dataByDecompressingGZip(input);
    const QByteArray zlib = velto::dataByDecompressingZlib(input);
    if (!zlib.isNull())
        fuzzCheck(gzip == zlib);

    const QByteArray unbounded = velto::dataByDecompressingGZipWithMaximumLength(input, VeltoNotFound);
    if (!gzip.isNull())
        fuzzCheck(unbounded == gzip);
    const quint64 maximum = size < 2 ? 0 : quint64(data[0]) << 8 | data[1];
    const QByteArray bounded = velto::dataByDecompressingGZipWithMaximumLength(input, maximum);
    fuzzCheck(unbounded.startsWith(bounded));
    if (!gzip.isNull())
        fuzzCheck(quint64(bounded.size()) >= std::min<quint64>(maximum, quint64(gzip.size())));

    fuzzCheck(velto::dataByDecompressingZlib(velto::dataByCompressingZlib(input)) == input);
    const QByteArray compressed = velto::dataByCompressingGZip(input);
    fuzzCheck(velto::dataByDecompressingGZip(compressed) == input);
    if (size > 0) {
        auto zip = VeltoZipStream::initWithEstimatedInputDataLength(size);
        const qsizetype piece = 1 + data[0];
        for (qsizetype at = 0; at < input.size(); at += piece)
            fuzzCheck(zip->appendData(QByteArrayView(input).sliced(at, std::min(piece, input.size() - at))));
        fuzzCheck(zip->finalizeCompressedData() == compressed);
    }
    return 0;
}
