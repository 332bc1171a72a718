// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Names of the running program's code and types: demangling, the type name of an exception, and call
// stacks captured with backtrace() and symbolised with dladdr(). Frames in hidden code (no dynamic symbol)
// show their binary and offset instead of a name.

#include "veltocore_export.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <typeinfo>

class VELTOCORE_TESTS_EXPORT VTSymbols
{
public:
    VTSymbols() = delete;

    /// demangled: \a symbol demangled, or as it is when it is not a mangled C++ name.
    [[nodiscard]] static QString demangled(const char *symbol);
    /// typeName: the demangled name of \a type ("std::runtime_error").
    [[nodiscard]] static QString typeName(const std::type_info &type);
    /// exactSymbol: the demangled name of the function that starts exactly at \a address; null when the
    /// address is not the start of an exported function.
    [[nodiscard]] static QString exactSymbol(const void *address);

    /// returnAddresses: the calling thread's return addresses, innermost first, starting with the caller
    /// of this function.
    [[nodiscard]] static QList<quintptr> returnAddresses();
    /// callStackSymbols: one line per address, "index  binary  symbol + offset", or "index  binary  + 0xoffset"
    /// for code without a visible symbol.
    [[nodiscard]] static QStringList callStackSymbols(const QList<quintptr> &addresses);
};
