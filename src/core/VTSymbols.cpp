// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTSymbols_p.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int MaximumFrames = 128;

// One frame as "index  binary  symbol + offset"; frames in stripped or hidden code show their address.
QString symbolisedFrame(int index, quintptr address)
{
    Dl_info info{};
    // A return address points just past the call; look up the byte before it so the call's own
    // function is named even when the call is the last instruction of that function.
    const void *lookup = reinterpret_cast<const void *>(address > 0 ? address - 1 : address);
    const QString number = QString::number(index).leftJustified(4);
    if (dladdr(lookup, &info) == 0 || info.dli_fname == nullptr)
        return u"%1??  0x%2"_s.arg(number).arg(address, 0, 16);
    QString binary = QString::fromUtf8(info.dli_fname);
    binary = binary.mid(binary.lastIndexOf(u'/') + 1);
    // Without a visible symbol, the offset into the binary is what addr2line needs.
    if (info.dli_sname == nullptr)
        return u"%1%2  + 0x%3"_s.arg(number, binary).arg(address - reinterpret_cast<quintptr>(info.dli_fbase), 0, 16);
    const quintptr offset = address - reinterpret_cast<quintptr>(info.dli_saddr);
    return u"%1%2  %3 + %4"_s.arg(number, binary, VTSymbols::demangled(info.dli_sname)).arg(offset);
}

} // namespace

QString VTSymbols::demangled(const char *symbol)
{
    int status = 0;
    std::unique_ptr<char, void (*)(void *)> text(abi::__cxa_demangle(symbol, nullptr, nullptr, &status), std::free);
    return QString::fromUtf8(status == 0 && text ? text.get() : symbol);
}

QString VTSymbols::typeName(const std::type_info &type)
{
    return demangled(type.name());
}

QString VTSymbols::exactSymbol(const void *address)
{
    Dl_info info{};
    if (dladdr(address, &info) == 0 || info.dli_sname == nullptr || info.dli_saddr != address)
        return {};
    return demangled(info.dli_sname);
}

Q_NEVER_INLINE QList<quintptr> VTSymbols::returnAddresses()
{
    void *frames[MaximumFrames];
    const int count = backtrace(frames, MaximumFrames);
    // Start at the caller: its frame is the one whose return address this call returns to. Counting
    // frames instead would go wrong where backtrace() itself adds one (AddressSanitizer intercepts it).
    const void *caller = __builtin_return_address(0);
    int first = 0;
    while (first < count && frames[first] != caller)
        ++first;
    if (first == count)
        first = 1;
    QList<quintptr> addresses;
    addresses.reserve(count - first);
    for (int i = first; i < count; ++i)
        addresses.append(reinterpret_cast<quintptr>(frames[i]));
    return addresses;
}

QStringList VTSymbols::callStackSymbols(const QList<quintptr> &addresses)
{
    QStringList lines;
    lines.reserve(addresses.size());
    for (int i = 0; i < addresses.size(); ++i)
        lines.append(symbolisedFrame(i, addresses.at(i)));
    return lines;
}
