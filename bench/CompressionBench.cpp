// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Compressed data against plain zlib in the same run, on 1 MiB and 64 MiB of text (words drawn from a
// vocabulary of 2,000, a little over 3:1 compressible) and of random bytes:
// - the zlib calls against compress2() into a compressBound() buffer and uncompress() into a buffer of
//   the known size: what a caller who knows every size in advance can do;
// - the gzip calls against the same one-call deflate and inflate with the gzip wrapper (windowBits 31);
// - VeltoZipStream fed 64 KiB pieces against one compress2() call on the whole input;
// - hex encoding against a loop over a 256-entry table of digit pairs, and hex decoding against
//   QByteArray::fromHex().
// Ours grows one output buffer by the library's fixed rules where the baselines are told the size.

#include "BenchRatio.h"

#include "ByteArray+VeltoAdditions.h"
#include "VeltoZipStream.h"

#include <QByteArray>
#include <QString>

#include <zlib.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

enum Kind : int { Text = 0, Random = 1 };

QByteArray makeInput(qsizetype size, int kind)
{
    std::mt19937 random(20240611);
    QByteArray bytes;
    bytes.reserve(size);
    if (kind == Random) {
        while (bytes.size() < size)
            bytes.append(char(random()));
        return bytes;
    }
    std::vector<QByteArray> words;
    for (int i = 0; i < 2000; ++i) {
        QByteArray word;
        for (int letters = 2 + int(random() % 9); letters > 0; --letters)
            word += char('a' + random() % 26);
        words.push_back(word);
    }
    while (bytes.size() < size) {
        const double skew = double(random()) / double(std::mt19937::max());
        bytes += words[size_t(skew * skew * words.size())];
        bytes += random() % 12 == 0 ? ".\n" : " ";
    }
    bytes.truncate(size);
    return bytes;
}

// Inputs and their compressed forms, made once per size and kind.
struct Sample
{
    QByteArray input;
    QByteArray zlib;
    QByteArray gzip;
};

const Sample &sample(const benchmark::State &state)
{
    static std::map<std::pair<int64_t, int64_t>, Sample> samples;
    Sample &s = samples[{state.range(0), state.range(1)}];
    if (s.input.isEmpty()) {
        s.input = makeInput(qsizetype(state.range(0)) << 20, int(state.range(1)));
        s.zlib = velto::dataByCompressingZlib(s.input);
        s.gzip = velto::dataByCompressingGZip(s.input);
    }
    return s;
}

QByteArray oneCallDeflate(const QByteArray &input, int windowBits)
{
    z_stream stream{};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY);
    QByteArray output(qsizetype(deflateBound(&stream, uLong(input.size()))), Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(input.constData()));
    stream.avail_in = uInt(input.size());
    stream.next_out = reinterpret_cast<Bytef *>(output.data());
    stream.avail_out = uInt(output.size());
    deflate(&stream, Z_FINISH);
    output.resize(qsizetype(stream.total_out));
    deflateEnd(&stream);
    return output;
}

QByteArray oneCallInflate(const QByteArray &input, qsizetype knownSize, int windowBits)
{
    z_stream stream{};
    inflateInit2(&stream, windowBits);
    QByteArray output(knownSize, Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(input.constData()));
    stream.avail_in = uInt(input.size());
    stream.next_out = reinterpret_cast<Bytef *>(output.data());
    stream.avail_out = uInt(output.size());
    inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return output;
}

// Runs \a call on the sample of the benchmark's size and kind and counts the input's bytes.
template <typename Call>
void measure(benchmark::State &state, Call &&call)
{
    const Sample &s = sample(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(call(s).constData());
    state.SetBytesProcessed(state.iterations() * (state.range(0) << 20));
}

void BM_ZlibCompress(benchmark::State &state)
{
    measure(state, [](const Sample &s) { return velto::dataByCompressingZlib(s.input); });
}

void BM_Baseline_Compress2(benchmark::State &state)
{
    measure(state, [](const Sample &s) {
        uLongf length = compressBound(uLong(s.input.size()));
        QByteArray output(qsizetype(length), Qt::Uninitialized);
        compress2(reinterpret_cast<Bytef *>(output.data()), &length, reinterpret_cast<const Bytef *>(s.input.constData()),
                  uLong(s.input.size()), Z_DEFAULT_COMPRESSION);
        output.resize(qsizetype(length));
        return output;
    });
}

void BM_ZlibDecompress(benchmark::State &state)
{
    measure(state, [](const Sample &s) { return velto::dataByDecompressingZlib(s.zlib); });
}

void BM_Baseline_UncompressKnownSize(benchmark::State &state)
{
    measure(state, [](const Sample &s) {
        uLongf length = uLongf(s.input.size());
        QByteArray output(s.input.size(), Qt::Uninitialized);
        uncompress(reinterpret_cast<Bytef *>(output.data()), &length, reinterpret_cast<const Bytef *>(s.zlib.constData()),
                   uLong(s.zlib.size()));
        return output;
    });
}

void BM_GZipCompress(benchmark::State &state)
{
    measure(state, [](const Sample &s) { return velto::dataByCompressingGZip(s.input); });
}

void BM_Baseline_DeflateGZipOneCall(benchmark::State &state)
{
    measure(state, [](const Sample &s) { return oneCallDeflate(s.input, 31); });
}

void BM_GZipDecompress(benchmark::State &state)
{
    measure(state, [](const Sample &s) { return velto::dataByDecompressingGZip(s.gzip); });
}

void BM_Baseline_InflateGZipKnownSize(benchmark::State &state)
{
    measure(state, [](const Sample &s) { return oneCallInflate(s.gzip, s.input.size(), 31); });
}

void BM_ZipStream64KPieces(benchmark::State &state)
{
    measure(state, [](const Sample &s) {
        auto zip = VeltoZipStream::initWithEstimatedInputDataLength(quint64(s.input.size()));
        for (qsizetype at = 0; at < s.input.size(); at += 65536)
            (void)zip->appendData(QByteArrayView(s.input).sliced(at, std::min<qsizetype>(65536, s.input.size() - at)));
        return zip->finalizeCompressedData();
    });
}

void BM_HexEncode(benchmark::State &state)
{
    measure(state, [](const Sample &s) {
        QByteArray hex;
        velto::appendLowercaseHexASCIIToData(s.input, hex);
        return hex;
    });
}

void BM_Baseline_HexTableLoop(benchmark::State &state)
{
    static const std::array<std::array<char, 2>, 256> table = [] {
        std::array<std::array<char, 2>, 256> pairs{};
        for (int byte = 0; byte < 256; ++byte)
            pairs[size_t(byte)] = {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 15]};
        return pairs;
    }();
    measure(state, [](const Sample &s) {
        QByteArray hex(2 * s.input.size(), Qt::Uninitialized);
        char *out = hex.data();
        for (const char byte : s.input) {
            std::memcpy(out, table[uchar(byte)].data(), 2);
            out += 2;
        }
        return hex;
    });
}

void BM_HexString(benchmark::State &state)
{
    measure(state, [](const Sample &s) { return velto::unadornedLowercaseHexString(s.input); });
}

void BM_HexDecodeFast(benchmark::State &state)
{
    measure(state, [](const Sample &s) {
        static const QString hex = velto::unadornedLowercaseHexString(s.input);
        return velto::initWithHexStringFast(hex);
    });
}

void BM_Baseline_QByteArrayFromHex(benchmark::State &state)
{
    measure(state, [](const Sample &s) {
        static const QByteArray hex = s.input.toHex();
        return QByteArray::fromHex(hex);
    });
}

// Every compression row is checked once: ours must give what zlib gives.
const bool sameOutput = [] {
    const QByteArray input = makeInput(1 << 20, Text);
    if (velto::dataByCompressingZlib(input) != oneCallDeflate(input, 15)
        || velto::dataByCompressingGZip(input) != oneCallDeflate(input, 31)
        || velto::dataByDecompressingGZip(oneCallDeflate(input, 31)) != input)
        std::abort();
    return true;
}();

void sizes(benchmark::internal::Benchmark *bench)
{
    bench->ArgNames({"MiB", "random"})->Args({1, Text})->Args({1, Random})->Args({64, Text})->Args({64, Random})
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_ZlibCompress)->Apply(sizes);
BENCHMARK(BM_Baseline_Compress2)->Apply(sizes);
BENCHMARK(BM_ZlibDecompress)->Apply(sizes);
BENCHMARK(BM_Baseline_UncompressKnownSize)->Apply(sizes);
BENCHMARK(BM_GZipCompress)->Apply(sizes);
BENCHMARK(BM_Baseline_DeflateGZipOneCall)->Apply(sizes);
BENCHMARK(BM_GZipDecompress)->Apply(sizes);
BENCHMARK(BM_Baseline_InflateGZipKnownSize)->Apply(sizes);
BENCHMARK(BM_ZipStream64KPieces)->Apply(sizes);
BENCHMARK(BM_HexEncode)->ArgNames({"MiB", "random"})->Args({1, Random})->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_HexString)->ArgNames({"MiB", "random"})->Args({1, Random})->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_HexTableLoop)->ArgNames({"MiB", "random"})->Args({1, Random})->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_HexDecodeFast)->ArgNames({"MiB", "random"})->Args({1, Random})->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_QByteArrayFromHex)->ArgNames({"MiB", "random"})->Args({1, Random})->Unit(benchmark::kMicrosecond);

const int ratios = [] {
    for (const char *size : {"MiB:1/random:0", "MiB:1/random:1", "MiB:64/random:0", "MiB:64/random:1"}) {
        const std::string arguments = std::string("/") + size;
        const std::pair<const char *, const char *> pairs[] = {
            {"BM_ZlibCompress", "BM_Baseline_Compress2"},
            {"BM_ZlibDecompress", "BM_Baseline_UncompressKnownSize"},
            {"BM_GZipCompress", "BM_Baseline_DeflateGZipOneCall"},
            {"BM_GZipDecompress", "BM_Baseline_InflateGZipKnownSize"},
            {"BM_ZipStream64KPieces", "BM_Baseline_Compress2"},
        };
        for (const auto &[ours, baseline] : pairs)
            veltobench::registerRatio((ours + arguments).c_str(), (baseline + arguments).c_str()); // copied
    }
    veltobench::registerRatio("BM_HexEncode/MiB:1/random:1", "BM_Baseline_HexTableLoop/MiB:1/random:1");
    veltobench::registerRatio("BM_HexString/MiB:1/random:1", "BM_Baseline_HexTableLoop/MiB:1/random:1");
    veltobench::registerRatio("BM_HexDecodeFast/MiB:1/random:1", "BM_Baseline_QByteArrayFromHex/MiB:1/random:1");
    return 0;
}();

} // namespace

VELTO_BENCHMARK_MAIN()
