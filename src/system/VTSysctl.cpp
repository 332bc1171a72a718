// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTSysctl_p.h"

#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <QStringDecoder>

#include <cmath>
#include <cstring>

#include <sys/utsname.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

using Reader = std::optional<QByteArray> (*)(const QString &root, const QString &machine);

template <typename Int>
QByteArray intBytes(Int value)
{
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

std::optional<QByteArray> readFile(const QString &root, QLatin1StringView relativePath)
{
    QFile file(QDir(root).filePath(relativePath));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    // /proc and /sys files report a size of 0, so read to the end rather than trusting size().
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return content;
}

// The value of the first "field : value" line of /proc/cpuinfo; the first processor stands for all.
std::optional<QByteArray> cpuinfoField(const QString &root, QByteArrayView field)
{
    const std::optional<QByteArray> cpuinfo = readFile(root, "proc/cpuinfo"_L1);
    if (!cpuinfo)
        return std::nullopt;
    for (const QByteArray &line : cpuinfo->split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon < 0)
            continue;
        if (line.left(colon).trimmed() == field)
            return line.mid(colon + 1).trimmed();
    }
    return std::nullopt;
}

std::optional<QByteArray> readCpuCount(const QString &, const QString &)
{
    const long count = sysconf(_SC_NPROCESSORS_ONLN);
    if (count < 1)
        return std::nullopt;
    return intBytes(qint32(count));
}

std::optional<QByteArray> readCpu64BitCapable(const QString &, const QString &machine)
{
    if (machine.isEmpty())
        return std::nullopt;
    // x86_64, aarch64, ppc64le, riscv64, ... and the two 64-bit names without "64" in them.
    const bool is64 = machine.contains("64"_L1) || machine == "s390x"_L1 || machine == "alpha"_L1;
    return intBytes(qint32(is64 ? 1 : 0));
}

std::optional<QByteArray> readOptionalX86_64(const QString &root, const QString &)
{
    // Only x86 kernels list "flags"; elsewhere the name does not exist, as on a non-Intel Mac.
    const std::optional<QByteArray> flags = cpuinfoField(root, "flags");
    if (!flags)
        return std::nullopt;
    const bool longMode = flags->split(' ').contains(QByteArrayLiteral("lm"));
    return intBytes(qint32(longMode ? 1 : 0));
}

std::optional<QByteArray> readOptional64BitOps(const QString &root, const QString &)
{
    const std::optional<QByteArray> bits = readFile(root, "sys/kernel/address_bits"_L1);
    if (!bits)
        return std::nullopt;
    bool ok = false;
    const int value = bits->trimmed().toInt(&ok);
    if (!ok)
        return std::nullopt;
    return intBytes(qint32(value == 64 ? 1 : 0));
}

std::optional<QByteArray> readCpuFrequencyMax(const QString &root, const QString &)
{
    // cpufreq knows the rated maximum; virtual machines and some ARM boards have no cpufreq, and then
    // the current clock in /proc/cpuinfo is the best figure there is.
    if (const auto khz = readFile(root, "sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq"_L1)) {
        bool ok = false;
        const qint64 value = khz->trimmed().toLongLong(&ok);
        if (ok && value > 0)
            return intBytes(qint64(value * 1000));
    }
    if (const auto mhz = cpuinfoField(root, "cpu MHz")) {
        bool ok = false;
        const double value = mhz->toDouble(&ok);
        if (ok && value > 0 && value < 1e12)
            return intBytes(qint64(std::llround(value * 1e6)));
    }
    return std::nullopt;
}

std::optional<QByteArray> readModel(const QString &root, const QString &)
{
    // PCs describe themselves through DMI; ARM and POWER boards through the device tree.
    if (auto product = readFile(root, "sys/class/dmi/id/product_name"_L1))
        return product;
    return readFile(root, "proc/device-tree/model"_L1);
}

std::optional<QByteArray> readMemSize(const QString &, const QString &)
{
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0)
        return std::nullopt;
    return intBytes(quint64(pages) * quint64(pageSize));
}

struct Entry
{
    const char *name;
    Reader read;
};

constexpr Entry entries[] = {
    {"hw.ncpu", readCpuCount},
    {"hw.cpu64bit_capable", readCpu64BitCapable},
    {"hw.optional.x86_64", readOptionalX86_64},
    {"hw.optional.64bitops", readOptional64BitOps},
    {"hw.cpufrequency_max", readCpuFrequencyMax},
    {"hw.model", readModel},
    {"hw.memsize", readMemSize},
};

template <typename Int>
bool intByName(const VTSysctl &sysctl, const char *name, Int *value)
{
    const std::optional<QByteArray> bytes = sysctl.valueByName(name);
    if (!bytes || bytes->size() != qsizetype(sizeof(Int)))
        return false;
    if (value)
        std::memcpy(value, bytes->constData(), sizeof(Int));
    return true;
}

QString unameMachine()
{
    struct utsname names;
    if (uname(&names) != 0)
        return {};
    return QString::fromLatin1(names.machine);
}

// Text for a non-null result that may be empty; fromUtf8() of empty bytes can give a null string.
QString textOrEmpty(const QByteArray &bytes)
{
    return bytes.isEmpty() ? u""_s : QString::fromUtf8(bytes);
}

} // namespace

VTSysctl::VTSysctl()
    : m_root(u"/"_s)
    , m_machine(unameMachine())
{
}

VTSysctl::VTSysctl(const QString &root, const QString &machine)
    : m_root(root)
    , m_machine(machine)
{
}

std::optional<QByteArray> VTSysctl::valueByName(const char *name) const
{
    if (!name)
        return std::nullopt;
    for (const Entry &entry : entries) {
        if (std::strcmp(entry.name, name) == 0)
            return entry.read(m_root, m_machine);
    }
    return std::nullopt;
}

bool VTSysctl::int32ByName(const char *name, qint32 *value) const
{
    return intByName(*this, name, value);
}

bool VTSysctl::int64ByName(const char *name, qint64 *value) const
{
    return intByName(*this, name, value);
}

bool VTSysctl::cpuIs64Bit() const
{
    // The first name that answers decides, even when it answers "no".
    qint32 value = 0;
    if (int32ByName("hw.cpu64bit_capable", &value))
        return value == 1;
    if (int32ByName("hw.optional.x86_64", &value))
        return value == 1;
    return int32ByName("hw.optional.64bitops", &value) && value == 1;
}

qint64 VTSysctl::cpuSpeedMHz() const
{
    qint64 hertz = 0;
    if (!int64ByName("hw.cpufrequency_max", &hertz))
        return 0;
    return hertz / 1000000;
}

QString VTSysctl::modelName() const
{
    std::optional<QByteArray> bytes = valueByName("hw.model");
    if (!bytes)
        return {};
    if (bytes->isEmpty())
        return u""_s;
    // The device tree ends its strings with a zero byte, sysfs with a line feed.
    if (bytes->endsWith('\0'))
        bytes->chop(1);
    if (bytes->endsWith('\n'))
        bytes->chop(1);
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString model = decoder.decode(*bytes);
    if (decoder.hasError())
        return {};
    return model.isNull() ? u""_s : model;
}

QString VTSysctl::distributionName() const
{
    // etc/os-release, when present, is the only one to read (os-release(5)).
    std::optional<QByteArray> content = readFile(m_root, "etc/os-release"_L1);
    if (!content)
        content = readFile(m_root, "usr/lib/os-release"_L1);
    if (!content)
        return {};
    return envFileValue(*content, "PRETTY_NAME"_L1);
}

QString VTSysctl::prettyHostName() const
{
    const std::optional<QByteArray> content = readFile(m_root, "etc/machine-info"_L1);
    if (!content)
        return {};
    return envFileValue(*content, "PRETTY_HOSTNAME"_L1);
}

QString VTSysctl::envFileValue(const QByteArray &content, QLatin1StringView key)
{
    std::optional<QByteArray> found;
    for (const QByteArray &rawLine : content.split('\n')) {
        const QByteArray line = rawLine.trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const qsizetype equals = line.indexOf('=');
        if (equals <= 0 || QLatin1StringView(line.left(equals).trimmed()) != key)
            continue;

        const QByteArray raw = line.mid(equals + 1).trimmed();
        QByteArray value;
        if (raw.startsWith('"')) {
            // Double quotes: a backslash takes the next character literally.
            for (qsizetype i = 1; i < raw.size() && raw.at(i) != '"'; ++i) {
                if (raw.at(i) == '\\' && i + 1 < raw.size())
                    ++i;
                value.append(raw.at(i));
            }
        } else if (raw.startsWith('\'')) {
            const qsizetype close = raw.indexOf('\'', 1);
            value = raw.mid(1, close < 0 ? -1 : close - 1);
        } else {
            value = raw;
        }
        found = value; // the last assignment wins, as when a shell sources the file
    }
    if (!found)
        return {};
    return textOrEmpty(*found);
}
