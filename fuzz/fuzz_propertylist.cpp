// The user-defaults reader must reject any malformed property list without crashing, and whatever it
// accepts must survive a write and a second read unchanged.

#include "VTPropertyListXml_p.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::optional<QVariant> value = VTPropertyListXml::read(input);
    if (!value)
        return 0;
    const std::optional<QVariant> again = VTPropertyListXml::read(VTPropertyListXml::write(*value));
    // NaN never equals itself, so compare the written forms, which are canonical.
    if (!again || VTPropertyListXml::write(*again) != VTPropertyListXml::write(*value))
        std::abort();
    return 0;
}
