// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto gzip FILE` and `velto gunzip FILE.gz`: compress a file to FILE.gz and back. The input is kept;
// an existing output is replaced only with --force. Inputs over 64 MiB show their progress.

#include "Commands.h"
#include "ProgressLine.h"

#include "ByteArray+VeltoAdditions.h"
#include "VeltoZipStream.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 PieceSize = 1 << 20;

// The output's path, unless something is there and --force was not given (then a reported failure).
std::optional<int> refuseToReplace(const CommandLine &line, const QString &output)
{
    if (QFileInfo(output).exists() && !line.isSet(u"force"_s))
        return line.failure(u"%1 already exists (use --force to replace it)"_s.arg(output));
    return std::nullopt;
}

int writeOutput(const CommandLine &line, const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return ExitSuccess;
    return line.failure(u"cannot write %1: %2"_s.arg(path, file.errorString()));
}

// Reads \a file in pieces, handing each to \a take and the progress to \a progress; false on a read error.
template <typename Take>
bool readInPieces(QFile &file, ProgressLine &progress, Take &&take)
{
    quint64 done = 0;
    while (!file.atEnd()) {
        const QByteArray piece = file.read(PieceSize);
        if (piece.isEmpty() || !take(piece))
            return false;
        progress.update(done += quint64(piece.size()));
    }
    return true;
}

int runGzip(const CommandLine &line)
{
    const QString input = line.arguments.first();
    const QString output = input + u".gz"_s;
    if (const auto refused = refuseToReplace(line, output))
        return *refused;
    QFile file(input);
    if (!file.open(QIODevice::ReadOnly))
        return line.failure(u"cannot read %1: %2"_s.arg(input, file.errorString()));
    auto zip = VeltoZipStream::initWithEstimatedInputDataLength(quint64(file.size()));
    QByteArray compressed;
    {
        ProgressLine progress(line.err, u"velto gzip: "_s + input, quint64(file.size()));
        if (!zip || !readInPieces(file, progress, [&](const QByteArray &piece) { return zip->appendData(piece); })
            || (compressed = zip->finalizeCompressedData()).isNull())
            return line.failure(u"cannot compress %1: %2"_s.arg(input, file.error() ? file.errorString() : u"out of memory"_s));
    }
    return writeOutput(line, output, compressed);
}

int runGunzip(const CommandLine &line)
{
    const QString input = line.arguments.first();
    if (!input.endsWith(u".gz"_s) || input.size() == 3)
        return line.failure(u"%1 does not end in .gz"_s.arg(input));
    const QString output = input.chopped(3);
    if (const auto refused = refuseToReplace(line, output))
        return *refused;
    QFile file(input);
    if (!file.open(QIODevice::ReadOnly))
        return line.failure(u"cannot read %1: %2"_s.arg(input, file.errorString()));
    QByteArray compressed;
    {
        ProgressLine progress(line.err, u"velto gunzip: "_s + input, quint64(file.size()));
        if (!readInPieces(file, progress, [&](const QByteArray &piece) { compressed += piece; return true; }))
            return line.failure(u"cannot read %1: %2"_s.arg(input, file.errorString()));
    }
    const QByteArray data = velto::dataByDecompressingGZip(compressed);
    if (data.isNull())
        return line.failure(u"%1 is not gzip data, or it is damaged or truncated"_s.arg(input));
    return writeOutput(line, output, data);
}

const QCommandLineOption forceOption(u"force"_s, u"Replace the output file if it exists."_s);

const bool gzipRegistered = registerCommand({
    .name = "gzip",
    .summary = "compress a file to FILE.gz",
    .synopsis = {"[--force] FILE"},
    .description = "Compresses FILE in the gzip format into FILE.gz, reading it in pieces of 1 MiB through "
                   "VeltoZipStream, and keeps FILE. An existing FILE.gz is replaced only with --force; the output "
                   "appears whole or not at all. Files over 64 MiB show their progress on standard error.",
    .options = {forceOption},
    .arguments = {1, 1},
    .run = runGzip,
});

const bool gunzipRegistered = registerCommand({
    .name = "gunzip",
    .summary = "decompress FILE.gz",
    .synopsis = {"[--force] FILE.gz"},
    .description = "Decompresses FILE.gz (gzip or zlib data) into FILE and keeps FILE.gz. An existing FILE is "
                   "replaced only with --force. Data that is not gzip, or is damaged or truncated, is reported "
                   "with status 1 and nothing is written. Files over 64 MiB show their progress on standard error.",
    .options = {forceOption},
    .arguments = {1, 1},
    .run = runGunzip,
});

} // namespace
