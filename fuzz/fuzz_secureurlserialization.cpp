// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Stored secure URLs come from user defaults, documents and alias files, so their reader takes any
// bytes: it must never crash or run away, what it accepts must be written back into a form that reads
// the same, and the Linux bookmark record inside must be refused or be exactly what its writer makes of
// it. The reference built from the bytes must answer its names and description (nothing here resolves:
// that would search the file system for whatever path the bytes name).

#include "VTBookmarkRecord_p.h"
#include "VeltoSecureURL.h"
#include "VeltoSecureURLSerialization.h"

#include <cstdlib>

namespace {

void checkRecord(QByteArrayView bytes)
{
    const std::optional<VTBookmarkRecord> record = VTBookmarkRecord::decoded(bytes);
    if (record && record->encoded() != bytes)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    checkRecord(input);
    if (const auto record = VeltoSecureURLSerialization::initWithSerializationData(input)) {
        checkRecord(record->appleBookmarkData());
        const bool plain = record->captureFlags() == 0 && record->subpathFragment().isNull();
        if (plain || !record->appleBookmarkData().isNull()) {
            const QByteArray stored = record->generatedSerializationData();
            if (!stored.startsWith(QByteArrayView(VeltoSecureURLSerializationTag))) {
                // Plain: the bookmark itself, kept for flags 0 and no subpath, or the fallback for a
                // subpath no property list can hold.
                if (stored != record->appleBookmarkData() || (!plain && record->subpathFragment().isValidUtf16()))
                    std::abort();
            } else if (!plain) {
                // (A plain bookmark that itself begins with the tag reads back as tagged: the format's own
                // ambiguity, which bookmark records, beginning "VTBK", never meet.)
                const auto again = VeltoSecureURLSerialization::initWithSerializationData(stored);
                if (!again || again->appleBookmarkData() != record->appleBookmarkData()
                    || again->captureFlags() != record->captureFlags() || again->subpathFragment() != record->subpathFragment())
                    std::abort();
            }
        }
    }
    const auto url = VeltoSecureURL::initWithSerializedData(input);
    (void)url->unresolvedFilePath();
    (void)url->unresolvedFileName();
    (void)url->description();
    return 0;
}
