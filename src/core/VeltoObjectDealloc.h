// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoObjectDealloc.h
 * \brief VeltoObject_Dealloc: the one routine that finally destroys and frees the QObjects of the classes
 * that declare VELTO_OBJECT_DEALLOC, replaceable for every caller at once (zombie objects replace it).
 *
 * Every delete of such an object (delete, deleteLater(), a parent deleting its children, std::unique_ptr)
 * reaches the class's destroying operator delete, which hands the still whole object and the size of its
 * allocation to the routine in place. The default routine destroys and frees it exactly as a plain delete
 * would. Objects made on the stack, as members, or by std::make_shared are not deleted and never reach it.
 *
 * \code
 * class Document : public QObject
 * {
 *     Q_OBJECT
 *     VELTO_OBJECT_DEALLOC(Document)
 * public:
 *     ...
 * };
 * \endcode
 */

#include "VeltoPatchableRoutine.h"
#include "veltocore_export.h"

#include <QObject>

#include <cstddef>
#include <new>

/// VeltoObject_DestroyAndFree: the default final destruction: runs the object's destructors, then frees its memory.
VELTOCORE_EXPORT void VeltoObject_DestroyAndFree(QObject *object, std::size_t allocatedSize);

/**
 * VeltoObject_Dealloc: the final destruction routine in place, called with the object (its most derived
 * destructor not yet run) and the size of its allocation. VeltoObject_DestroyAndFree until replaced.
 */
VELTOCORE_EXPORT extern VeltoPatchableRoutine<void(QObject *, std::size_t)> VeltoObject_Dealloc;

/**
 * VELTO_OBJECT_DEALLOC(Class): declares, inside the QObject subclass \a Class, that its heap instances and
 * those of its subclasses are finally destroyed through VeltoObject_Dealloc. Put it beside Q_OBJECT at the
 * top of the class; like Q_OBJECT it leaves the declarations after it private.
 */
#define VELTO_OBJECT_DEALLOC(Class)                                                                        \
public:                                                                                                    \
    static void operator delete(Class *object, std::destroying_delete_t, std::size_t allocatedSize)        \
    {                                                                                                      \
        static_assert(alignof(Class) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__,                                  \
                      "an over-aligned class is freed by the aligned operator delete");                    \
        VeltoObject_Dealloc(object, allocatedSize);                                                        \
    }                                                                                                      \
                                                                                                           \
private:
