// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "rangetestsupport.h"

#include "VeltoDirectArray.h"
#include "VeltoFloatVector.h"
#include "VeltoMutableOrderedSet.h"
#include "VeltoObjectPool.h"

#include <QSet>

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

QString floatOutOfBounds(const VeltoFloatArray &array, quint64 index, const char *operation)
{
    return u"VeltoFloatArray<0x%1> index out of bounds (index=%2, count=%3) during %4"_s.arg(quintptr(&array), 0, 16)
        .arg(index)
        .arg(array.count())
        .arg(QLatin1StringView(operation));
}

// Counts live instances, so that a test sees every pooled object released exactly once.
struct Counted
{
    static inline std::atomic<int> alive{0};
    Counted() { ++alive; }
    ~Counted() { --alive; }
};

} // namespace

class ContainersTest : public QObject
{
    Q_OBJECT

private slots:
    void floatArrayBasics()
    {
        QVERIFY(!VeltoFloatArray::initWithFloats(nullptr, 0));
        QVERIFY(!VeltoFloatVector::initWithFloats(nullptr, 0));
        const double values[] = {1.5, -2, 4};
        auto array = VeltoFloatArray::initWithFloats(values, 3);
        QCOMPARE(array->sumFloats(), 3.5);
        QCOMPARE(array->sumFloatsInRange({3, 0}), 0.0);
        // The single-precision setters round through float; the double one does not.
        array->setFloat(0.1f, 0);
        QCOMPARE(array->floatAtIndex(0), double(0.1f));
        array->replaceFloatAtIndex(0, 0.1);
        QCOMPARE(array->floatAtIndex(0), 0.1);
        array->addFloatToFloatAtIndex(0.5f, 2);
        array->replaceObjectAtIndex(1, u"2.25"_s);
        QVERIFY(array->isEqual(QVariantList{0.1, 2.25, 4.5}));
        // A copy of a vector is a plain array with the same values.
        const std::unique_ptr<VeltoFloatArray> copy = VeltoFloatVector::initWithFloats(values, 3)->copy();
        QVERIFY(!dynamic_cast<VeltoFloatVector *>(copy.get()));
        QVERIFY(copy->isEqual(QVariantList{1.5, -2, 4}));
    }

    void floatArrayEqualityAndText()
    {
        const double zero = 0.0, minusZero = -0.0, nan = std::numeric_limits<double>::quiet_NaN();
        const auto a = VeltoFloatArray::initWithFloats(&zero, 1);
        const auto b = VeltoFloatArray::initWithFloats(&minusZero, 1);
        QVERIFY(!a->isEqual(*b)); // byte for byte
        QVERIFY(a->isEqual(QVariantList{-0.0})); // numerically
        const auto n1 = VeltoFloatArray::initWithFloats(&nan, 1);
        const auto n2 = VeltoFloatArray::initWithFloats(&nan, 1);
        QVERIFY(n1->isEqual(*n2));
        QVERIFY(!n1->isEqual(QVariantList{nan}));
        QVERIFY(!a->isEqual(QVariantList{0.0, 1.0}));

        const double values[] = {1.5, 2};
        const auto array = VeltoFloatArray::initWithFloats(values, 2);
        QCOMPARE(array->description(),
                 u"VeltoFloatArray <0x%1> \n   1.500000, \n   2.000000, \n"_s.arg(quintptr(array.get()), 0, 16));
    }

    void floatArrayBoundsErrors()
    {
        auto array = VeltoFloatArray::initWithCapacity(3);
        VELTO_COMPARE_THROWN((void)array->floatAtIndex(3), VeltoRangeException, floatOutOfBounds(*array, 3, "floatAtIndex"));
        VELTO_COMPARE_THROWN((void)array->sumFloatsInRange({1, 9}), VeltoRangeException,
                             floatOutOfBounds(*array, 9, "sumFloatsInRange"));
        auto vector = VeltoFloatVector::initWithCapacity(1);
        VELTO_COMPARE_THROWN(vector->removeFloatAtIndex(0), VeltoRangeException,
                             floatOutOfBounds(*vector, 0, "removeFloatAtIndex"));
    }

    void floatVectorGrowsByDoubling()
    {
        auto vector = VeltoFloatVector::initWithCapacity(2);
        for (const double value : {1, 3, 4})
            vector->addFloat(value);
        QCOMPARE(vector->capacity(), 4u);
        vector->insertFloat(2, 1);
        vector->insertFloat(0, 0);
        QCOMPARE(vector->capacity(), 8u);
        vector->removeFloatAtIndex(4);
        QVERIFY(vector->isEqual(QVariantList{0, 1, 2, 3}));
        vector->removeAllFloats();
        QCOMPARE(vector->count(), 0u);
        QCOMPARE(vector->capacity(), 8u); // emptying keeps the buffer
    }

    void directArray()
    {
        auto names = VeltoDirectArray::initWithCapacity(6);
        names->addObject(u"beta"_s);
        names->addObjectsFromArray({u"alpha"_s, u"Gamma"_s, u"delta"_s});
        names->sortLiteralStringsInRange({0, 3});
        QVERIFY(names->isEqual(QVariantList{u"Gamma"_s, u"alpha"_s, u"beta"_s, u"delta"_s}));
        QVariant *end = nullptr;
        const QVariant *begin = names->bufferForObjectRangeVelto({1, 2}, &end);
        QCOMPARE(end - begin, 2);
        QCOMPARE(begin->toString(), u"alpha"_s);

        // Destruction releases the elements.
        const auto shared = std::make_shared<int>(1);
        auto holder = VeltoDirectArray::initWithCapacity(0);
        holder->addObject(QVariant::fromValue(shared));
        QCOMPARE(shared.use_count(), 2);
        holder.reset();
        QCOMPARE(shared.use_count(), 1);
    }

    void orderedSetKeepsStalePositions()
    {
        VeltoMutableOrderedSet<QString> set(4);
        QCOMPARE(set.anyObjectVelto(), std::nullopt);
        set.addObject(u"a"_s);
        set.addObject(u"b"_s);
        set.addObject(u"a"_s);
        set.addObjectIfNotNilVelto(QString());
        set.addObjectsFromVeltoCollection(QStringList{u"c"_s, u"b"_s});
        QCOMPARE(set.allObjectsVelto(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));

        // Positions are not renumbered: after removing a, c still answers its old position 2.
        set.removeObject(u"a"_s);
        QCOMPARE(set.indexForObject(u"c"_s), 2u);
        QCOMPARE(set.indexForObject(u"a"_s), VeltoNotFound);
        QCOMPARE(set[1], u"c"_s);
        // So removing c by its stale position reaches beyond the end, and nothing changes.
        VELTO_COMPARE_THROWN(set.removeObject(u"c"_s), VeltoRangeException, u"*** index 2 beyond bounds [0 .. 1]"_s);
        QCOMPARE(set.count(), 2u);
        set.removeObjectAtIndex(0);
        QCOMPARE(set.allObjectsVelto(), QStringList{u"c"_s});

        // Pointers give identity: two equal strings in different objects are two members.
        QString first = u"x"_s, second = u"x"_s;
        VeltoMutableOrderedSet<QString *> byIdentity;
        byIdentity.addObject(&first);
        byIdentity.addObject(&second);
        byIdentity.addObjectIfNotNilVelto(nullptr);
        QCOMPARE(byIdentity.count(), 2u);
    }

    void objectPoolIsALastInFirstOutStack()
    {
        VeltoObjectPool<QString> pool(1);
        QCOMPARE(pool.description(), u"VeltoObjectPool<0x%1> holding 0 objects, next=(null)<0x0>"_s.arg(quintptr(&pool), 0, 16));
        const auto first = std::make_shared<QString>(u"first"_s);
        QVERIFY(pool.poolObject(first));
        QVERIFY(!pool.poolObject(std::make_shared<QString>(u"second"_s)));
        QCOMPARE(pool.description(), u"VeltoObjectPool<0x%1> holding 1 objects, next=QString<0x%2>"_s
                                         .arg(quintptr(&pool), 0, 16)
                                         .arg(quintptr(first.get()), 0, 16));
        QCOMPARE(pool.newDepooledObject(), first);
        QVERIFY(!pool.newDepooledObject());

        // The last object pooled is the first one handed out.
        VeltoObjectPool<QObject> objects(2, 3);
        const auto object = std::make_shared<QObject>();
        QVERIFY(objects.poolObject(std::make_shared<QObject>()) && objects.poolObject(object));
        QCOMPARE(objects.newDepooledObject(), object);
    }

    void objectPoolFromSeveralThreads()
    {
        constexpr int Threads = 4;
        constexpr int Rounds = 20000;
        {
            VeltoObjectPool<Counted> pool(16);
            std::atomic<int> made{0};
            std::atomic<int> refused{0};
            std::vector<std::thread> workers;
            for (int t = 0; t < Threads; ++t) {
                workers.emplace_back([&] {
                    for (int i = 0; i < Rounds; ++i) {
                        std::shared_ptr<Counted> object = pool.newDepooledObject();
                        if (!object) {
                            object = std::make_shared<Counted>();
                            ++made;
                        }
                        // Only the pool and this thread may hold it now.
                        if (object.use_count() != 1)
                            qFatal("a depooled object was handed out twice");
                        if (!pool.poolObject(std::move(object)))
                            ++refused;
                    }
                });
            }
            for (std::thread &worker : workers)
                worker.join();
            // Every object made is either pooled or was refused and released.
            QCOMPARE(int(pool.count()), made - refused);
            QCOMPARE(Counted::alive.load(), made - refused);
            QVERIFY(pool.count() <= 16);
        }
        QCOMPARE(Counted::alive.load(), 0);
    }
};

QTEST_GUILESS_MAIN(ContainersTest)
#include "containerstest.moc"
