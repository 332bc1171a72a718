// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Eight threads start and stop access on overlapping files and folders, some of them refused by the
// simulated sandbox, sharing references and the open-URL registry; afterwards every count is zero and
// every grant is closed. Run under ThreadSanitizer as well (docs/ARCHITECTURE.md).

#include "sandboxsimulation.h"
#include "veltotest.h"

#include "VeltoOpenURLInfo.h"
#include "VeltoSecureURL.h"
#include "VeltoSecureURL_Subpath.h"

#include <QDir>
#include <QFile>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;

class SecureURLStressTest : public QObject
{
    Q_OBJECT

private slots:
    void overlappingAccessFromEightThreads()
    {
        constexpr int Threads = 8;
        constexpr int Rounds = 10000;
        QTemporaryDir root;
        const QDir at(root.path());
        QVERIFY(at.mkpath(u"folder/sub"_s) && at.mkpath(u"other"_s));
        const QStringList files{u"folder/a.txt"_s, u"folder/b.txt"_s, u"folder/sub/c.txt"_s, u"other/d.txt"_s};
        for (const QString &name : files) {
            QFile file(at.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        const auto sandbox = SandboxSimulation::install();
        sandbox->refuse(at.filePath(u"folder/b.txt"_s));     // reached through its folder, or tolerated as readable
        sandbox->refuse(at.filePath(u"folder/sub/c.txt"_s));
        QList<std::shared_ptr<VeltoSecureURL>> references;
        for (const QString &name : files + QStringList{u"folder"_s, u"folder/sub"_s, u"other"_s, u"folder/a.txt"_s})
            references << VeltoSecureURL::initCapturingBookmarkForURL(QUrl::fromLocalFile(at.filePath(name)), false);
        references << VeltoSecureURL::initUsingParentFolderSecureURL(references.at(4), QUrl::fromLocalFile(at.filePath(files.at(2))));

        VeltoTestRandom seeds(2024);
        std::atomic<int> failedStarts = 0;
        std::vector<std::thread> threads;
        for (int index = 0; index < Threads; ++index) {
            threads.emplace_back([&, seed = seeds.generate()] {
                QRandomGenerator random(seed);
                for (int round = 0; round < Rounds; ++round) {
                    QList<std::shared_ptr<VeltoSecureURL>> started;
                    for (int count = 1 + random.bounded(3); count > 0; --count) {
                        started << references.at(random.bounded(int(references.size())));
                        failedStarts += started.last()->startAccessingWithFlags({}).isEmpty();
                    }
                    while (!started.isEmpty())
                        started.takeLast()->stopAccessing();
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();

        QCOMPARE(failedStarts.load(), 0);
        QCOMPARE(VeltoSecureURL::openURLs(), QList<QUrl>());
        for (const auto &reference : std::as_const(references))
            QCOMPARE(reference->openCount(), 0);
        QCOMPARE(sandbox->openGrants(), 0);
            VeltoBookmarkPlatform::install(nullptr);
    }
};

QTEST_GUILESS_MAIN(SecureURLStressTest)
#include "secureurlstresstest.moc"
