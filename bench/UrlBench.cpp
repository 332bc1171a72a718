// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The URL helpers on the paths they take most: percent-encoding and strict decoding of 64 KiB of mixed
// text (words, spaces, punctuation, accented letters) against Qt's QByteArray percent-encoding with the
// same set of characters left alone, which does the same work (the text holds no "%", which Qt always
// encodes) and decodes leniently; the loose-text rule on a handful of typical inputs against
// QUrl::fromUserInput; and a hit in the library's named cache (a mutex and the least-recently-used
// list) against a plain QHash lookup.

#include "BenchRatio.h"

#include "String+VeltoURLAdditions.h"
#include "Url+VeltoAdditions.h"
#include "VeltoCache.h"

#include <QHash>
#include <QUrl>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

const QString &mixedText()
{
    static const QString built = [] {
        const QString pieces[] = {u"report"_s, u" "_s, u"Größe"_s, u"/"_s, u"a&b=c"_s, u"naïve"_s, u"{x|y}"_s,
                                  u"2024-06-11"_s, u"#5;"_s, u"<tag>"_s, u"€"_s, u"~user"_s};
        QString text;
        for (size_t index = 0; text.size() < 65536; index = index * 7 + 3)
            text += pieces[index % std::size(pieces)];
        return text.left(65536);
    }();
    return built;
}

// The characters our set leaves alone beyond QByteArray's own unreserved ones (letters, digits, "-._~").
const QByteArray &qtExclusions()
{
    static const QByteArray extra = "!*'();:@&=+$,/?%#[]";
    return extra;
}

QString qtEncoded(const QString &text)
{
    return QString::fromLatin1(text.toUtf8().toPercentEncoding(qtExclusions()));
}

const QString &encodedText()
{
    static const QString encoded = velto::stringByAddingVeltoPercentEncoding(mixedText());
    return encoded;
}

// The baseline must do the same work: the two encodings agree.
const bool sameEncoding = [] {
    if (qtEncoded(mixedText()) != velto::stringByAddingVeltoPercentEncoding(mixedText()))
        std::abort();
    return true;
}();

void BM_PercentEncode(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(velto::stringByAddingVeltoPercentEncoding(mixedText()).constData());
    state.SetBytesProcessed(state.iterations() * mixedText().size() * 2);
}

void BM_Baseline_QByteArrayPercentEncode(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(qtEncoded(mixedText()).constData());
    state.SetBytesProcessed(state.iterations() * mixedText().size() * 2);
}

void BM_PercentDecodeStrict(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(velto::stringByRemovingVeltoPercentEncoding(encodedText()).constData());
    state.SetBytesProcessed(state.iterations() * encodedText().size() * 2);
}

void BM_Baseline_QByteArrayPercentDecode(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(QString::fromUtf8(QByteArray::fromPercentEncoding(encodedText().toLatin1())).constData());
    state.SetBytesProcessed(state.iterations() * encodedText().size() * 2);
}

const QStringList &typedTexts()
{
    static const QStringList texts = {u"example.com/page"_s, u"https://www.example.org/a?b=c#d"_s,
                                      u"someone@example.com"_s, u"/usr/share/doc/readme"_s,
                                      u"~/Documents/notes.txt"_s, u"bücher.de/katalog"_s,
                                      u"not a url at all"_s, u"https://example.com/long\npath"_s};
    return texts;
}

void BM_LooseTextRule(benchmark::State &state)
{
    for (auto _ : state) {
        for (const QString &text : typedTexts())
            benchmark::DoNotOptimize(velto::URLWithVeltoValidatedString(text));
    }
    state.SetItemsProcessed(state.iterations() * typedTexts().size());
}

void BM_Baseline_QUrlFromUserInput(benchmark::State &state)
{
    for (auto _ : state) {
        for (const QString &text : typedTexts())
            benchmark::DoNotOptimize(QUrl::fromUserInput(text));
    }
    state.SetItemsProcessed(state.iterations() * typedTexts().size());
}

QStringList toolNames()
{
    QStringList names;
    for (int index = 0; index < 64; ++index)
        names << u"tool-%1"_s.arg(index);
    return names;
}

void BM_NamedCacheHit(benchmark::State &state)
{
    const QStringList names = toolNames();
    VeltoCache<QString> cache(u"bench"_s);
    for (const QString &name : names)
        cache.setObject(u"/usr/bin/"_s + name, name);
    qsizetype index = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(cache.objectForKey(names.at(index++ & 63)));
}

void BM_Baseline_PlainHashHit(benchmark::State &state)
{
    const QStringList names = toolNames();
    QHash<QString, QString> hash;
    for (const QString &name : names)
        hash.insert(name, u"/usr/bin/"_s + name);
    qsizetype index = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(hash.value(names.at(index++ & 63)));
}

BENCHMARK(BM_PercentEncode)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_QByteArrayPercentEncode)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PercentDecodeStrict)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_QByteArrayPercentDecode)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LooseTextRule)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_QUrlFromUserInput)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_NamedCacheHit);
BENCHMARK(BM_Baseline_PlainHashHit);

VELTO_BENCHMARK_RATIO("BM_PercentEncode", "BM_Baseline_QByteArrayPercentEncode");
VELTO_BENCHMARK_RATIO("BM_PercentDecodeStrict", "BM_Baseline_QByteArrayPercentDecode");
VELTO_BENCHMARK_RATIO("BM_LooseTextRule", "BM_Baseline_QUrlFromUserInput");
VELTO_BENCHMARK_RATIO("BM_NamedCacheHit", "BM_Baseline_PlainHashHit");

} // namespace

VELTO_BENCHMARK_MAIN()
