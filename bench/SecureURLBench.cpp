// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Secure URLs on their hot paths, with the default Linux platform:
// - resolving a reference to a file that has not changed, against a plain stat() of its path: once as
//   every access does it (the cached URL, checked for reachability) and once afresh from the bookmark
//   record (decoded, checksummed, the path stat()ed and its device and inode compared);
// - a start/stop pair of access on a folder that is open already, inside a sandbox (the reference
//   resolves, the registry finds the folder's entry and counts on it, the stop gives the count back),
//   against a lock/unlock pair of an uncontended std::mutex.

#include "BenchRatio.h"

#include "VeltoSecureURL.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <mutex>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// The registry counts only inside a sandbox; the container variable is the documented way to say so,
// read on the first question, after this.
[[maybe_unused]] const bool sandboxed = qputenv("APP_SANDBOX_CONTAINER_ID", "com.velto.bench");

bool createFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly);
}

struct Fixture
{
    Fixture()
    {
        if (!created || !url || !folderURL || folderURL->startAccessingWithFlags({}).isEmpty())
            std::abort();
    }
    QTemporaryDir folder;
    QString path = folder.filePath(u"report.txt"_s);
    QByteArray nativePath = QFile::encodeName(path);
    bool created = createFile(path);
    std::shared_ptr<VeltoSecureURL> url = VeltoSecureURL::initCapturingBookmarkForURL(QUrl::fromLocalFile(path), false);
    std::shared_ptr<VeltoSecureURL> folderURL = VeltoSecureURL::initCapturingBookmarkForURL(QUrl::fromLocalFile(folder.path()), false);
};

Fixture &fixture()
{
    static Fixture made;
    return made;
}

void BM_ResolveUnchangedCached(benchmark::State &state)
{
    Fixture &f = fixture();
    for (auto _ : state)
        benchmark::DoNotOptimize(f.url->resolvedURL());
}

void BM_ResolveUnchangedAfresh(benchmark::State &state)
{
    Fixture &f = fixture();
    for (auto _ : state)
        benchmark::DoNotOptimize(f.url->resolveBookmarkedURLUncachedWithFlags({}));
}

void BM_Baseline_StatPath(benchmark::State &state)
{
    Fixture &f = fixture();
    struct stat status;
    for (auto _ : state)
        benchmark::DoNotOptimize(::stat(f.nativePath.constData(), &status));
}

void BM_StartStopOnOpenFolder(benchmark::State &state)
{
    Fixture &f = fixture();
    for (auto _ : state) {
        benchmark::DoNotOptimize(f.folderURL->startAccessingWithFlags({}));
        f.folderURL->stopAccessing();
    }
    if (f.folderURL->openCount() != 1 || VeltoSecureURL::openURLs().size() != 1)
        state.SkipWithError("the folder's count did not come back to one");
}

void BM_Baseline_MutexLockUnlock(benchmark::State &state)
{
    std::mutex mutex;
    for (auto _ : state) {
        mutex.lock();
        benchmark::ClobberMemory();
        mutex.unlock();
    }
}

BENCHMARK(BM_ResolveUnchangedCached);
BENCHMARK(BM_ResolveUnchangedAfresh);
BENCHMARK(BM_Baseline_StatPath);
BENCHMARK(BM_StartStopOnOpenFolder);
BENCHMARK(BM_Baseline_MutexLockUnlock);

VELTO_BENCHMARK_RATIO("BM_ResolveUnchangedCached", "BM_Baseline_StatPath");
VELTO_BENCHMARK_RATIO("BM_ResolveUnchangedAfresh", "BM_Baseline_StatPath");
VELTO_BENCHMARK_RATIO("BM_StartStopOnOpenFolder", "BM_Baseline_MutexLockUnlock");

} // namespace

VELTO_BENCHMARK_MAIN()
