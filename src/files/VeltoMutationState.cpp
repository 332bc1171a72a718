#include "VeltoMutationState.h"

QVariantMap VeltoCreateMutableDictionary()
{
    return {};
}

QVariantList VeltoCreateMutableArray()
{
    return {};
}

QSet<QString> VeltoCreateMutableSet()
{
    return {};
}
