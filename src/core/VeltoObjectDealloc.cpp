#include "VeltoObjectDealloc.h"

constinit VeltoPatchableRoutine<void(QObject *, std::size_t)> VeltoObject_Dealloc{&VeltoObject_DestroyAndFree};

void VeltoObject_DestroyAndFree(QObject *object, std::size_t allocatedSize)
{
    void *memory = dynamic_cast<void *>(object); // the allocation starts at the most derived object
    object->~QObject(); // virtual: runs the most derived destructor first
    ::operator delete(memory, allocatedSize);
}
