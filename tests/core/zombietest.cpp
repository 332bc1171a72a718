// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Zombie objects on real QObjects: each touch below goes through a pointer to an object that was really
// deleted. Calling through a dangling pointer is what zombies exist to catch, so the test does it on
// purpose; the sanitizer build compiles this file without UBSan's vptr check (see CMakeLists.txt), which
// would otherwise stop the program at the call itself ("member call on address … which does not point to
// an object of type 'Foo' … object is of type 'Foo_VeltoZombie'") before the zombie can answer.
// AddressSanitizer stays on: zombie memory is never freed, so touching it is no heap-use-after-free.

#include "Object+VeltoDispatch.h"
#include "VTSymbols_p.h"
#include "VTZombieClass_p.h"
#include "VeltoAlertPresenter.h"
#include "VeltoException.h"
#include "VeltoObjectDealloc.h"
#include "VeltoWeakTargetTimer.h"
#include "VeltoZombie.h"
#include "veltotest.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <functional>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

// A value too large for registers, returned through a hidden result pointer.
struct Measurements
{
    double values[8];
};

class Foo : public QObject
{
    Q_OBJECT
    VELTO_OBJECT_DEALLOC(Foo)

public:
    using QObject::QObject;
    ~Foo() override { ++destructorRuns; }
    Q_INVOKABLE virtual int bar() { return 1; }
    virtual Measurements measure() const { return {}; }

    static inline int destructorRuns = 0;
};

class SubFoo : public Foo
{
    Q_OBJECT
};

class ThreadedFoo : public Foo
{
    Q_OBJECT
};

namespace {

using Touch = std::function<void(QObject *)>;

// Hides where a pointer came from, so that the compiler neither devirtualises the call nor warns about
// the use after delete: the point is to make the call the way a bug would.
template<typename T>
T *dangling(T *pointer)
{
    asm volatile("" : "+r"(pointer));
    return pointer;
}

class RecordingPresenter : public VeltoAlertPresenter
{
public:
    void presentError(const VeltoError &) override {}
    int runModalAlert(const Alert &alert) override
    {
        std::lock_guard lock(mutex);
        alerts.append(alert);
        threads.append(QThread::currentThread());
        return response;
    }
    qsizetype alertCount()
    {
        std::lock_guard lock(mutex);
        return alerts.size();
    }

    std::mutex mutex;
    QList<Alert> alerts;
    QList<QThread *> threads;
    int response = NoResponse;
};

const QString AccessInformativeText = u"A memory management error occurred. Please use the Help menu to send feedback report.\n\n"_s;

} // namespace

Q_DECLARE_METATYPE(Touch)

class ZombieTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void methodNameOfSymbol_data();
    void methodNameOfSymbol();

    void withZombiesOffDeletedObjectsAreFreed();
    void decliningTheQuestionChangesNothing();
    void acceptingTheQuestionSwitchesZombiesOn();

    void deletedObjectBecomesAZombieOfItsClass();
    void eachClassHasOneZombieClass();
    void touchingAZombie_data();
    void touchingAZombie();
    void debugDescriptionAndMethodSignatureDoNotRaise();
    void zombieTouchedOnAnotherThreadAlertsOnTheMainThread();
    void theLibrarysOwnObjectsBecomeZombies();

private:
    std::shared_ptr<RecordingPresenter> presenter;
};

void ZombieTest::init()
{
    presenter = std::make_shared<RecordingPresenter>();
    VeltoAlertPresenter::install(presenter);
}

void ZombieTest::cleanup()
{
    VeltoAlertPresenter::install(nullptr);
}

void ZombieTest::methodNameOfSymbol_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("name");

    QTest::newRow("member") << u"Foo::bar()"_s << u"bar"_s;
    QTest::newRow("const, in a namespace") << u"ns::Foo::bar(int, QList<int> const&) const"_s << u"bar"_s;
    QTest::newRow("destructor") << u"Foo::~Foo()"_s << u"~Foo"_s;
    QTest::newRow("QObject's own") << u"QObject::eventFilter(QObject*, QEvent*)"_s << u"eventFilter"_s;
    QTest::newRow("anonymous namespace") << u"(anonymous namespace)::Foo::bar()"_s << u"bar"_s;
    QTest::newRow("class template") << u"Box<std::pair<int, int> >::open(std::pair<int, int>)"_s << u"open"_s;
    QTest::newRow("call operator") << u"Foo::operator()(int)"_s << u"operator()"_s;
    QTest::newRow("comparison operator") << u"Foo::operator<(Foo const&) const"_s << u"operator<"_s;
    QTest::newRow("thunk") << u"non-virtual thunk to Foo::bar()"_s << u"bar"_s;
    QTest::newRow("reference-qualified") << u"Foo::take() &&"_s << u"take"_s;
}

void ZombieTest::methodNameOfSymbol()
{
    QFETCH(QString, function);
    QTEST(VTZombieClass::methodNameOfSymbol(function), "name");
}

void ZombieTest::withZombiesOffDeletedObjectsAreFreed()
{
    QVERIFY(!VeltoZombie::isActivated());
    QVERIFY(VeltoObject_Dealloc.current() == &VeltoObject_DestroyAndFree);
    auto *foo = new Foo;
    QVERIFY(!VeltoZombie::zombieForObject(foo));
    const int runs = Foo::destructorRuns;
    delete foo; // freed: under AddressSanitizer a leak or a bad free would be reported
    QCOMPARE(Foo::destructorRuns, runs + 1);
}

void ZombieTest::decliningTheQuestionChangesNothing()
{
    presenter->response = VeltoAlertPresenter::FirstButtonReturn + 1; // "Cancel"
    VeltoZombie::activateZombies();
    QCOMPARE(presenter->alerts.size(), 1);
    const VeltoAlertPresenter::Alert &question = presenter->alerts.first();
    QCOMPARE(question.messageText, u"Do you want to enable zombie objects?"_s);
    QCOMPARE(question.informativeText,
             u"Zombies are a debugging tool that helps diagnose bugs when working with Velto Software technical support. "
             "Do not enable them unless instructed. If you enable them, memory (RAM) will leak when using Pennova."_s);
    QCOMPARE(question.buttonTitles, (QStringList{u"Enable Zombies"_s, u"Cancel"_s}));
    QVERIFY(!VeltoZombie::isActivated());
    QVERIFY(VeltoObject_Dealloc.current() == &VeltoObject_DestroyAndFree);

    // Without a presenter nobody can answer: the question is logged and nothing changes.
    VeltoAlertPresenter::install(nullptr);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(u"*** "_s + question.messageText + u'\n' + question.informativeText));
    VeltoZombie::activateZombies();
    QVERIFY(!VeltoZombie::isActivated());
}

void ZombieTest::acceptingTheQuestionSwitchesZombiesOn()
{
    presenter->response = VeltoAlertPresenter::FirstButtonReturn;
    QTest::ignoreMessage(QtWarningMsg, "*** enabling Velto Zombies to aid in diagnosing bugs, but WILL leak memory!");
    VeltoZombie::activateZombies();
    QVERIFY(VeltoZombie::isActivated());
    QVERIFY(VeltoObject_Dealloc.current() == &VeltoZombie_Dealloc);
    VeltoZombie::activateZombies(); // already on: no second question
    QCOMPARE(presenter->alerts.size(), 1);
}

void ZombieTest::deletedObjectBecomesAZombieOfItsClass()
{
    auto *foo = new Foo;
    QPointer<QObject> child = new QObject(foo);
    QPointer<Foo> guard = foo;
    QSignalSpy destroyedSpy(foo, &QObject::destroyed);
    const int runs = Foo::destructorRuns;
    QVERIFY(!VeltoZombie::zombieForObject(foo)); // alive

    delete foo;
    // Destroyed as usual: destructors, children, signals and guards.
    QCOMPARE(Foo::destructorRuns, runs + 1);
    QCOMPARE(destroyedSpy.count(), 1);
    QVERIFY(child.isNull());
    QVERIFY(guard.isNull());

    QObject *object = dangling<QObject>(foo);
    const VeltoZombie *zombie = VeltoZombie::zombieForObject(object);
    QVERIFY(zombie);
    QCOMPARE(zombie->className(), u"Foo_VeltoZombie"_s);
    QCOMPARE(zombie->veltoOriginalClass(), &Foo::staticMetaObject);
    QCOMPARE(zombie->debugDescription(), u"Foo_VeltoZombie<0x%1>"_s.arg(quintptr(object), 0, 16));
    // The object's C++ type is now its zombie class, a subclass of VeltoZombie; it is no longer a Foo.
    QCOMPARE(VTSymbols::typeName(typeid(*object)), u"Foo_VeltoZombie"_s);
    QCOMPARE(dynamic_cast<Foo *>(object), nullptr);
    QCOMPARE(presenter->alertCount(), 0); // nothing is reported until the zombie is used
}

void ZombieTest::eachClassHasOneZombieClass()
{
    Foo *first = new Foo;
    Foo *second = new Foo;
    Foo *sub = new SubFoo;
    delete first;
    delete second;
    delete sub;
    const VTZombieClass &firstClass = VTZombieClass::ofZombie(dangling(first));
    QCOMPARE(&VTZombieClass::ofZombie(dangling(second)), &firstClass);
    QCOMPARE(VeltoZombie::zombieForObject(dangling(sub))->className(), u"SubFoo_VeltoZombie"_s);
    QVERIFY(&VTZombieClass::ofZombie(dangling(sub)) != &firstClass);

    // Objects of a class destroyed on several threads at once still share one zombie class.
    constexpr int threadCount = 8;
    std::vector<QObject *> zombies(threadCount * 50);
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < threadCount; ++t) {
            threads.emplace_back([&zombies, t] {
                for (int i = 0; i < 50; ++i) {
                    auto *object = new ThreadedFoo;
                    zombies[t * 50 + i] = object;
                    delete object;
                }
            });
        }
    }
    const VTZombieClass &threadedClass = VTZombieClass::ofZombie(dangling(zombies.front()));
    QCOMPARE(threadedClass.name(), u"ThreadedFoo_VeltoZombie"_s);
    for (QObject *zombie : zombies)
        QCOMPARE(&VTZombieClass::ofZombie(dangling(zombie)), &threadedClass);
}

void ZombieTest::touchingAZombie_data()
{
    QTest::addColumn<Touch>("touch");
    QTest::addColumn<QString>("sent");

    QTest::newRow("meta-call by name") << Touch([](QObject *object) { QMetaObject::invokeMethod(object, "bar"); })
                                       << u"metaObject"_s;
    QTest::newRow("qobject_cast") << Touch([](QObject *object) { (void)qobject_cast<Foo *>(object); }) << u"metaObject"_s;
    QTest::newRow("setProperty") << Touch([](QObject *object) { object->setProperty("name", 1); }) << u"metaObject"_s;
    QTest::newRow("property") << Touch([](QObject *object) { (void)object->property("objectName"); }) << u"metaObject"_s;
    QTest::newRow("inherits") << Touch([](QObject *object) { (void)object->inherits("Foo"); }) << u"qt_metacast"_s;
    QTest::newRow("virtual call") << Touch([](QObject *object) { (void)static_cast<Foo *>(object)->bar(); }) << u"bar"_s;
    QTest::newRow("virtual call with a large result")
        << Touch([](QObject *object) { (void)static_cast<Foo *>(object)->measure(); }) << u"measure"_s;
    QTest::newRow("QObject's virtual") << Touch([](QObject *object) {
        QEvent event(QEvent::User);
        object->event(&event);
    }) << u"event"_s;
    QTest::newRow("call by name") << Touch([](QObject *object) { velto::performSelectorIfResponds(object, "bar"); })
                                  << u"bar"_s;
    QTest::newRow("responds to selector") << Touch([](QObject *object) { (void)velto::respondsToSelectorVelto(object, "bar"); })
                                          << u"bar"_s;
    QTest::newRow("scalar call by name") << Touch([](QObject *object) { (void)velto::intForPerformSelector(object, "bar"); })
                                         << u"bar"_s;
}

void ZombieTest::touchingAZombie()
{
    QFETCH(Touch, touch);
    QFETCH(QString, sent);

    Foo *foo = new Foo;
    delete foo;
    const QString text = u"Zombie Foo_VeltoZombie sent "_s + sent;
    QTest::ignoreMessage(QtWarningMsg, qPrintable(u"*** ERROR: "_s + text));
    VELTO_COMPARE_THROWN(touch(dangling<QObject>(foo)), u"VeltoZombieAccessed"_s, text);
    // The alert is queued, not shown while the exception unwinds; it comes on the main thread.
    QCOMPARE(presenter->alertCount(), 0);
    QTRY_COMPARE(presenter->alertCount(), 1);
    const VeltoAlertPresenter::Alert &alert = presenter->alerts.first();
    QCOMPARE(alert.messageText, u"Error: Zombie Access!"_s);
    QCOMPARE(alert.informativeText, AccessInformativeText + text);
    QCOMPARE(alert.buttonTitles, QStringList{u"OK"_s});
    QCOMPARE(presenter->threads.first(), QThread::currentThread());
}

void ZombieTest::debugDescriptionAndMethodSignatureDoNotRaise()
{
    Foo *foo = new Foo;
    delete foo;
    QObject *zombie = dangling<QObject>(foo);
    const QString description = VeltoZombie::zombieForObject(zombie)->debugDescription();
    QVERIFY(velto::respondsToSelectorVelto(zombie, "debugDescription"));
    QCOMPARE(velto::performSelectorIfResponds(zombie, "debugDescription").toString(), description);
    QTest::ignoreMessage(QtInfoMsg, qPrintable(u"* WARN: method signature requested for selector 'bar' on zombie "_s + description));
    QCOMPARE(velto::parameterCountForSelectorVelto(zombie, "bar"), 0);
    QCoreApplication::processEvents();
    QCOMPARE(presenter->alertCount(), 0);
}

void ZombieTest::zombieTouchedOnAnotherThreadAlertsOnTheMainThread()
{
    Foo *foo = new Foo;
    delete foo;
    QString caught;
    QTest::ignoreMessage(QtWarningMsg, "*** ERROR: Zombie Foo_VeltoZombie sent bar");
    std::thread([&caught, zombie = dangling<QObject>(foo)] {
        try {
            velto::performSelectorIfResponds(zombie, "bar");
        } catch (const VeltoException &exception) {
            caught = exception.name();
        }
    }).join();
    QCOMPARE(caught, u"VeltoZombieAccessed"_s);
    QTRY_COMPARE(presenter->alertCount(), 1);
    QCOMPARE(presenter->threads.first(), QThread::currentThread());
}

void ZombieTest::theLibrarysOwnObjectsBecomeZombies()
{
    QObject target;
    auto timer = VeltoWeakTargetTimer::newScheduledTimerWithTimeInterval(60, &target, "deleteLater", false);
    VeltoWeakTargetTimer *pointer = timer.get();
    timer.reset();
    QObject *zombie = dangling<QObject>(pointer);
    QCOMPARE(VeltoZombie::zombieForObject(zombie)->className(), u"VeltoWeakTargetTimer_VeltoZombie"_s);
    // The library's symbols are hidden; QObject's own slots are still named.
    QTest::ignoreMessage(QtWarningMsg, "*** ERROR: Zombie VeltoWeakTargetTimer_VeltoZombie sent metaObject");
    QVERIFY_THROWS_EXCEPTION(VeltoException, QMetaObject::invokeMethod(zombie, "invalidate"));
    QTRY_COMPARE(presenter->alertCount(), 1);
}

QTEST_GUILESS_MAIN(ZombieTest)
#include "zombietest.moc"
