// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "ByteArray+VeltoEnsuredGrowth.h"

#include <cstring>
#include <limits>
#include <new>

namespace {

// Sets the length inside a guard: an allocation failure is dropped, and success is judged by the
// length reached.
bool safeIncreaseLengthBy(QByteArray &data, qsizetype count)
{
    if (count < 0 || count > std::numeric_limits<qsizetype>::max() - data.size())
        return false;
    const qsizetype wanted = data.size() + count;
    try {
        data.resize(wanted);
    } catch (const std::bad_alloc &) {
    }
    return data.size() == wanted;
}

} // namespace

namespace velto {

bool ensureCanIncreaseLengthBy(QByteArray &data, qsizetype count)
{
    const qsizetype former = data.size();
    const bool grown = safeIncreaseLengthBy(data, count);
    if (grown)
        data.resize(former);
    return grown;
}

bool appendBytesEnsured(QByteArray &data, const char *bytes, qsizetype count)
{
    const qsizetype former = data.size();
    if (!safeIncreaseLengthBy(data, count))
        return false;
    if (count > 0)
        std::memcpy(data.data() + former, bytes, size_t(count));
    return true;
}

bool appendDataEnsured(QByteArray &data, const QByteArray &other)
{
    // A copy keeps the bytes valid when \a other is \a data itself and the growth moves the buffer.
    const QByteArray bytes = other;
    return appendBytesEnsured(data, bytes.constData(), bytes.size());
}

} // namespace velto
