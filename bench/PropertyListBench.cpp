// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Reading and writing a settings-sized property list (2,000 entries of every kind) in the binary format,
// against Qt's own binary encoding of a QVariant tree, CBOR (QCborValue::fromVariant/toCbor and
// fromCbor/toVariant), and our XML format against Qt's JSON (QJsonDocument), each pair on the same tree.

#include "BenchRatio.h"

#include "VeltoPropertyList.h"

#include <QCborValue>
#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QVariantMap settingsTree()
{
    QVariantMap root;
    for (int i = 0; i < 500; ++i) {
        const QString key = QStringLiteral("entry%1").arg(i);
        root.insert(key + QStringLiteral(".name"), QStringLiteral("Document number %1").arg(i));
        root.insert(key + QStringLiteral(".size"), qint64(i) * 4099);
        root.insert(key + QStringLiteral(".zoom"), 1.0 + i / 8.0);
        root.insert(key + QStringLiteral(".recent"),
                    QVariantList{QStringLiteral("a.txt"), i % 2 == 0, QVariantMap{{QStringLiteral("x"), i}}});
    }
    return root;
}

const QVariantMap &tree()
{
    static const QVariantMap value = settingsTree();
    return value;
}

void writeBinary(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(VeltoPropertyList::write(tree(), VeltoPropertyListBinaryFormat));
}

void writeCbor(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(QCborValue::fromVariant(tree()).toCbor());
}

void readBinary(benchmark::State &state)
{
    const QByteArray bytes = VeltoPropertyList::write(tree(), VeltoPropertyListBinaryFormat);
    state.counters["bytes"] = double(bytes.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(VeltoPropertyList::read(bytes));
}

void readCbor(benchmark::State &state)
{
    const QByteArray bytes = QCborValue::fromVariant(tree()).toCbor();
    state.counters["bytes"] = double(bytes.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(QCborValue::fromCbor(bytes).toVariant());
}

void writeXml(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(VeltoPropertyList::write(tree(), VeltoPropertyListXMLFormat));
}

void writeJson(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument(QJsonObject::fromVariantMap(tree())).toJson());
}

void readXml(benchmark::State &state)
{
    const QByteArray bytes = VeltoPropertyList::write(tree(), VeltoPropertyListXMLFormat);
    state.counters["bytes"] = double(bytes.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(VeltoPropertyList::read(bytes));
}

void readJson(benchmark::State &state)
{
    const QByteArray bytes = QJsonDocument(QJsonObject::fromVariantMap(tree())).toJson();
    state.counters["bytes"] = double(bytes.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(bytes).object().toVariantMap());
}

} // namespace

BENCHMARK(writeBinary)->Unit(benchmark::kMicrosecond);
BENCHMARK(writeCbor)->Unit(benchmark::kMicrosecond);
BENCHMARK(readBinary)->Unit(benchmark::kMicrosecond);
BENCHMARK(readCbor)->Unit(benchmark::kMicrosecond);
BENCHMARK(writeXml)->Unit(benchmark::kMicrosecond);
BENCHMARK(writeJson)->Unit(benchmark::kMicrosecond);
BENCHMARK(readXml)->Unit(benchmark::kMicrosecond);
BENCHMARK(readJson)->Unit(benchmark::kMicrosecond);
VELTO_BENCHMARK_RATIO("writeBinary", "writeCbor");
VELTO_BENCHMARK_RATIO("readBinary", "readCbor");
VELTO_BENCHMARK_RATIO("writeXml", "writeJson");
VELTO_BENCHMARK_RATIO("readXml", "readJson");

VELTO_BENCHMARK_MAIN();
