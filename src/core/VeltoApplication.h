#pragma once

/**
 * \file VeltoApplication.h
 * \brief VeltoApplication: questions about the running application process as a whole.
 *
 * A home for process-wide application helpers that need no QCoreApplication instance. Everything here
 * is static.
 *
 * \code
 * qInfo() << "running" << VeltoApplication::runningArchitectureString() << "code";
 * \endcode
 */

#include "veltocore_export.h"

#include <QString>

/// VeltoApplication: process-wide application helpers.
class VELTOCORE_EXPORT VeltoApplication
{
public:
    /**
     * isRunningIntelCode: true when this library was built for an Intel processor (x86 or x86-64), as
     * the instructions the process runs are then Intel's; false for every other build.
     */
    [[nodiscard]] static bool isRunningIntelCode();

    /**
     * runningArchitectureString: the processor architecture this library was built for, in Qt's
     * spelling ("x86_64", "i386", "arm64", "riscv64"); see QSysInfo::buildCpuArchitecture().
     */
    [[nodiscard]] static QString runningArchitectureString();
};
