// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Replace-all passes over a 10 MiB text (10,485,760 UTF-16 units of lines of words): a word found in 1% of the
// lines, every space (same-length and longer replacement), and a pass that finds nothing. Long strings go
// through the buffered rebuild, a 500,000-unit prefix through in-place editing. Baselines: QString::replace
// on a copy of the same input, and for the pass without a match one QString::indexOf over the text. One more
// pair compares a caller's std::function block with the built-in block doing the same search. Last, hard
// wrapping of the whole text at 40 units against a plain greedy word wrap, and against the cheapest possible
// rewrap: cutting it every 40 units.

#include "BenchRatio.h"

#include "String+VeltoDisplay.h"
#include "String+VeltoReplacing.h"
#include "String+VeltoSearching.h"

#include <QString>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype TextUnits = 10 * 1024 * 1024;
constexpr qsizetype PrefixUnits = 500'000;

// Deterministic: a fixed generator picks 6 to 13 words per line; every 100th line holds "zephyr".
const QString &text()
{
    static const QString built = [] {
        const QString words[] = {u"the"_s, u"river"_s, u"ran"_s, u"quietly"_s, u"under"_s, u"old"_s, u"stone"_s,
                                 u"bridges"_s, u"while"_s, u"lanterns"_s, u"swayed"_s, u"in"_s, u"a"_s, u"slow"_s,
                                 u"autumn"_s, u"wind"_s, u"and"_s, u"nobody"_s, u"spoke"_s, u"of"_s, u"it"_s,
                                 u"again"_s, u"market"_s, u"square"_s, u"copper"_s, u"kettle"_s, u"morning"_s,
                                 u"letters"_s, u"harbour"_s, u"window"_s, u"garden"_s, u"pages"_s};
        quint64 state = 0x9E3779B97F4A7C15ULL;
        const auto next = [&state](quint64 bound) {
            state = state * 6364136223846793005ULL + 1442695040888963407ULL;
            return (state >> 33) % bound;
        };
        QString text;
        text.reserve(TextUnits + 200);
        for (qsizetype line = 0; text.size() < TextUnits; ++line) {
            const quint64 count = 6 + next(8);
            const quint64 special = line % 100 == 0 ? next(count) : count;
            for (quint64 w = 0; w < count; ++w) {
                if (w != 0)
                    text += u' ';
                text += w == special ? u"zephyr"_s : words[next(std::size(words))];
            }
            text += u'\n';
        }
        text.truncate(TextUnits);
        return text;
    }();
    return built;
}

const QString &prefix()
{
    static const QString cut = text().left(PrefixUnits);
    return cut;
}

void ours(benchmark::State &state, const QString &input, const QString &target, const QString &replacement)
{
    for (auto _ : state) {
        QString result = velto::stringByReplacingAllOccurrencesOfString(input, target, replacement);
        benchmark::DoNotOptimize(result.constData());
    }
}

void qtReplace(benchmark::State &state, const QString &input, const QString &target, const QString &replacement)
{
    for (auto _ : state) {
        QString result = input;
        result.replace(target, replacement);
        benchmark::DoNotOptimize(result.constData());
    }
}

void BM_WordBuffered(benchmark::State &state) { ours(state, text(), u"zephyr"_s, u"west wind"_s); }
void BM_Baseline_WordQtReplace(benchmark::State &state) { qtReplace(state, text(), u"zephyr"_s, u"west wind"_s); }
void BM_WordInPlace(benchmark::State &state) { ours(state, prefix(), u"zephyr"_s, u"west wind"_s); }
void BM_Baseline_WordQtReplacePrefix(benchmark::State &state) { qtReplace(state, prefix(), u"zephyr"_s, u"west wind"_s); }

void BM_SpaceToUnderscoreBuffered(benchmark::State &state) { ours(state, text(), u" "_s, u"_"_s); }
void BM_Baseline_SpaceToUnderscoreQtReplace(benchmark::State &state) { qtReplace(state, text(), u" "_s, u"_"_s); }
void BM_SpaceToUnderscoreInPlace(benchmark::State &state) { ours(state, prefix(), u" "_s, u"_"_s); }
void BM_Baseline_SpaceToUnderscoreQtReplacePrefix(benchmark::State &state) { qtReplace(state, prefix(), u" "_s, u"_"_s); }

void BM_SpaceToPercent20Buffered(benchmark::State &state) { ours(state, text(), u" "_s, u"%20"_s); }
void BM_Baseline_SpaceToPercent20QtReplace(benchmark::State &state) { qtReplace(state, text(), u" "_s, u"%20"_s); }
void BM_SpaceToPercent20InPlace(benchmark::State &state) { ours(state, prefix(), u" "_s, u"%20"_s); }
void BM_Baseline_SpaceToPercent20QtReplacePrefix(benchmark::State &state) { qtReplace(state, prefix(), u" "_s, u"%20"_s); }

// The same search as a caller's std::function block: what the built-in blocks save by being inlined.
void BM_SpaceToUnderscoreFunctionBlock(benchmark::State &state)
{
    const QString target = u" "_s, replacement = u"_"_s;
    const VeltoStringReplacer::MatchBlock block = [&](const QString &string, VeltoRange range, qint64, QString *slot) {
        *slot = replacement;
        return velto::rangeOfStringVelto(string, target, {}, range);
    };
    for (auto _ : state) {
        QString result = velto::stringByReplacingAllVeltoUsing(text(), block);
        benchmark::DoNotOptimize(result.constData());
    }
}

void BM_NoMatchPass(benchmark::State &state) { ours(state, text(), u"quixotic"_s, u"x"_s); }
void BM_Baseline_NoMatchIndexOf(benchmark::State &state)
{
    const QString target = u"quixotic"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(text().indexOf(target));
}

constexpr qsizetype WrapColumn = 40;

void BM_HardWrap(benchmark::State &state)
{
    for (auto _ : state) {
        QString wrapped = velto::stringByHardWrappingToLineLength(text(), WrapColumn);
        benchmark::DoNotOptimize(wrapped.constData());
    }
    state.SetBytesProcessed(state.iterations() * text().size() * 2);
}

void BM_Baseline_FixedColumnSplit(benchmark::State &state)
{
    for (auto _ : state) {
        QString cut;
        cut.reserve(text().size() + text().size() / WrapColumn + 1);
        for (qsizetype at = 0; at < text().size(); at += WrapColumn) {
            cut += QStringView(text()).sliced(at, std::min(WrapColumn, text().size() - at));
            cut += u'\n';
        }
        benchmark::DoNotOptimize(cut.constData());
    }
    state.SetBytesProcessed(state.iterations() * text().size() * 2);
}

// A plain greedy word wrap, the usual real-world rewrap: words (runs between whitespace) fill a line while
// they fit, separated by one space; a line end in the text starts a new line; a longer word gets a line
// of its own.
void BM_Baseline_GreedyWordWrap(benchmark::State &state)
{
    const QStringView input(text());
    const qsizetype n = input.size();
    for (auto _ : state) {
        QString wrapped;
        wrapped.reserve(n + n / WrapColumn + 1);
        qsizetype column = 0;
        for (qsizetype i = 0; i < n;) {
            const QChar c = input[i];
            if (c == u'\n') {
                wrapped += u'\n';
                column = 0;
                ++i;
                continue;
            }
            if (c.isSpace()) {
                ++i;
                continue;
            }
            qsizetype end = i + 1;
            while (end < n && !input[end].isSpace())
                ++end;
            const qsizetype word = end - i;
            if (column != 0 && column + 1 + word > WrapColumn) {
                wrapped += u'\n';
                column = 0;
            } else if (column != 0) {
                wrapped += u' ';
                ++column;
            }
            wrapped += input.sliced(i, word);
            column += word;
            i = end;
        }
        benchmark::DoNotOptimize(wrapped.constData());
    }
    state.SetBytesProcessed(state.iterations() * n * 2);
}

BENCHMARK(BM_WordBuffered)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Baseline_WordQtReplace)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WordInPlace)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_WordQtReplacePrefix)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SpaceToUnderscoreBuffered)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Baseline_SpaceToUnderscoreQtReplace)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SpaceToUnderscoreInPlace)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_SpaceToUnderscoreQtReplacePrefix)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SpaceToUnderscoreFunctionBlock)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SpaceToPercent20Buffered)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Baseline_SpaceToPercent20QtReplace)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SpaceToPercent20InPlace)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Baseline_SpaceToPercent20QtReplacePrefix)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NoMatchPass)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Baseline_NoMatchIndexOf)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HardWrap)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Baseline_FixedColumnSplit)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Baseline_GreedyWordWrap)->Unit(benchmark::kMillisecond);

} // namespace

VELTO_BENCHMARK_RATIO("BM_WordBuffered", "BM_Baseline_WordQtReplace");
VELTO_BENCHMARK_RATIO("BM_WordInPlace", "BM_Baseline_WordQtReplacePrefix");
VELTO_BENCHMARK_RATIO("BM_SpaceToUnderscoreBuffered", "BM_Baseline_SpaceToUnderscoreQtReplace");
VELTO_BENCHMARK_RATIO("BM_SpaceToUnderscoreInPlace", "BM_Baseline_SpaceToUnderscoreQtReplacePrefix");
VELTO_BENCHMARK_RATIO("BM_SpaceToUnderscoreFunctionBlock", "BM_SpaceToUnderscoreBuffered");
VELTO_BENCHMARK_RATIO("BM_SpaceToPercent20Buffered", "BM_Baseline_SpaceToPercent20QtReplace");
VELTO_BENCHMARK_RATIO("BM_SpaceToPercent20InPlace", "BM_Baseline_SpaceToPercent20QtReplacePrefix");
VELTO_BENCHMARK_RATIO("BM_NoMatchPass", "BM_Baseline_NoMatchIndexOf");
VELTO_BENCHMARK_RATIO("BM_HardWrap", "BM_Baseline_GreedyWordWrap");
VELTO_BENCHMARK_RATIO("BM_HardWrap", "BM_Baseline_FixedColumnSplit");

VELTO_BENCHMARK_MAIN()
