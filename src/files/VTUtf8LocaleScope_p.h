// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// libarchive converts entry names through the calling thread's locale. File names here are UTF-8 whatever
// the process's locale says (QFile::encodeName), so archive work runs under C.UTF-8 on this thread only
// (uselocale(), never setlocale(), which would change every thread). Without C.UTF-8 nothing changes.

#include <clocale>
#include <locale.h>

class VTUtf8LocaleScope
{
public:
    VTUtf8LocaleScope()
        : m_utf8(newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t(nullptr))),
          m_previous(m_utf8 ? uselocale(m_utf8) : locale_t(nullptr))
    {
    }
    ~VTUtf8LocaleScope()
    {
        if (!m_utf8)
            return;
        uselocale(m_previous);
        freelocale(m_utf8);
    }
    VTUtf8LocaleScope(const VTUtf8LocaleScope &) = delete;
    VTUtf8LocaleScope &operator=(const VTUtf8LocaleScope &) = delete;

private:
    locale_t m_utf8;
    locale_t m_previous;
};
