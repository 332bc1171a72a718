// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSemaphore.h
 * \brief VeltoSemaphore: a named, process-shared counting semaphore (POSIX named semaphore) with creation,
 * opening, error reporting and clean-up.
 *
 * Only the object that created the semaphore removes its name when it closes, so other processes that opened
 * it keep working until they close. The object holds no lock of its own: close() must not race with wait()
 * on another thread; after close(), wait() and post() do nothing and tryWait() is false.
 * lock()/try_lock()/unlock() let it stand where a lockable is expected (std::unique_lock).
 *
 * \code
 * VeltoError error;
 * auto ready = VeltoSemaphore::initWithName(u"/com.velto.ready"_s, true, &error);
 * if (!ready)
 *     qWarning() << error.localizedDescription(); // failed to create/open semaphore "/com.velto.ready", already exists
 * \endcode
 */

#include "VeltoError.h"

#include "veltocore_export.h"

#include <QString>

#include <memory>

class VELTOCORE_EXPORT VeltoSemaphore
{
public:
    /**
     * initWithName: opens the semaphore named \a name (UTF-8; POSIX names begin with "/"). With \a create it
     * creates it exclusively (failing when the name exists) with permissions 0664 and value 0; without, it
     * opens an existing one. On failure returns null and fills \a error: the POSIX domain, code errno, text
     * "failed to create/open semaphore \"<name>\", <reason>" where the reason is "access denied" (EACCES),
     * "name too long" (ENAMETOOLONG), "already exists" (EEXIST) or empty for any other cause.
     */
    [[nodiscard]] static std::unique_ptr<VeltoSemaphore> initWithName(const QString &name, bool create,
                                                                      VeltoError *error = nullptr);
    VeltoSemaphore(const VeltoSemaphore &) = delete;
    VeltoSemaphore &operator=(const VeltoSemaphore &) = delete;
    /// Closes the semaphore.
    ~VeltoSemaphore();

    /// wait: blocks until the count is positive, then decrements it.
    void wait();
    /// tryWait: decrements the count when it is positive, without blocking. \return whether it did.
    [[nodiscard]] bool tryWait();
    /// post: increments the count.
    void post();

    void lock() { wait(); }
    [[nodiscard]] bool try_lock() { return tryWait(); }
    [[nodiscard]] bool tryLock() { return tryWait(); }
    void unlock() { post(); }

    /// close: closes the handle and, when this object created the semaphore, removes its name. Safe to repeat.
    void close();

    [[nodiscard]] QString name() const;
    /// wasCreated: whether this object created the semaphore (and so removes the name on close()).
    [[nodiscard]] bool wasCreated() const;
    /// isOpen: whether a handle is held.
    [[nodiscard]] bool isOpen() const;
    /// description: "VeltoSemaphore<0x...> \"<name>\"".
    [[nodiscard]] QString description() const;

private:
    VeltoSemaphore();
    class Private;
    std::unique_ptr<Private> const d;
};
