// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Product-version parsing takes any text. Whatever it accepts must keep its promises: the display text
// is returned as given (trimmed), numbers stay within 0-99, and the forms made from the fields read back
// as the same version. Anything else aborts.

#include "VeltoVersion.h"

#include <QString>

#include <cstdlib>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

void checkRoundTrip(const VeltoVersion &version)
{
    check(version.majorVersion() <= 99 && version.minorVersion() <= 99 && version.revision() <= 99
          && version.releaseIncrement() <= 99 && version.releaseType() <= VeltoReleaseType::Release);
    const VeltoVersion fromFields(version.majorVersion(), version.minorVersion(), version.revision(),
                                  version.releaseType(), version.releaseIncrement());
    const auto fromBundle = VeltoVersion::initWithBundleVersionString(fromFields.bundleVersionString());
    check(fromBundle && *fromBundle == version);
    // Releases show no increment, so only those with increment 1 read back from the display form.
    if (version.releaseType() == VeltoReleaseType::Unknown
        || (version.releaseType() == VeltoReleaseType::Release && version.releaseIncrement() != 1))
        return;
    const auto fromDisplay = VeltoVersion::initWithDisplayString(fromFields.displayString());
    check(fromDisplay && *fromDisplay == version);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    VeltoError error;
    if (const auto version = VeltoVersion::initWithDisplayString(text, &error)) {
        check(version->displayString() == text.trimmed());
        checkRoundTrip(*version);
    } else {
        check(error.code() == VeltoCoreErrorVersionString);
    }
    if (const auto version = VeltoVersion::initWithBundleVersionString(text, &error)) {
        check(version->bundleVersionString() == text);
        checkRoundTrip(*version);
    } else {
        check(error.code() == VeltoCoreErrorVersionString);
    }
    return 0;
}
