// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSystemInfo.h
 * \brief Facts about the machine and the running system: processor, memory, model, language, user,
 * computer and root volume names.
 *
 * Each function makes one query of the system every time it is called (nothing here is cached) and
 * never reports an error: when a query fails the function gives the fixed fallback its comment names
 * (0, an empty or null string, "user", "volume").
 *
 * The processor and model queries keep the BSD sysctl names as their keys ("hw.ncpu", "hw.model");
 * on Linux they are answered from /proc, /sys, sysconf() and uname(). For the operating-system version
 * see VeltoSystemVersions.h.
 *
 * \code
 * out << VeltoSystem_CPUCount() << " processors, " << VeltoSystem_RAM() / (1024 * 1024) << " MiB";
 * \endcode
 *
 * Thread safety: every function may be called from any thread.
 */

#include "veltocore_export.h"

#include <QString>
#include <QtGlobal>

/**
 * Velto_SysCtl_GetIntByName: reads the 4-byte integer named \a name ("hw.ncpu",
 * "hw.cpu64bit_capable", "hw.optional.x86_64", "hw.optional.64bitops"). On success stores it into
 * \a outValue (when not null) and returns true. Returns false and leaves \a outValue alone when
 * \a name is null, unknown, cannot be read here, or names a value that is not 4 bytes long
 * ("hw.memsize", "hw.cpufrequency_max", "hw.model").
 */
[[nodiscard]] VELTOCORE_EXPORT bool Velto_SysCtl_GetIntByName(qint32 *outValue, const char *name);

/**
 * VeltoSystem_CPUIs64Bit: whether the processor runs 64-bit code. Asks "hw.cpu64bit_capable" (the
 * machine name uname() reports), then "hw.optional.x86_64" (the "lm" flag of an x86 processor), then
 * "hw.optional.64bitops" (a 64-bit kernel); the first that answers decides. False when none answers.
 */
[[nodiscard]] VELTOCORE_EXPORT bool VeltoSystem_CPUIs64Bit();

/// VeltoSystem_CPUCount: the number of processors online ("hw.ncpu"); 0 if that cannot be read.
[[nodiscard]] VELTOCORE_EXPORT int VeltoSystem_CPUCount();

/**
 * VeltoSystem_CPUSpeed: the processor's maximum clock in MHz, truncated ("hw.cpufrequency_max"): the
 * cpufreq maximum of the first processor, or where the kernel has no cpufreq (virtual machines) the
 * "cpu MHz" of /proc/cpuinfo. 0 if neither can be read.
 */
[[nodiscard]] VELTOCORE_EXPORT qint64 VeltoSystem_CPUSpeed();

/// VeltoSystem_RAM: the physical memory in bytes (physical pages times page size); 0 if unknown.
[[nodiscard]] VELTOCORE_EXPORT quint64 VeltoSystem_RAM();

/**
 * VeltoSystem_MacModelName: the machine's model ("hw.model"): the DMI product name of a PC
 * ("ThinkPad X1 Carbon Gen 9", "Standard PC (Q35 + ICH9, 2009)") or the device-tree model of a board
 * ("Raspberry Pi 4 Model B Rev 1.4"), without its trailing zero byte or line feed. Null when the
 * system publishes no model or it is not valid UTF-8; empty (not null) when the model is empty.
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystem_MacModelName();

/**
 * VeltoSystem_PrimaryLanguageCode: the first of the user's preferred languages
 * (VeltoBundle::preferredLanguages(), for example "fr-CA"); the empty string when there is none.
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystem_PrimaryLanguageCode();

/**
 * VeltoSystem_CurrentUserName: the login name of the real user id (getpwuid_r(getuid())), decoded as
 * UTF-8; "user" when there is no password entry for it or its name is empty or not valid UTF-8.
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystem_CurrentUserName();

/**
 * VeltoSystem_RealHomeFolder: the real user's home folder as the password database records it
 * (getpwuid_r(getuid())), whatever HOME says; QDir::homePath() when the database has no entry or an
 * empty one. Read once and cached for the life of the process.
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystem_RealHomeFolder();

/**
 * VeltoSystem_ComputerName: the computer's name for people: the pretty host name that hostnamectl
 * keeps in /etc/machine-info ("Anna's Laptop") when set, otherwise the host name. Null when neither is
 * available.
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystem_ComputerName();

/**
 * VeltoSystem_RootVolumeName: the name of the volume mounted at "/": its file-system label when it
 * has one, otherwise the file name of its device ("nvme0n1p2", "overlay"); "volume" when both are
 * empty.
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystem_RootVolumeName();

/**
 * VeltoSystem_KernelVersionString: the kernel release as uname() reports it ("6.1.0-18-amd64"); null
 * if uname() fails. VeltoSystemVersion_Get() gives the same release as numbers.
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystem_KernelVersionString();

/**
 * VeltoSystem_DistributionName: the distribution's own name for itself, PRETTY_NAME of os-release
 * ("Debian GNU/Linux 12 (bookworm)"); empty when the system has no os-release file or no such entry.
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSystem_DistributionName();
