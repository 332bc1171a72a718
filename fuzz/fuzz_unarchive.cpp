// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Archives come from anywhere. Unpacking any bytes from memory into a fresh folder must never crash,
// never create anything outside that folder, and, when it fails, leave the folder as it was (empty).
// Each run gets its own folder inside one root, removed afterwards, so the root must be empty again.
// Anything else aborts.

#include "FuzzSupport.h"
#include "VTArchiveExtractor_p.h"

#include <QDir>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static QTemporaryDir root;
    static const VeltoUnarchiveOptions options{64 << 20, 1000, {}};
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    {
        QTemporaryDir folder(root.filePath(QStringLiteral("run-XXXXXX")));
        VeltoError error;
        const bool unpacked = VTArchiveExtractor::extractMemory(QByteArrayView(data, qsizetype(size)), folder.path(),
                                                                options, &error);
        fuzzCheck(unpacked == error.isNull());
        fuzzCheck(QDir(root.path()).entryList(everything).size() == 1);
        if (!unpacked)
            fuzzCheck(QDir(folder.path()).entryList(everything).isEmpty());
    }
    fuzzCheck(QDir(root.path()).entryList(everything).isEmpty());
    return 0;
}
