// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// A headless program outside the project: the installed core headers, the version header and the
// library's own strings, with nothing of Qt's Gui or Widgets.
#include <VeltoCore/VeltoError.h>
#include <VeltoCore/VeltoVersion.h>
#include <VeltoCore/veltocore_version.h>

#include <QCoreApplication>
#include <cstdio>

static_assert(VELTOCORE_VERSION >= VELTOCORE_VERSION_CHECK(0, 1, 0), "the installed version header is too old");

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const auto version = VeltoVersion::initWithDisplayString(QStringLiteral(VELTOCORE_VERSION_STRING));
    std::printf("%s %s\n", VELTOCORE_VERSION_STRING, qPrintable(VeltoError::unknownErrorVelto().descriptionForUserVelto()));
    return version && version->majorVersion() == VELTOCORE_VERSION_MAJOR ? 0 : 1;
}
