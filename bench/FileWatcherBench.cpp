// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// How long a change made by another process takes to reach the main thread: from the moment the other
// process calls write() to the moment the delegate is called on the main thread, for VeltoFileWatcher
// (the whole path an application uses: watcher thread, main-thread proxy, token lookup, delegate) and for
// an FWKQueue delegate, against QFileSystemWatcher::fileChanged (whose inotify reader runs on the main
// thread itself) in the same run. The other process is this program started with --writer: it writes one
// byte in place when asked and answers the CLOCK_MONOTONIC time it took just before the write(); the
// delegate reads the same clock. Each benchmark makes 1,000 writes; the manual time of an iteration is its
// latency, so the reported time is the mean; the median and the 90th percentile are counters, and are
// printed again, with their ratios, at the end.
//
// The last benchmark measures the watcher thread at rest: CPU time used by the threads named "FWKQueue"
// (from /proc/self/task/<tid>/stat) while nothing changes for three seconds.

#include "BenchRatio.h"

#include "FWKQueue.h"
#include "VeltoFileWatcher.h"
#include "VeltoNotificationCenter.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileSystemWatcher>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <string>
#include <thread>
#include <time.h>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int Writes = 1000;
constexpr const char *BaselineName = "QFileSystemWatcher::fileChanged (baseline)";

qint64 monotonicNanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1000000000 + now.tv_nsec;
}

// --writer: for each path read from standard input, writes one byte at its start, remembering the time
// taken just before the write; an empty line asks for that time. (Answering only when asked keeps the
// pipe from waking the measuring process while the change is on its way.)
int runWriter()
{
    std::map<std::string, int> files;
    long long before = 0;
    char line[4096];
    while (std::fgets(line, sizeof line, stdin)) {
        std::string path(line);
        path.erase(path.find_last_not_of('\n') + 1);
        if (path.empty()) {
            std::printf("%lld\n", before);
            std::fflush(stdout);
            continue;
        }
        int &descriptor = files[path];
        if (!descriptor)
            descriptor = ::open(path.c_str(), O_WRONLY);
        before = monotonicNanoseconds();
        if (descriptor < 0 || ::pwrite(descriptor, "x", 1, 0) != 1)
            return 1;
    }
    return 0;
}

// The other process, started once and asked for one write at a time.
class Writer
{
public:
    Writer()
    {
        process.start(QCoreApplication::applicationFilePath(), {u"--writer"_s});
        process.waitForStarted();
    }
    ~Writer()
    {
        process.closeWriteChannel();
        process.waitForFinished();
    }

    void requestWrite(const QString &path)
    {
        process.write(QFile::encodeName(path) + '\n');
        process.waitForBytesWritten(5000);
    }
    // The time of the last write, as the writer took it.
    qint64 writeTime()
    {
        process.write("\n");
        process.waitForBytesWritten(5000);
        while (!process.canReadLine() && process.waitForReadyRead(5000)) {
        }
        return process.readLine().trimmed().toLongLong();
    }

private:
    QProcess process;
};

Writer &writer()
{
    static Writer instance;
    return instance;
}

// What heard the change: records when, and ends the wait.
class Listener : public QObject
{
    Q_OBJECT

public:
    std::atomic<qint64> heardAt{0};
    QEventLoop *waiting = nullptr;

    // On the main thread, or (for the notification centre) on the watcher thread.
    void heard()
    {
        qint64 none = 0;
        if (!heardAt.compare_exchange_strong(none, monotonicNanoseconds()))
            return; // one per write
        if (waiting)
            QMetaObject::invokeMethod(waiting, &QEventLoop::quit, Qt::QueuedConnection);
    }

public slots:
    void fileWatcher(VeltoFileWatcher *, quint32, const QString &) { heard(); }
    void watcher(FWKQueue *, const QString &, const QString &) { heard(); }
    void fileChanged(const QString &) { heard(); }
};

struct Percentiles
{
    double median = 0;
    double p90 = 0;
};
std::map<std::string, Percentiles> &percentiles()
{
    static std::map<std::string, Percentiles> table;
    return table;
}

// One write by the other process, awaited; its latency in seconds, or -1 when it was not heard in 5 s.
double latencyOfOneWrite(const QString &file, Listener &listener)
{
    QEventLoop loop;
    QTimer timeout;
    timeout.setSingleShot(true);
    QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
    QCoreApplication::processEvents(); // nothing left over from the last write
    listener.waiting = &loop;
    listener.heardAt = 0;
    writer().requestWrite(file);
    timeout.start(5000);
    if (!listener.heardAt)
        loop.exec();
    listener.waiting = nullptr;
    const qint64 written = writer().writeTime();
    return listener.heardAt && written ? double(listener.heardAt - written) / 1e9 : -1;
}

// One write per iteration, after a few unmeasured ones; its latency is the iteration's time.
void measureLatency(benchmark::State &state, const char *name, const QString &file, Listener &listener)
{
    for (int warmUp = 0; warmUp < 20; ++warmUp)
        (void)latencyOfOneWrite(file, listener);
    std::vector<double> microseconds;
    microseconds.reserve(Writes);
    for (auto _ : state) {
        const double seconds = latencyOfOneWrite(file, listener);
        if (seconds < 0) {
            state.SkipWithError("a write was not heard within 5 s");
            break;
        }
        state.SetIterationTime(seconds);
        microseconds.push_back(seconds * 1e6);
    }
    if (microseconds.empty())
        return;
    std::sort(microseconds.begin(), microseconds.end());
    const Percentiles result{microseconds[microseconds.size() / 2], microseconds[microseconds.size() * 9 / 10]};
    state.counters["median_us"] = result.median;
    state.counters["p90_us"] = result.p90;
    percentiles()[name] = result;
}

// A fresh file to watch and the object that hears about it.
struct WatchedFile
{
    WatchedFile()
    {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write("hello\n");
    }

    QTemporaryDir dir;
    const QString path = dir.filePath(u"watched"_s);
    Listener listener;
};

void BM_VeltoFileWatcherLatency(benchmark::State &state)
{
    WatchedFile watched;
    VeltoFileWatcher *watcher = VeltoFileWatcher::instance();
    const auto token = watcher->addFileAtPath(watched.path, VeltoFileWatcherActionWrite, &watched.listener);
    measureLatency(state, "VeltoFileWatcher delegate", watched.path, watched.listener);
    watcher->removeFileWithToken(token);
}
BENCHMARK(BM_VeltoFileWatcherLatency)->Iterations(Writes)->UseManualTime()->Unit(benchmark::kMicrosecond);

void BM_FWKQueueDelegateLatency(benchmark::State &state)
{
    WatchedFile watched;
    FWKQueue *queue = FWKQueue::sharedFileWatcher();
    queue->setDelegate(&watched.listener);
    (void)queue->addPathToQueue(watched.path, FWKQueue::NoteWrite);
    measureLatency(state, "FWKQueue delegate", watched.path, watched.listener);
    queue->removePathFromQueue(watched.path);
    queue->setDelegate(nullptr);
}
BENCHMARK(BM_FWKQueueDelegateLatency)->Iterations(Writes)->UseManualTime()->Unit(benchmark::kMicrosecond);

// The first half of the way alone: the watcher thread posts to the notification centre and the observer
// runs there, with no main-thread call. Shows what the hop to the main thread adds.
void BM_FWKQueueWatcherThreadLatency(benchmark::State &state)
{
    WatchedFile watched;
    FWKQueue *queue = FWKQueue::sharedFileWatcher(); // no delegate: posts to the centre
    (void)queue->addPathToQueue(watched.path, FWKQueue::NoteWrite);
    const auto token = VeltoNotificationCenter::defaultCenter()->addObserverForName(
        {}, queue, [&](const VeltoNotification &) { watched.listener.heard(); });
    measureLatency(state, "FWKQueue to the centre, on its own thread", watched.path, watched.listener);
    VeltoNotificationCenter::defaultCenter()->removeObserver(token);
    queue->removePathFromQueue(watched.path);
}
BENCHMARK(BM_FWKQueueWatcherThreadLatency)->Iterations(Writes)->UseManualTime()->Unit(benchmark::kMicrosecond);

void BM_Baseline_QFileSystemWatcherLatency(benchmark::State &state)
{
    WatchedFile watched;
    QFileSystemWatcher watcher({watched.path});
    QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, &watched.listener, &Listener::fileChanged);
    measureLatency(state, BaselineName, watched.path, watched.listener);
}
BENCHMARK(BM_Baseline_QFileSystemWatcherLatency)->Iterations(Writes)->UseManualTime()->Unit(benchmark::kMicrosecond);

// CPU ticks used so far by the threads called "FWKQueue".
long long watcherThreadTicks(int *threads)
{
    long long ticks = 0;
    *threads = 0;
    const QStringList tasks = QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &task : tasks) {
        QFile comm(u"/proc/self/task/%1/comm"_s.arg(task));
        if (!comm.open(QIODevice::ReadOnly) || comm.readAll().trimmed() != "FWKQueue")
            continue;
        QFile stat(u"/proc/self/task/%1/stat"_s.arg(task));
        if (!stat.open(QIODevice::ReadOnly))
            continue;
        // Fields after the parenthesised name: state is field 3; utime and stime are fields 14 and 15.
        const QByteArray line = stat.readAll();
        const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        ticks += fields.value(11).toLongLong() + fields.value(12).toLongLong();
        ++*threads;
    }
    return ticks;
}

void BM_WatcherThreadIdleCpu(benchmark::State &state)
{
    WatchedFile watched;
    const auto token = VeltoFileWatcher::instance()->addFileAtPath(watched.path, 0x7f, &watched.listener);
    int threads = 0;
    for (auto _ : state) {
        const long long before = watcherThreadTicks(&threads);
        const auto started = std::chrono::steady_clock::now();
        std::this_thread::sleep_for(std::chrono::seconds(3));
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
        state.counters["cpu_ticks"] = double(watcherThreadTicks(&threads) - before);
    }
    state.counters["threads"] = threads;
    state.counters["ticks_per_s"] = double(sysconf(_SC_CLK_TCK));
    VeltoFileWatcher::instance()->removeFileWithToken(token);
}
BENCHMARK(BM_WatcherThreadIdleCpu)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

} // namespace

VELTO_BENCHMARK_RATIO("BM_VeltoFileWatcherLatency/iterations:1000/manual_time",
                      "BM_Baseline_QFileSystemWatcherLatency/iterations:1000/manual_time");
VELTO_BENCHMARK_RATIO("BM_FWKQueueDelegateLatency/iterations:1000/manual_time",
                      "BM_Baseline_QFileSystemWatcherLatency/iterations:1000/manual_time");

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], "--writer") == 0)
        return runWriter();
    int applicationArgc = 1; // the benchmark library takes the options
    QCoreApplication application(applicationArgc, argv);
    const int status = veltobench::runWithRatios(argc, argv);
    const auto baseline = percentiles().find(BaselineName);
    std::printf("\n%-56s %10s %10s %12s %10s\n", "latency (us)", "median", "p90", "median ratio", "p90 ratio");
    for (const auto &[name, result] : percentiles()) {
        const bool compared = baseline != percentiles().end();
        std::printf("%-56s %10.1f %10.1f %12.3f %10.3f\n", name.c_str(), result.median, result.p90,
                    compared ? result.median / baseline->second.median : 0.0,
                    compared ? result.p90 / baseline->second.p90 : 0.0);
    }
    return status;
}

#include "FileWatcherBench.moc"
