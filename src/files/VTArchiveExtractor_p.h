// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Unpacking a zip or cpio archive (plain or gzip-compressed) into a folder with the safety rules and caps
// described in FileManager+VeltoCoreArchives.h. The archive comes from a file or from memory (the fuzz
// target unpacks from memory). Not installed.

#include "FileManager+VeltoCoreArchives.h"

#include <QByteArrayView>
#include <QString>

class VELTOCORE_TESTS_EXPORT VTArchiveExtractor
{
public:
    VTArchiveExtractor() = delete;

    /// extractFile: unpacks the archive file at \a archivePath into \a folder; see velto::unarchiveFileAtURL().
    static bool extractFile(const QString &archivePath, const QString &folder, const VeltoUnarchiveOptions &options,
                            VeltoError *error);
    /// extractMemory: the same for archive bytes held in memory; errors name the archive "(memory)".
    static bool extractMemory(QByteArrayView archive, const QString &folder, const VeltoUnarchiveOptions &options,
                              VeltoError *error);
};
