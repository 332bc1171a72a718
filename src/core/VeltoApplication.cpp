#include "VeltoApplication.h"

#include <QSysInfo>

bool VeltoApplication::isRunningIntelCode()
{
    // The code that runs is the code we were compiled to; an emulator does not change that answer.
#if defined(Q_PROCESSOR_X86)
    return true;
#else
    return false;
#endif
}

QString VeltoApplication::runningArchitectureString()
{
    return QSysInfo::buildCpuArchitecture();
}
