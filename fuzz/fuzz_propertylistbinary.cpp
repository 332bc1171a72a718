// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The binary property-list reader must reject any malformed or hostile document (cycles, offsets and
// lengths past the end, huge counts, deep nesting) quickly and without crashing, and whatever it accepts
// must survive a binary write and a second read unchanged, and be writable as XML unless it holds a
// character XML cannot carry. (Reading XML back is fuzz_propertylist's work.)

#include "VTPropertyListBinary_p.h"
#include "VeltoPropertyList.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView input(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::optional<QVariant> value = VTPropertyListBinary::read(input);
    if (!value)
        return 0;
    VeltoError error;
    const QByteArray binary = VeltoPropertyList::write(*value, VeltoPropertyListBinaryFormat, &error);
    if (binary.isNull())
        std::abort(); // everything the reader accepts must be writable in its own format
    const std::optional<QVariant> again = VeltoPropertyList::read(binary);
    // NaN never equals itself, so compare the written forms, which are canonical.
    if (!again || VeltoPropertyList::write(*again, VeltoPropertyListBinaryFormat) != binary)
        std::abort();
    const QByteArray xml = VeltoPropertyList::write(*value, VeltoPropertyListXMLFormat, &error);
    if (xml.isNull() && !error.localizedDescription().contains(QLatin1StringView("XML cannot carry")))
        std::abort();
    return 0;
}
