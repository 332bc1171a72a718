// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file ByteArray+VeltoEnsuredGrowth.h
 * \brief Growing a QByteArray without throwing when memory is exhausted: the growth is tried first, and the
 * bytes are appended only when it succeeded, so a failed append leaves the buffer exactly as it was.
 */

#include "veltocore_export.h"

#include <QByteArray>

namespace velto {

/**
 * ensureCanIncreaseLengthBy: tries to grow \a data by \a count bytes and shrinks it back to its former length
 * (the capacity stays). \return true when the growth succeeded; false (buffer unchanged) on exhausted memory
 * or a negative \a count.
 */
[[nodiscard]] VELTOCORE_EXPORT bool ensureCanIncreaseLengthBy(QByteArray &data, qsizetype count);

/// appendBytesEnsured: appends \a count bytes from \a bytes when the growth succeeds; otherwise false and \a data unchanged.
[[nodiscard]] VELTOCORE_EXPORT bool appendBytesEnsured(QByteArray &data, const char *bytes, qsizetype count);

/// appendDataEnsured: appendBytesEnsured() with the bytes of \a other.
[[nodiscard]] VELTOCORE_EXPORT bool appendDataEnsured(QByteArray &data, const QByteArray &other);

} // namespace velto
