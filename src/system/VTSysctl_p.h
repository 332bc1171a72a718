// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

//
//  W A R N I N G
//  -------------
//
// This file is not part of the VeltoCore API. It is not installed and may change without notice.
//

/**
 * \file VTSysctl_p.h
 * \brief VTSysctl: the BSD sysctl names VeltoCore asks about, answered from Linux's /proc, /sys,
 * sysconf() and uname(), and the few system facts built on them.
 *
 * Callers keep the sysctl names as their keys ("hw.ncpu", "hw.model", ...) so that the algorithms that
 * combine them (which name is tried first, how a string value is trimmed) read the same on every
 * platform. Each value comes back as the raw bytes sysctlbyname() would give: a native-endian 4-byte
 * int, a native-endian 8-byte int, or the bytes of a string.
 *
 * | name                  | bytes | Linux source                                                          |
 * |-----------------------|-------|-----------------------------------------------------------------------|
 * | hw.ncpu               | 4     | sysconf(_SC_NPROCESSORS_ONLN)                                         |
 * | hw.cpu64bit_capable   | 4     | uname() machine: 1 for a 64-bit machine name, else 0                  |
 * | hw.optional.x86_64    | 4     | /proc/cpuinfo "flags": 1 when "lm" is listed, else 0                  |
 * | hw.optional.64bitops  | 4     | /sys/kernel/address_bits: 1 when 64, else 0                           |
 * | hw.cpufrequency_max   | 8     | cpu0/cpufreq/cpuinfo_max_freq (kHz), else /proc/cpuinfo "cpu MHz"; Hz |
 * | hw.model              | any   | /sys/class/dmi/id/product_name, else /proc/device-tree/model, as is   |
 * | hw.memsize            | 8     | sysconf(_SC_PHYS_PAGES) * sysconf(_SC_PAGESIZE)                       |
 *
 * A name whose source is missing or unreadable fails, as does every name not in the table.
 *
 * The files are read below a root folder, "/" for the running system; the unit tests construct one
 * over a fake tree of real files, and pass the machine name that uname() would report.
 */

#include "veltocore_export.h"

#include <QByteArray>
#include <QString>

#include <optional>

// Exported for the unit tests only; this header is not installed.
class VELTOCORE_TESTS_EXPORT VTSysctl
{
public:
    /// VTSysctl: the running system; files below "/" and the machine name from uname().
    VTSysctl();
    /**
     * VTSysctl: files below \a root (a folder holding proc/, sys/ and etc/ as on a real system) and
     * \a machine as the name uname() reports; an empty \a machine stands for a failed uname().
     * sysconf() answers ("hw.ncpu", "hw.memsize") always describe the running system.
     */
    VTSysctl(const QString &root, const QString &machine);

    /**
     * valueByName: the raw bytes of \a name as listed in the table above; std::nullopt when \a name is
     * null, unknown, or its source cannot be read. An existing but empty model file gives empty bytes.
     */
    [[nodiscard]] std::optional<QByteArray> valueByName(const char *name) const;

    /**
     * int32ByName: stores the 4-byte value of \a name into \a value (when not null) and returns true;
     * returns false and leaves \a value alone when the name fails or its value is not 4 bytes long
     * (so "hw.memsize" and "hw.model" fail here, as they do with a 4-byte sysctlbyname() buffer).
     */
    [[nodiscard]] bool int32ByName(const char *name, qint32 *value) const;

    /// int64ByName: the same for 8-byte values ("hw.cpufrequency_max", "hw.memsize").
    [[nodiscard]] bool int64ByName(const char *name, qint64 *value) const;

    /**
     * cpuIs64Bit: asks "hw.cpu64bit_capable", then "hw.optional.x86_64", then "hw.optional.64bitops";
     * the first name that answers decides (true exactly when it answers 1) and the rest are not asked.
     * False when none answers.
     */
    [[nodiscard]] bool cpuIs64Bit() const;

    /// cpuSpeedMHz: "hw.cpufrequency_max" divided by 1,000,000, truncated; 0 when it fails.
    [[nodiscard]] qint64 cpuSpeedMHz() const;

    /**
     * modelName: the "hw.model" string, decoded as UTF-8, without one trailing zero byte and then one
     * trailing line feed. Null when the value cannot be read; empty (not null) when it has no bytes.
     */
    [[nodiscard]] QString modelName() const;

    /**
     * distributionName: PRETTY_NAME from etc/os-release, or from usr/lib/os-release when the first file
     * does not exist (the order os-release(5) gives); empty when neither has it.
     */
    [[nodiscard]] QString distributionName() const;

    /**
     * prettyHostName: PRETTY_HOSTNAME from etc/machine-info, the free-form computer name that
     * hostnamectl sets ("Anna's Laptop"); empty when the file or the key is missing.
     */
    [[nodiscard]] QString prettyHostName() const;

    /**
     * envFileValue: the value of \a key in \a content written in the os-release(5) format: one
     * KEY=value assignment per line, "#" comments, values optionally in double or single quotes, with
     * backslash escapes inside double quotes. The last assignment wins. Null when \a key is not
     * assigned.
     */
    [[nodiscard]] static QString envFileValue(const QByteArray &content, QLatin1StringView key);

private:
    QString m_root;
    QString m_machine;
};
