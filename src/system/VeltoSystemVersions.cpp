// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSystemVersions.h"

#include "VeltoSystemInfo.h"

#include <QLibraryInfo>
#include <QVersionNumber>

#include <limits>
#include <mutex>

namespace {

// Filled once; the kernel cannot change under a running process.
const VeltoSystemVersion &currentSystemVersion()
{
    static VeltoSystemVersion version{0, 0, 0};
    static std::once_flag once;
    std::call_once(once, [] {
        // A null release (uname failed) parses as 0.0.0, the documented fallback.
        (void)VeltoSystemVersion_GetFromString(&version, VeltoSystem_KernelVersionString());
    });
    return version;
}

int compareUnsigned(quint64 a, quint64 b)
{
    if (a < b)
        return -1;
    return a > b ? 1 : 0;
}

int compareFields(quint64 aMajor, quint64 aMinor, quint64 aPatch,
                  quint64 bMajor, quint64 bMinor, quint64 bPatch)
{
    if (const int result = compareUnsigned(aMajor, bMajor))
        return result;
    if (const int result = compareUnsigned(aMinor, bMinor))
        return result;
    return compareUnsigned(aPatch, bPatch);
}

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// The value of a run of ASCII digits; saturates instead of wrapping so that an absurd field still
// compares as "very new" rather than as some arbitrary number.
qint64 digitRunValue(QStringView digits)
{
    constexpr qint64 max = std::numeric_limits<qint64>::max();
    qint64 value = 0;
    for (const QChar c : digits) {
        const int digit = c.unicode() - u'0';
        if (value > (max - digit) / 10)
            return max;
        value = value * 10 + digit;
    }
    return value;
}

} // namespace

void VeltoSystemVersion_Get(VeltoSystemVersion *outVersion)
{
    if (!outVersion)
        return;
    *outVersion = currentSystemVersion();
}

int VeltoSystemVersion_Compare(const VeltoSystemVersion *a, const VeltoSystemVersion *b)
{
    if (!a || !b)
        return 0;
    return compareFields(quint64(a->major), quint64(a->minor), quint64(a->patch),
                         quint64(b->major), quint64(b->minor), quint64(b->patch));
}

QString VeltoSystemVersion_ToString(const VeltoSystemVersion *version)
{
    if (!version)
        return QStringLiteral("[NULL]");
    // Only the low 32 bits are printed, as a signed int.
    return QString::asprintf("%d.%d.%d", int(quint32(version->major)), int(quint32(version->minor)),
                             int(quint32(version->patch)));
}

QString VeltoSystemVersion_PrettyString()
{
    return VeltoSystemVersion_ToString(&currentSystemVersion());
}

bool VeltoSystemVersion_GetFromString(VeltoSystemVersion *outVersion, const QString &string)
{
    if (!outVersion)
        return false;

    qint64 fields[3] = {0, 0, 0};
    int fieldsReached = 0;
    qsizetype position = 0;
    const qsizetype length = string.size();
    while (fieldsReached < 3) {
        qsizetype end = position;
        while (end < length && isAsciiDigit(string.at(end)))
            ++end;
        fields[fieldsReached++] = digitRunValue(QStringView(string).mid(position, end - position));
        if (end == length || string.at(end) != u'.')
            break;
        position = end + 1;
    }

    // Fields that were not reached stay 0.
    outVersion->major = fields[0];
    outVersion->minor = fieldsReached >= 2 ? fields[1] : 0;
    outVersion->patch = fieldsReached >= 3 ? fields[2] : 0;
    return true;
}

int VeltoSystem_CompareToCurrent(quint64 major, quint64 minor, quint64 patch)
{
    const VeltoSystemVersion &current = currentSystemVersion();
    return compareFields(major, minor, patch, quint64(current.major), quint64(current.minor),
                         quint64(current.patch));
}

bool VeltoSystem_IsSystemVersionAtLeast(quint64 major, quint64 minor, quint64 patch)
{
    return VeltoSystem_CompareToCurrent(major, minor, patch) != 1;
}

bool VeltoSystem_IsSystemVersionLessThan(quint64 major, quint64 minor, quint64 patch)
{
    return VeltoSystem_CompareToCurrent(major, minor, patch) == 1;
}

QString VeltoSystem_AppKitVersionString()
{
    // The library that is loaded, not the headers we were built against.
    const QVersionNumber qt = QLibraryInfo::version();
    const double number = qt.majorVersion() * 10000.0 + qt.minorVersion() * 100.0 + qt.microVersion();
    return QString::asprintf("%f", number);
}
