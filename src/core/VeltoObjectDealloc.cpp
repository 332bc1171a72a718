// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoObjectDealloc.h"

constinit VeltoPatchableRoutine<void(QObject *, std::size_t)> VeltoObject_Dealloc{&VeltoObject_DestroyAndFree};

void VeltoObject_DestroyAndFree(QObject *object, std::size_t)
{
    void *memory = dynamic_cast<void *>(object); // the allocation starts at the most derived object
    object->~QObject(); // virtual: runs the most derived destructor first
    // The unsized form: clang declares the sized one only with -fsized-deallocation.
    ::operator delete(memory);
}
