// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Containers+VeltoWeakReference.h"
#include "VeltoPointerKeyDictionary.h"
#include "VeltoWeakKeyDictionary.h"
#include "VeltoWeakObjectSet.h"
#include "veltotest.h"

using namespace Qt::StringLiterals;

namespace {

class SubclassReference : public VeltoWeakReference
{
public:
    using VeltoWeakReference::VeltoWeakReference;
};

// A value that removes its own entry from the dictionary it lives in when asked to.
struct SelfRemover
{
    VeltoWeakKeyDictionary *dictionary;
    const void *key;
    void removeSelf() const
    {
        dictionary->removeObjectForKey(key);
    }
};

} // namespace

class Counter : public QObject
{
    Q_OBJECT

public:
    int hits = 0;

public slots:
    void hit() { ++hits; }
};

class WeakCollectionsTest : public QObject
{
    Q_OBJECT

private slots:
    void referenceEqualsItsTarget()
    {
        QObject x;
        VeltoWeakReference reference(&x);
        QVERIFY(reference == static_cast<const void *>(&x));
        QVERIFY(reference == VeltoWeakReference(&x));
        QVERIFY(reference == SubclassReference(&x)); // equality accepts subclasses
        QCOMPARE(qHash(reference, 7), qHash(static_cast<const void *>(&x), 7));
        QVERIFY(reference.description().endsWith(u" to <0x%1>"_s.arg(quintptr(&x), 0, 16)));
        reference.invalidate();
        QCOMPARE(reference.object(), nullptr);
        QVERIFY(reference == VeltoWeakReference());
        QCOMPARE(_VeltoWeakReferenceCollection_Unbox(VeltoWeakReference(&x)), &x);
    }

    void listSearchTakesOnlyTheExactClass()
    {
        QObject x, y;
        velto::VeltoWeakReferenceList list{std::make_shared<SubclassReference>(&x)};
        QCOMPARE(velto::indexOfWeakReferenceObject(list, &x), velto::VeltoNotFoundIndex);
        velto::addWeakReferenceToObject(list, &y);
        velto::addWeakReferenceToObject(list, &x);
        velto::addWeakReferenceToObject(list, &x);
        QCOMPARE(velto::indexOfWeakReferenceObject(list, &x), 2);
        velto::removeWeakReferenceToObject(list, &x);
        QCOMPARE(list.size(), 3);
        QVERIFY(velto::containsWeakReferenceObject(list, &x)); // the duplicate is still there
        const VeltoWeakReference &first = *list.at(0);
        QCOMPARE(typeid(first), typeid(SubclassReference));
    }

    void setAndHashAdditions()
    {
        QObject x;
        QSet<VeltoWeakReference> set;
        velto::addWeakReferenceObject(set, &x);
        QVERIFY(velto::containsWeakReferenceObject(set, &x));
        velto::removeWeakReferenceObject(set, &x);
        QVERIFY(set.isEmpty());
        QHash<VeltoWeakReference, QString> hash;
        velto::setObjectForWeakKey(hash, u"value"_s, &x);
        QCOMPARE(velto::objectForWeakKey(hash, &x), u"value"_s);
        velto::removeObjectForWeakKey(hash, &x);
        QVERIFY(hash.isEmpty());
    }

    void pointerKeyDictionary()
    {
        int a = 0, b = 0;
        VeltoPointerKeyDictionary dictionary;
        dictionary.setObject(u"A"_s, &a);
        dictionary.setObject(u"B"_s, &b);
        dictionary.setObject(u"A2"_s, &a);
        QCOMPARE(dictionary.count(), 2u);
        QCOMPARE(dictionary.objectForPointer(&a).toString(), u"A2"_s);
        VELTO_COMPARE_THROWN(dictionary.setObject(QVariant(), &a), VeltoInvalidArgumentException,
                             u"VeltoPointerKeyDictionary::setObject: attempt to insert nil object for pointer 0x%1"_s
                                 .arg(quintptr(&a), 0, 16));
        QCOMPARE(dictionary.objectForPointer(&a).toString(), u"A2"_s);
        const auto keys = dictionary.newPointerVector();
        QCOMPARE((QSet<void *>{keys[0], keys[1]}), (QSet<void *>{&a, &b}));
        QVERIFY(dictionary.description().startsWith(u"VeltoPointerKeyDictionary<0x"_s));
        QVERIFY(dictionary.description().contains(u"\t0x%1 = A2 \n"_s.arg(quintptr(&a), 0, 16)));
        dictionary.removeObjectForPointer(&a);
        dictionary.removeObjectForPointer(&a);
        QCOMPARE(dictionary.count(), 1u);
    }

    void weakKeyDictionaryContract()
    {
        int k1 = 0, k2 = 0;
        VeltoWeakKeyDictionary dictionary;
        QVERIFY(!dictionary.keyEnumerator());
        QVERIFY(!dictionary.allValues());
        dictionary.setObject(1, &k1);
        dictionary.setObject(QVariant(), &k1); // ignored, not a removal
        dictionary.setObject(2, &k2);
        QCOMPARE(dictionary.objectForKey(&k1), QVariant(1));
        auto keys = dictionary.keyEnumerator();
        dictionary.removeAllObjects(); // the snapshot does not change
        QSet<void *> seen{keys->nextObject(), keys->nextObject()};
        QCOMPARE(seen, (QSet<void *>{&k1, &k2}));
        QCOMPARE(keys->nextObject(), nullptr);
        QCOMPARE(keys->nextObject(), nullptr);

        dictionary.setObject(1, &k1);
        dictionary.setObject(2, &k2);
        int visits = 0;
        QVERIFY(dictionary.enumerateUsingBlock([&](const void *, const QVariant &, bool *) { ++visits; }));
        QVERIFY(!dictionary.enumerateUsingBlock([&](const void *, const QVariant &, bool *stop) { *stop = true; ++visits; }));
        QCOMPARE(visits, 3);
        QCOMPARE(dictionary.allValues()->size(), 2);
    }

    void removalKeepsTheValueAliveUntilDone()
    {
        VeltoWeakKeyDictionary dictionary;
        int key = 0;
        auto remover = std::make_shared<SelfRemover>(SelfRemover{&dictionary, &key});
        dictionary.setObject(QVariant::fromValue(remover), &key);
        std::weak_ptr<SelfRemover> watch = remover;
        remover.reset(); // the dictionary is now the only owner
        watch.lock()->removeSelf();
        QVERIFY(watch.expired());
        QCOMPARE(dictionary.count(), 0u);
    }

    void copyOfWeakKeyDictionaryUsesAddressKeys()
    {
        // Keys are strings compared by content; the copy compares them by address again.
        const VeltoWeakKeyCallbacks byContent{
            [](const void *key) { return qHash(*static_cast<const QString *>(key)); },
            [](const void *a, const void *b) { return *static_cast<const QString *>(a) == *static_cast<const QString *>(b); }};
        const QString key = u"name"_s, sameText = u"name"_s;
        VeltoWeakKeyDictionary dictionary(byContent);
        dictionary.setObject(1, &key);
        QCOMPARE(dictionary.objectForKey(&sameText), QVariant(1));
        const auto copy = dictionary.copy();
        QCOMPARE(copy->objectForKey(&key), QVariant(1));
        QVERIFY(!copy->objectForKey(&sameText).isValid());
    }

    void weakObjectSetSnapshotsAndCopies()
    {
        Counter a, b, c;
        VeltoWeakObjectSet set;
        QVERIFY(set.objectEnumerator());
        QCOMPARE(set.objectEnumerator()->nextObject(), nullptr);
        QVERIFY(set.allObjects().isEmpty());
        QCOMPARE(set.description(), u"VeltoWeakObjectSet<0x%1> { \n}"_s.arg(quintptr(&set), 0, 16));
        set.addObject(&a);
        set.addObject(&b);
        set.addObject(&a);
        QCOMPARE(set.count(), 2u);
        QCOMPARE(set.member(&a), &a);
        QCOMPARE(set.member(&c), nullptr);
        set.makeObjectsPerformSelector("hit");
        QCOMPARE(a.hits + b.hits + c.hits, 2);

        const auto frozen = set.copy();
        const auto thawed = set.mutableCopy();
        set.removeObject(&a);
        QCOMPARE(frozen->count(), 2u);
        for (const char *operation : {"addObject", "removeObject"}) {
            VELTO_COMPARE_THROWN(qstrcmp(operation, "addObject") == 0 ? frozen->addObject(&c) : frozen->removeObject(&a),
                                 VeltoInternalInconsistencyException,
                                 u"VeltoWeakObjectSet::%1: mutating method sent to immutable object"_s.arg(QLatin1StringView(operation)));
        }
        QCOMPARE(frozen->count(), 2u);
        thawed->addObject(&c);
        QCOMPARE(thawed->count(), 3u);
        QVERIFY(thawed->containsObject(&a));
    }
};

QTEST_GUILESS_MAIN(WeakCollectionsTest)
#include "weakcollectionstest.moc"
