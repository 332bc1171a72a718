// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoMutationState.h
 * \brief VeltoMutationState: copy-on-write editing of a value that may or may not exist yet.
 *
 * A caller walks a tree of property-list values and edits only some of them. The record holds the value
 * as found (the source), and the working copy once there is one; only then does editing cost a copy,
 * and the source is never changed:
 *
 * \code
 * VeltoMutationState<QVariantMap> state;
 * state.sourceObject = settings.value(u"window"_s).toMap();
 * state.creator = VeltoCreateMutableDictionary;
 * if (QVariantMap *window = VeltoMutationState_AllocAndSetMutableObject(state))
 *     window->insert(u"width"_s, 640);
 * \endcode
 *
 * The record owns what it holds; it is a plain value used by one thread at a time.
 */

#include "veltocore_export.h"

#include <QSet>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

/// The record: the value being edited (or nothing), the working copy once made, and how to make an empty one.
template <typename T>
struct VeltoMutationState
{
    std::optional<T> sourceObject;   ///< the value as found; never changed through the record
    std::optional<T> mutableObject;  ///< the working copy, held by the record once set
    T (*creator)() = nullptr;        ///< makes a new empty value when there is no source; may be absent
};

/**
 * \brief VeltoMutationState_AllocAndSetMutableObject: makes the working copy: a copy of the source when
 * there is one (sharing its data until the first change), else the creator's new value; with neither,
 * nullptr and the record unchanged.
 * \return the working copy, held by the record.
 */
template <typename T>
[[nodiscard]] T *VeltoMutationState_AllocAndSetMutableObject(VeltoMutationState<T> &state)
{
    if (state.sourceObject)
        state.mutableObject = *state.sourceObject;
    else if (state.creator)
        state.mutableObject = state.creator();
    else
        return nullptr;
    return &*state.mutableObject;
}

/// VeltoMutationState_SetMutableObject: replaces the working copy with \a object and returns it, held by the record.
template <typename T>
T *VeltoMutationState_SetMutableObject(VeltoMutationState<T> &state, T object)
{
    state.mutableObject = std::move(object);
    return &*state.mutableObject;
}

/// VeltoCreateMutableDictionary: a new empty map (a creator for VeltoMutationState<QVariantMap>).
VELTOCORE_EXPORT QVariantMap VeltoCreateMutableDictionary();
/// VeltoCreateMutableArray: a new empty list (a creator for VeltoMutationState<QVariantList>).
VELTOCORE_EXPORT QVariantList VeltoCreateMutableArray();
/// VeltoCreateMutableSet: a new empty set of strings (a creator for VeltoMutationState<QSet<QString>>).
VELTOCORE_EXPORT QSet<QString> VeltoCreateMutableSet();
