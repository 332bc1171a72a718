// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoPatchableRoutine.h
 * \brief VeltoPatchableRoutine: a routine called through one replaceable slot, so that a diagnostic aid can
 * put its own implementation in place for every caller and still call the one it replaced.
 *
 * This is what C++ keeps of method patching: the routine to patch is declared as a VeltoPatchableRoutine
 * (the library does so where it offers a hook); replace() installs a new implementation for all callers and
 * returns the previous one, which the new implementation may call. Replacing is atomic; an implementation
 * must stay callable for as long as it may be running.
 *
 * \code
 * VeltoPatchableRoutine<void(QObject *)> releaseObject{&defaultRelease};
 * static VeltoPatchableRoutine<void(QObject *)>::Function previous = releaseObject.replace(&zombieRelease);
 * \endcode
 */

#include <atomic>

template<typename Signature>
class VeltoPatchableRoutine;

template<typename Result, typename... Arguments>
class VeltoPatchableRoutine<Result(Arguments...)>
{
public:
    using Function = Result (*)(Arguments...);

    /// Makes the slot with \a implementation in place (must not be null).
    constexpr explicit VeltoPatchableRoutine(Function implementation) : m_current(implementation) {}

    /// replace: puts \a implementation in place for every caller (null is ignored). \return the previous one.
    Function replace(Function implementation)
    {
        return implementation ? m_current.exchange(implementation) : current();
    }

    /// current: the implementation in place.
    [[nodiscard]] Function current() const { return m_current.load(std::memory_order_acquire); }

    /// Calls the implementation in place.
    Result operator()(Arguments... arguments) const { return current()(std::forward<Arguments>(arguments)...); }

private:
    std::atomic<Function> m_current;
};
