#include "VeltoSpatialEdge.h"

QString VeltoSpatialEdge_ToString(VeltoSpatialEdge edge)
{
    return QString::asprintf("{loc=%.f, len=%.f}", edge.location, edge.length);
}
