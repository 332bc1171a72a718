// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoZombie.h
 * \brief Zombie objects: a debugging aid for memory-management errors in the field. Once switched on,
 * destroyed objects are kept and turned into zombies that answer every later use with an error.
 *
 * Applies to the QObjects of classes that declare VELTO_OBJECT_DEALLOC (VeltoObjectDealloc.h), the
 * library's own among them. While zombies are on, deleting such an object runs all its destructors but
 * keeps its memory and retypes it as a zombie of the class "<Original>_VeltoZombie". A later virtual call
 * through a dangling pointer (including the metaObject() call every meta-call and qobject_cast starts
 * with) or a call by name through Object+VeltoDispatch.h then writes "*** ERROR: Zombie <class> sent
 * <method>" to the log, queues an alert on the main thread through VeltoAlertPresenter and throws
 * VeltoException "VeltoZombieAccessed". All memory of such objects leaks from then on, and there is no
 * way back short of restarting the process, so activateZombies() asks the user first.
 *
 * \code
 * // in a debugging menu
 * VeltoZombie::activateZombies();
 * \endcode
 */

#include "veltocore_export.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <cstddef>

/// The name of the exception a zombie throws when used.
inline constexpr QLatin1StringView VeltoZombieAccessedException{"VeltoZombieAccessed"};

/**
 * \brief VeltoZombie: the root of all zombie classes, and what a pointer to a zombie points at.
 *
 * Never made directly: a zombie is the kept memory of a destroyed object (see zombieForObject()).
 * typeid() of a zombie names its zombie class, a class derived from VeltoZombie.
 */
class VELTOCORE_EXPORT VeltoZombie
{
public:
    VeltoZombie() = delete;
    VeltoZombie(const VeltoZombie &) = delete;
    VeltoZombie &operator=(const VeltoZombie &) = delete;

    /// isActivated: whether zombies are on (they stay on for the rest of the process).
    [[nodiscard]] static bool isActivated();
    /**
     * activateZombies: unless zombies are on, asks the user through VeltoAlertPresenter::runModal() ("Do you
     * want to enable zombie objects?", buttons "Enable Zombies" and "Cancel") and switches them on only for
     * the first button. Without a presenter the question is logged and nothing changes. Main thread only.
     */
    static void activateZombies();
    /**
     * activateZombiesNow: switches zombies on without asking or checking (a second call would keep the
     * zombie routine itself as the one it replaced): puts VeltoZombie_Dealloc in place of
     * VeltoObject_Dealloc and logs "*** enabling Velto Zombies to aid in diagnosing bugs, but WILL leak memory!".
     */
    static void activateZombiesNow();

    /**
     * zombieForObject: the zombie at \a object when it is one, else nullptr (also for nullptr and while
     * zombies are off). \a object must be a live QObject or a zombie. Lock-free.
     */
    [[nodiscard]] static const VeltoZombie *zombieForObject(const QObject *object) noexcept;

    /// veltoOriginalClass: the meta-object the object answered before it was destroyed.
    [[nodiscard]] const QMetaObject *veltoOriginalClass() const;
    /// className: the zombie class's name, the original C++ class name followed by "_VeltoZombie".
    [[nodiscard]] QString className() const;
    /// debugDescription: "<class name><0x…address>", without any warning, so that a debugger can print a zombie.
    [[nodiscard]] QString debugDescription() const;

    /// respondsToSelector: true, without warning, for "debugDescription"; warns (throws) for any other name.
    [[nodiscard]] bool respondsToSelector(const char *selector) const;
    /**
     * methodSignatureForSelector: logs "* WARN: method signature requested for selector '<name>' on zombie
     * <debugDescription>" and answers the parameter count of a harmless method that takes nothing (0), so
     * that the call goes on and is trapped when made.
     */
    [[nodiscard]] int methodSignatureForSelector(const char *selector) const;
    /// performSelector: the debugDescription() for "debugDescription"; warns (throws) for any other name.
    QVariant performSelector(const char *selector) const;

    /**
     * warnAboutUsingZombieSelector: reports the use of \a selector: logs "*** ERROR: Zombie <class> sent
     * <selector>", queues on the main thread, 10 ms later, a modal alert "Error: Zombie Access!" (informative
     * text "A memory management error occurred. Please use the Help menu to send feedback report.\n\n" and
     * the same "Zombie … sent …" text, one "OK" button) through VeltoAlertPresenter, and throws
     * VeltoException "VeltoZombieAccessed" with the "Zombie … sent …" text as its reason.
     */
    [[noreturn]] void warnAboutUsingZombieSelector(const QString &selector) const;
};

/**
 * VeltoZombie_Dealloc: the final destruction routine while zombies are on: finds or makes the zombie
 * class of \a object's class, runs the object's destructors without freeing its memory, then retypes
 * the memory as a zombie. Safe on any thread.
 */
VELTOCORE_EXPORT void VeltoZombie_Dealloc(QObject *object, std::size_t allocatedSize);
