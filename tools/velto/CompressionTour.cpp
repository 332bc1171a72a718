// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The tour's compressed-data stop: a file compressed and read back whole, damaged and in part; hex and
// base64 forms; a folder archived and unpacked again, and the unpack refusing what it must.

#include "Commands.h"
#include "Tour.h"

#include "ByteArray+VeltoAdditions.h"
#include "FileManager+VeltoCoreArchives.h"

using namespace Qt::StringLiterals;

namespace {

void compressionStop(Tour &tour)
{
    tour.stop(u"Compressed data and archives"_s);
    QByteArray notes;
    for (int line = 1; notes.size() < 20000; ++line)
        notes += "Line " + QByteArray::number(line) + " of the meeting notes: nothing decided yet.\n";
    const QByteArray packed = velto::dataByCompressingGZip(notes);
    tour.say(u"%1 bytes of notes compress to %2 bytes of gzip, starting %3"_s
                 .arg(notes.size()).arg(packed.size()).arg(velto::lowercaseHexString(packed.left(4))));
    tour.say(u"decompressed again equal: %1; cut in half: %2; its first 100 bytes even so: %3"_s
                 .arg(velto::dataByDecompressingGZip(packed) == notes ? u"yes"_s : u"no"_s,
                      velto::dataByDecompressingGZip(packed.left(packed.size() / 2)).isNull() ? u"nothing"_s : u"data"_s,
                      quoted(QString::fromLatin1(velto::dataByDecompressingGZipWithMaximumLength(packed.left(packed.size() / 2), 100).left(27)))));
    tour.say(u"hex \"0x 0a bc\" reads as %1; base64 of \"VeltoCore\" is %2"_s
                 .arg(velto::unadornedLowercaseHexString(velto::dataWithHexStringVelto(u"0x 0a bc"_s)),
                      velto::base64String("VeltoCore")));

    tour.writeFile(u"project/notes.txt"_s, notes);
    tour.writeFile(u"project/data/numbers.csv"_s, "1,2,3\n4,5,6\n");
    VeltoError error;
    const QUrl archive = velto::archiveFilePaths({tour.path(u"project"_s)}, QUrl::fromLocalFile(tour.path(u"project.txt"_s)), &error);
    tour.say(u"archived the folder \"project\" as %1 (gzip-compressed cpio; the extension txt became cpio)"_s
                 .arg(QFileInfo(archive.toLocalFile()).fileName()));
    const QString unpacked = tour.path(u"unpacked"_s);
    if (velto::unarchiveFileAtURL(archive, QUrl::fromLocalFile(unpacked), {}, &error)) {
        tour.say(u"unpacked into \"unpacked\": %1"_s.arg(QDir(unpacked).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(u", "_s)));
    }
    (void)velto::unarchiveFileAtURL(archive, QUrl::fromLocalFile(unpacked), {}, &error);
    tour.say(u"unpacked there again: %1"_s.arg(quoted(error.descriptionForUserVelto())));
    (void)velto::unarchiveFileAtURL(archive, QUrl::fromLocalFile(tour.path(u"capped"_s)), {.maximumEntryCount = 1}, &error);
    tour.say(u"with a cap of one entry: %1"_s.arg(quoted(error.descriptionForUserVelto())));
}

const bool registered = registerTourStop(520, compressionStop);

} // namespace
