// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Object+VeltoKVOHelper.h"

#include <QPointer>
#include <QTest>

using namespace Qt::StringLiterals;

class Document : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(int pages MEMBER m_pages NOTIFY pagesChanged)
    Q_PROPERTY(int plain MEMBER m_plain)

public:
    QString title() const { return m_title; }
    void setTitle(const QString &title)
    {
        m_title = title;
        emit titleChanged();
    }
    // How many connections the property signals have: one per observed pair, however often asked.
    int titleConnections() { return receivers(SIGNAL(titleChanged())); }
    int pagesConnections() { return receivers(SIGNAL(pagesChanged())); }

signals:
    void titleChanged();
    void pagesChanged();

private:
    QString m_title;
    int m_pages = 0;
    int m_plain = 0;
};

class Watcher : public QObject
{
    Q_OBJECT

public:
    QStringList calls;

public slots:
    void none() { calls << u"none"_s; }
    void one(QObject *watched) { calls << u"one %1"_s.arg(watched->objectName()); }
    void two(QObject *watched, const QVariantMap &change)
    {
        calls << u"two %1 old=%2 new=%3"_s.arg(watched->objectName(), change.value(u"old"_s).toString(),
                                               change.value(u"new"_s).toString());
    }
    void three(QObject *, const QVariantMap &, QObject *) { calls << u"three"_s; }
};

class KVOHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void deliveryByParameterCount_data()
    {
        QTest::addColumn<QByteArray>("selector");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("no parameter") << "none"_ba << QStringList{u"none"_s};
        QTest::newRow("watched object") << "one"_ba << QStringList{u"one doc"_s};
        QTest::newRow("watched object and change") << "two"_ba << QStringList{u"two doc old=a new=b"_s};
        QTest::newRow("three parameters: not called") << "three"_ba << QStringList{};
        QTest::newRow("no such method") << "missing"_ba << QStringList{};
    }

    void deliveryByParameterCount()
    {
        QFETCH(QByteArray, selector);
        QFETCH(QStringList, calls);
        Document document;
        document.setObjectName(u"doc"_s);
        document.setTitle(u"a"_s);
        Watcher watcher;
        velto::addObserverVelto(&document, &watcher, u"title"_s,
                                VeltoKeyValueObservingOptionNew | VeltoKeyValueObservingOptionOld, selector.constData());
        document.setTitle(u"b"_s);
        QCOMPARE(watcher.calls, calls);
    }

    void oneConnectionPerPairAndFirstSelectorWins()
    {
        Document document;
        document.setObjectName(u"doc"_s);
        Watcher watcher;
        velto::addObserverVelto(&document, &watcher, u"title"_s, {}, "one");
        velto::addObserverVelto(&document, &watcher, u"title"_s, {}, "none"); // counted, selector ignored
        QCOMPARE(document.titleConnections(), 1);
        document.setTitle(u"x"_s);
        QCOMPARE(watcher.calls, QStringList{u"one doc"_s});

        velto::removeObserverVelto(&document, &watcher, u"title"_s);
        QVERIFY(velto::hasObserverVelto(&document, &watcher, u"title"_s));
        QCOMPARE(document.titleConnections(), 1);
        velto::removeObserverVelto(&document, &watcher, u"title"_s);
        QVERIFY(!velto::hasObserverVelto(&document, &watcher, u"title"_s));
        QCOMPARE(document.titleConnections(), 0);
        velto::removeObserverVelto(&document, &watcher, u"title"_s); // unbalanced: nothing happens
        document.setTitle(u"y"_s);
        QCOMPARE(watcher.calls.size(), 1);

        Watcher stranger;
        QVERIFY(!velto::hasObserverVelto(&document, &stranger, u"title"_s));
        QCOMPARE(VeltoKVOHelper::helperForObserver(&stranger, false), nullptr); // asking created none
    }

    void blockAndInitialDelivery()
    {
        Document document;
        document.setProperty("pages", 3);
        Watcher watcher;
        QList<QVariantMap> changes;
        QObject *seenObserver = nullptr;
        velto::addObserverVeltoNotifyUsing(&document, &watcher, u"pages"_s,
                                           VeltoKeyValueObservingOptionInitial | VeltoKeyValueObservingOptionNew
                                               | VeltoKeyValueObservingOptionOld,
                                           [&](QObject *observer, QObject *, const QVariantMap &change) {
                                               seenObserver = observer;
                                               changes << change;
                                           });
        document.setProperty("pages", 4);
        QCOMPARE(seenObserver, &watcher);
        QCOMPARE(changes, (QList<QVariantMap>{{{u"kind"_s, 1}, {u"new"_s, 3}},
                                              {{u"kind"_s, 1}, {u"new"_s, 4}, {u"old"_s, 3}}}));
    }

    void twoWatchedObjectsTwoRegistrations()
    {
        Document first, second;
        first.setObjectName(u"first"_s);
        second.setObjectName(u"second"_s);
        Watcher watcher;
        velto::addObserverVelto(&first, &watcher, u"title"_s, {}, "one");
        velto::addObserverVelto(&second, &watcher, u"title"_s, {}, "one");
        velto::addObserverVelto(&second, &watcher, u"pages"_s, {}, "none");
        QCOMPARE(VeltoKVOHelper::helperForObserver(&watcher, false)->registrations().size(), 3);
        second.setTitle(u"t"_s);
        first.setTitle(u"t"_s);
        QCOMPARE(watcher.calls, QStringList({u"one second"_s, u"one first"_s}));
    }

    void observerDestructionRemovesEveryConnection()
    {
        Document first, second;
        auto watcher = std::make_unique<Watcher>();
        velto::addObserverVelto(&first, watcher.get(), u"title"_s, {}, "none");
        velto::addObserverVelto(&first, watcher.get(), u"title"_s, {}, "none");
        velto::addObserverVelto(&second, watcher.get(), u"pages"_s, {}, "none");
        QPointer<VeltoKVOHelper> helper = VeltoKVOHelper::helperForObserver(watcher.get(), false);
        watcher.reset();
        QVERIFY(helper.isNull());
        QCOMPARE(first.titleConnections() + second.pagesConnections(), 0);
        first.setTitle(u"after"_s); // must reach nobody
    }

    void propertyWithoutNotifyIsReported()
    {
        Document document;
        Watcher watcher;
        QTest::ignoreMessage(QtWarningMsg,
                             "*** VeltoKVOHelper: Document has no property \"plain\" with a NOTIFY signal; its changes cannot be observed");
        velto::addObserverVelto(&document, &watcher, u"plain"_s, {}, "none");
        QVERIFY(velto::hasObserverVelto(&document, &watcher, u"plain"_s)); // counted, so removal stays balanced
        velto::removeObserverVelto(&document, &watcher, u"plain"_s);
        QVERIFY(!velto::hasObserverVelto(&document, &watcher, u"plain"_s));
    }
};

QTEST_GUILESS_MAIN(KVOHelperTest)
#include "kvohelpertest.moc"
