// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoCache.h"

#include <QRandomGenerator>
#include <QTest>

#include <list>
#include <memory>
#include <thread>

using namespace Qt::StringLiterals;

class CacheTest : public QObject
{
    Q_OBJECT

private slots:
    void namedCaches();
    void sharedValuesOutliveTheirEntry();
    void behavesLikeAModel();
    void concurrentUse();
};

void CacheTest::namedCaches()
{
    const auto cache = VeltoCache<int>::newStaticCacheVeltoWithName(u"userDefaults.secureURLs"_s);
    QCOMPARE(cache->name(), u"com.velto.cache.userDefaults.secureURLs"_s);
    QCOMPARE(cache->countLimit(), VeltoCache<int>::DefaultCountLimit);
    QVERIFY(!cache->objectForKey(u"a"_s));
    cache->setObject(1, u"a"_s);
    cache->setObject(2, u"a"_s);
    QCOMPARE(cache->objectForKey(u"a"_s), std::optional<int>(2));
    QCOMPARE(cache->count(), 1);
    cache->removeObjectForKey(u"a"_s);
    cache->removeObjectForKey(u"never there"_s);
    QVERIFY(!cache->objectForKey(u"a"_s));
    cache->setObject(3, u"b"_s);
    cache->removeAllObjects();
    QCOMPARE(cache->count(), 0);
}

void CacheTest::sharedValuesOutliveTheirEntry()
{
    VeltoCache<std::shared_ptr<QString>> cache(u"live objects"_s, 1);
    cache.setObject(std::make_shared<QString>(u"first"_s), u"1"_s);
    const std::shared_ptr<QString> held = *cache.objectForKey(u"1"_s);
    cache.setObject(std::make_shared<QString>(u"second"_s), u"2"_s); // evicts "1"
    QVERIFY(!cache.objectForKey(u"1"_s));
    QCOMPARE(*held, u"first"_s);
    QCOMPARE(held.use_count(), 1);
    QCOMPARE(**cache.objectForKey(u"2"_s), u"second"_s);
}

void CacheTest::behavesLikeAModel()
{
    // Random operations against a list kept in use order, most recent first.
    const quint32 seed = 20240611;
    QRandomGenerator random(seed);
    const qsizetype limit = 8;
    VeltoCache<int> cache(QString(), limit);
    std::list<std::pair<QString, int>> model;
    const auto find = [&model](const QString &key) {
        return std::find_if(model.begin(), model.end(), [&](const auto &entry) { return entry.first == key; });
    };
    for (int step = 0; step < 20000; ++step) {
        const QString key = QString::number(random.bounded(16));
        const int operation = random.bounded(10);
        const auto entry = find(key);
        if (operation < 5) {
            const std::optional<int> value = cache.objectForKey(key);
            QVERIFY2(value.has_value() == (entry != model.end()), qPrintable(u"seed %1, step %2"_s.arg(seed).arg(step)));
            if (entry != model.end()) {
                QCOMPARE(*value, entry->second);
                model.splice(model.begin(), model, entry);
            }
        } else if (operation < 9) {
            if (entry != model.end())
                model.erase(entry);
            model.emplace_front(key, step);
            if (qsizetype(model.size()) > limit)
                model.pop_back();
            cache.setObject(step, key);
        } else {
            if (entry != model.end())
                model.erase(entry);
            cache.removeObjectForKey(key);
        }
        QVERIFY2(cache.count() == qsizetype(model.size()), qPrintable(u"seed %1, step %2"_s.arg(seed).arg(step)));
    }
    // A lower limit keeps the most recently used entries.
    cache.setCountLimit(3);
    model.resize(std::min<size_t>(model.size(), 3));
    QCOMPARE(cache.count(), qsizetype(model.size()));
    for (const auto &[key, value] : model)
        QCOMPARE(cache.objectForKey(key), std::optional<int>(value));
}

void CacheTest::concurrentUse()
{
    VeltoCache<QString> cache(QString(), 50);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&cache, thread] {
            for (int step = 0; step < 5000; ++step) {
                const QString key = QString::number((step * 7 + thread) % 80);
                if (const auto value = cache.objectForKey(key))
                    Q_ASSERT(value->startsWith(key + u':'));
                else
                    cache.setObject(key + u':' + QString::number(thread), key);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QVERIFY(cache.count() <= 50);
    for (int key = 0; key < 80; ++key) {
        if (const auto value = cache.objectForKey(QString::number(key)))
            QVERIFY(value->startsWith(QString::number(key) + u':'));
    }
}

QTEST_GUILESS_MAIN(CacheTest)
#include "cachetest.moc"
