// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSystemVersions.h
 * \brief The operating-system version: read once, compared, printed and parsed; and the toolkit version.
 *
 * On Linux the operating-system version is the kernel release (uname), because the kernel decides
 * which facilities the library can use (inotify, extended attributes, statx), while distributions
 * number their releases each in their own way. A release such as "6.1.0-18-amd64" reads as 6.1.0.
 * The value is read on first use and cached for the life of the process.
 *
 * Use VeltoVersion instead for product versions (display strings such as "2.1.3 beta 4").
 *
 * \code
 * if (VeltoSystem_IsSystemVersionAtLeast(5, 6, 0))
 *     useStatxMountId();
 *
 * VeltoSystemVersion parsed;
 * (void)VeltoSystemVersion_GetFromString(&parsed, u"10.15.7"_s); // {10, 15, 7}
 * \endcode
 *
 * Thread safety: every function may be called from any thread; the cached version is filled once.
 */

#include "veltocore_export.h"

#include <QString>
#include <QtGlobal>

/// VeltoSystemVersion: an operating-system version, three signed words in the order major, minor, patch.
struct VeltoSystemVersion
{
    qint64 major;
    qint64 minor;
    qint64 patch;
};

/**
 * VeltoSystemVersion_Get: copies the running system's version into \a outVersion; does nothing when
 * \a outVersion is null. The version is read on the first call of this, VeltoSystemVersion_PrettyString()
 * or VeltoSystem_CompareToCurrent() and never refreshed; when the kernel release cannot be read it is 0.0.0.
 */
VELTOCORE_EXPORT void VeltoSystemVersion_Get(VeltoSystemVersion *outVersion);

/**
 * VeltoSystemVersion_Compare: -1, 0 or +1 as \a a is lower than, equal to or higher than \a b, field by
 * field (major, then minor, then patch). Fields compare as unsigned values, so a negative field counts
 * as higher than any positive one. 0 when either pointer is null.
 */
[[nodiscard]] VELTOCORE_EXPORT int VeltoSystemVersion_Compare(const VeltoSystemVersion *a,
                                                              const VeltoSystemVersion *b);

/**
 * VeltoSystemVersion_ToString: "major.minor.patch", each field printed from its low 32 bits as a signed
 * int (so 0xFFFFFFFF prints as -1 and bits above 32 are dropped); "[NULL]" for a null pointer.
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystemVersion_ToString(const VeltoSystemVersion *version);

/// VeltoSystemVersion_PrettyString: the running system's version in the form of VeltoSystemVersion_ToString().
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystemVersion_PrettyString();

/**
 * VeltoSystemVersion_GetFromString: parses up to three dot-separated runs of the ASCII digits 0-9 from
 * the start of \a string into \a outVersion. Parsing stops quietly at the first character that is
 * neither such a digit nor the dot between fields; fields not reached are 0 and an empty run is 0.
 * "10.15.7" gives 10.15.7, "10.15b3" gives 10.15.0, "10..5" gives 10.0.5, "" and "v10" give 0.0.0.
 * Non-ASCII digits count as other characters. A run too large for a signed 64-bit word gives the
 * largest one.
 * \return false only when \a outVersion is null (nothing is written then); true otherwise.
 */
[[nodiscard]] VELTOCORE_EXPORT bool VeltoSystemVersion_GetFromString(VeltoSystemVersion *outVersion,
                                                                     const QString &string);

/**
 * VeltoSystem_CompareToCurrent: +1 when the given version is higher than the running system's, -1 when
 * it is lower, 0 when equal; field by field as unsigned values.
 */
[[nodiscard]] VELTOCORE_EXPORT int VeltoSystem_CompareToCurrent(quint64 major, quint64 minor, quint64 patch);

/// VeltoSystem_IsSystemVersionAtLeast: true when the running system is the given version or a later one.
[[nodiscard]] VELTOCORE_EXPORT bool VeltoSystem_IsSystemVersionAtLeast(quint64 major, quint64 minor,
                                                                       quint64 patch);

/// VeltoSystem_IsSystemVersionLessThan: true when the running system is older than the given version.
[[nodiscard]] VELTOCORE_EXPORT bool VeltoSystem_IsSystemVersionLessThan(quint64 major, quint64 minor,
                                                                        quint64 patch);

/**
 * VeltoSystem_AppKitVersionString: the run-time Qt version as the number
 * major * 10000 + minor * 100 + patch, printed with "%f" ("60402.000000" for Qt 6.4.2).
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystem_AppKitVersionString();
