// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file FWMainThreadProxy.h
 * \brief FWMainThreadProxy: calls a QObject's methods, by name, on the main thread, and makes the calling
 * thread wait for each call to finish.
 *
 * A background thread that must hand its results to objects living on the main thread (the file
 * watcher's delegate) calls them through a proxy: the call runs on the main thread's event loop, in
 * order, never concurrently with other main-thread code, and the background thread gets the result (or
 * the exception) back as if it had called directly. Called on the main thread, the proxy calls directly.
 *
 * The target is not owned. A call queued for a target destroyed before the main thread reaches it is
 * dropped. invalidate() ends the proxy: waiting callers return at once with no result, queued calls that
 * have not started are dropped, and later calls do nothing; the owner of a proxy invalidates it before it
 * replaces or forgets the target, and a thread that stops must never wait for a main thread that is
 * waiting for it.
 *
 * The main thread is the thread of the QCoreApplication; without one there is no event loop to carry a
 * call, and calls run on the calling thread (a warning is logged once).
 *
 * \code
 * auto proxy = velto::mainThreadProxy(delegate); // Object+FWMainThreadProxy.h
 * // on the watcher thread:
 * proxy->performSelector("watcher", QVariant::fromValue(queue), name, path);
 * \endcode
 */

#include "veltocore_export.h"

#include <QObject>
#include <QVariant>

#include <memory>

class VELTOCORE_EXPORT FWMainThreadProxy
{
public:
    /// A proxy forwarding to \a target (not owned; may be null, in which case calls do nothing).
    explicit FWMainThreadProxy(QObject *target);
    FWMainThreadProxy(const FWMainThreadProxy &) = delete;
    FWMainThreadProxy &operator=(const FWMainThreadProxy &) = delete;
    /// Invalidates the proxy.
    ~FWMainThreadProxy();

    /// target: the object calls are forwarded to.
    [[nodiscard]] QObject *target() const;
    /// respondsToSelector: whether the target has a method named \a selector (ask on the target's thread).
    [[nodiscard]] bool respondsToSelector(const char *selector) const;

    /**
     * performSelector: calls \a selector on the target with up to three object arguments, on the main
     * thread, and waits until it has returned.
     * \return the method's result; invalid for a method returning nothing, and when the proxy is (or
     * becomes, while waiting) invalid or the target is gone.
     * \throws VeltoException "NSInvalidArgumentException" when the target has no such method ("-[Class
     * selector]: unrecognized selector sent to instance 0x…"); an exception thrown by the method is
     * rethrown on the calling thread.
     */
    QVariant performSelector(const char *selector, const QVariant &first = {}, const QVariant &second = {},
                             const QVariant &third = {});

    /// invalidate: wakes every waiting caller and makes every later call return at once. Safe to repeat.
    void invalidate();
    /// isValid: false once invalidated.
    [[nodiscard]] bool isValid() const;

    /// mainThreadProxy: a proxy asked for its own proxy answers itself: a proxy is never wrapped twice.
    [[nodiscard]] FWMainThreadProxy *mainThreadProxy() { return this; }

    /**
     * performRequiredSelector: calls \a selector on \a target on this thread; nothing for a null target.
     * \throws VeltoException "NSInvalidArgumentException" when \a target has no such method.
     */
    static QVariant performRequiredSelector(QObject *target, const char *selector, const QVariant &first = {},
                                            const QVariant &second = {}, const QVariant &third = {});

private:
    class Private;
    std::shared_ptr<Private> const d; // shared with calls still queued on the main thread
};
