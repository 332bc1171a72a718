// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "FWMainThreadProxy.h"

#include "Object+VeltoDispatch.h"
#include "VeltoCoreLogging_p.h"
#include "VeltoException.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>

#include <array>
#include <condition_variable>
#include <exception>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {

// One call carried to the main thread; the waiting thread and the queued event share it.
struct Call
{
    QByteArray selector;
    std::array<QVariant, 3> arguments;
    QVariant result;
    std::exception_ptr error;
    bool done = false; // ran, was dropped, or its event was discarded unrun
};

bool isMainThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application && QThread::currentThread() == application->thread();
}

} // namespace

class FWMainThreadProxy::Private
{
public:
    // On the main thread.
    void run(Call &call)
    {
        {
            std::lock_guard lock(mutex);
            if (!valid)
                return;
        }
        try {
            call.result = performRequiredSelector(target.data(), call.selector.constData(), call.arguments[0],
                                                  call.arguments[1], call.arguments[2]);
        } catch (...) {
            call.error = std::current_exception();
        }
    }

    // Gives up the main thread's share of the call: the waiting thread, which reads the result last,
    // frees it (unless it stopped waiting).
    void finish(std::shared_ptr<Call> call)
    {
        {
            std::lock_guard lock(mutex);
            call->done = true;
            call.reset();
        }
        finished.notify_all();
    }

    QObject *const rawTarget;
    QPointer<QObject> target; // read on the main thread only: a target gone before its call is skipped
    // Recursive: a call whose event Qt discards at once (no event loop left) finishes on the posting
    // thread, which holds the lock while it posts.
    std::recursive_mutex mutex;
    std::condition_variable_any finished;
    bool valid = true;

    explicit Private(QObject *target) : rawTarget(target), target(target) {}

    // Finishes its call however the queued event ends: run, or discarded unrun (the application or its
    // event queue went away), so that the waiting thread is always released.
    struct Ticket
    {
        Ticket(std::shared_ptr<Private> state, std::shared_ptr<Call> call) : state(std::move(state)), call(std::move(call)) {}
        Ticket(const Ticket &) = delete;
        Ticket &operator=(const Ticket &) = delete;
        ~Ticket() { state->finish(std::move(call)); }

        const std::shared_ptr<Private> state;
        std::shared_ptr<Call> call;
    };
};

FWMainThreadProxy::FWMainThreadProxy(QObject *target) : d(std::make_shared<Private>(target))
{
}

FWMainThreadProxy::~FWMainThreadProxy()
{
    invalidate();
}

QObject *FWMainThreadProxy::target() const
{
    return d->rawTarget;
}

bool FWMainThreadProxy::respondsToSelector(const char *selector) const
{
    return velto::respondsToSelectorVelto(d->rawTarget, selector);
}

QVariant FWMainThreadProxy::performSelector(const char *selector, const QVariant &first, const QVariant &second,
                                            const QVariant &third)
{
    if (!d->rawTarget)
        return {};
    if (isMainThread() || !QCoreApplication::instance()) {
        if (!isValid())
            return {};
        if (!QCoreApplication::instance()) {
            static std::once_flag warned;
            std::call_once(warned, [] {
                qCWarning(lcVeltoFiles, "FWMainThreadProxy::performSelector: no QCoreApplication; calls run on the calling thread");
            });
        }
        return d->target ? performRequiredSelector(d->target.data(), selector, first, second, third) : QVariant();
    }

    auto call = std::make_shared<Call>();
    call->selector = selector;
    call->arguments = {first, second, third};
    // Posted under the lock, which the main thread takes before it looks at the call: everything written
    // here is seen there (by the thread sanitizer too, which cannot see through Qt's event queue).
    std::unique_lock lock(d->mutex);
    if (!d->valid)
        return {};
    QMetaObject::invokeMethod(QCoreApplication::instance(),
                              [ticket = std::make_shared<Private::Ticket>(d, call)] { ticket->state->run(*ticket->call); },
                              Qt::QueuedConnection);
    d->finished.wait(lock, [&] { return call->done || !d->valid; });
    if (!call->done)
        return {};
    lock.unlock();
    if (call->error)
        std::rethrow_exception(call->error);
    return call->result;
}

void FWMainThreadProxy::invalidate()
{
    {
        std::lock_guard lock(d->mutex);
        d->valid = false;
    }
    d->finished.notify_all();
}

bool FWMainThreadProxy::isValid() const
{
    std::lock_guard lock(d->mutex);
    return d->valid;
}

QVariant FWMainThreadProxy::performRequiredSelector(QObject *target, const char *selector, const QVariant &first,
                                                    const QVariant &second, const QVariant &third)
{
    if (!target)
        return {};
    if (!velto::respondsToSelectorVelto(target, selector)) {
        throw VeltoException(VeltoInvalidArgumentException,
                             u"-[%1 %2]: unrecognized selector sent to instance 0x%3"_s
                                 .arg(QLatin1StringView(target->metaObject()->className()), QLatin1StringView(selector))
                                 .arg(quintptr(target), 0, 16));
    }
    return velto::performSelectorIfResponds(target, selector, first, second, third);
}
