# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Files of src/observing in the VeltoCore library: non-owning collections, observer sets,
# property observation, the notification centre, timers and named semaphores.
velto_layer(observing LIBRARY VeltoCore DEPENDS core)
velto_sources(observing
  PUBLIC_HEADERS
    ByteArray+VeltoEnsuredGrowth.h
    Containers+VeltoWeakReference.h
    Object+VeltoAssociatedObjects.h
    Object+VeltoKVOHelper.h
    VariantMap+VeltoObjectAdditions.h
    VeltoDeferToBaseRunLoop.h
    VeltoKeyedObserverSet.h
    VeltoKVOHelper.h
    VeltoKVORegistration.h
    VeltoNotification.h
    VeltoNotificationCenter.h
    VeltoObserverSet.h
    VeltoObserverSetImpl.h
    VeltoPointerKeyDictionary.h
    VeltoSemaphore.h
    VeltoWeakKeyDictionary.h
    VeltoWeakObjectSet.h
    VeltoWeakReference.h
    VeltoWeakReferenceCollectionObjectEnumerator.h
    VeltoWeakTargetTimer.h
  SOURCES
    ByteArray+VeltoEnsuredGrowth.cpp
    Object+VeltoAssociatedObjects.cpp
    VariantMap+VeltoObjectAdditions.cpp
    VeltoDeferToBaseRunLoop.cpp
    VeltoKeyedObserverSet.cpp
    VeltoKVOHelper.cpp
    VeltoKVORegistration.cpp
    VeltoNotification.cpp
    VeltoNotificationCenter.cpp
    VeltoObserverSet.cpp
    VeltoObserverSetImpl.cpp
    VeltoPointerKeyDictionary.cpp
    VeltoSemaphore.cpp
    VeltoWeakKeyDictionary.cpp
    VeltoWeakObjectSet.cpp
    VeltoWeakReference.cpp
    VeltoWeakReferenceCollectionObjectEnumerator.cpp
    VeltoWeakTargetTimer.cpp
    VTSnapshot_p.h
    VTUniqueObject_p.h
)
