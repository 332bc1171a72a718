// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The XML property-list reader must reject any malformed document without crashing, and whatever it
// accepts must survive being written in both formats and read again unchanged.

#include "VTPropertyListXml_p.h"
#include "VeltoPropertyList.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::optional<QVariant> value = VTPropertyListXml::read(input);
    if (!value)
        return 0;
    // NaN never equals itself, so compare the written forms, which are canonical.
    const QByteArray binary = VeltoPropertyList::write(*value, VeltoPropertyListBinaryFormat);
    const QByteArray xml = VeltoPropertyList::write(*value, VeltoPropertyListXMLFormat);
    if (binary.isNull() || xml.isNull())
        std::abort(); // everything the reader accepts must be writable
    const std::optional<QVariant> fromXml = VeltoPropertyList::read(xml);
    const std::optional<QVariant> fromBinary = VeltoPropertyList::read(binary);
    if (!fromXml || !fromBinary || VeltoPropertyList::write(*fromXml, VeltoPropertyListXMLFormat) != xml
        || VeltoPropertyList::write(*fromBinary, VeltoPropertyListBinaryFormat) != binary)
        std::abort();
    return 0;
}
