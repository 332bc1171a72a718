// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// A font's property-list form comes from user defaults and documents: whatever the bytes, reading it
// gives a font (with only settings its face honours, or none), never a crash, and a font read back from
// its own property-list form keeps its size and settings.

#include "VeltoFont.h"
#include "VeltoFontFeatures.h"
#include "VeltoPropertyList.h"

#include <QGuiApplication>

#include <fontconfig/fontconfig.h>
#include <sanitizer/lsan_interface.h>

#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QGuiApplication(*argc, *argv); // fonts need one; it lives for the whole run
    // fontconfig 2.14 leaks about 3 KB of every configuration it loads (a bare FcFontList shows it),
    // so the one load happens here, hidden from the leak checker. It would reload every 30 seconds
    // when asked without a configuration (Qt does): no rescans in a run of many minutes.
    const __lsan::ScopedDisabler fontconfigLeaks;
    FcConfigSetRescanInterval(FcConfigGetCurrent(), 0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::optional<QVariant> root = VeltoPropertyList::read(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    if (!root || root->typeId() != QMetaType::QVariantMap)
        return 0;
    const VeltoFont font = VeltoFont::initWithPropertyListRepresentation(root->toMap());
    (void)VeltoFontFeaturesChangeCaseValueForFeatures(font.fontFeatures()); // a kept list is always readable

    const VeltoFont again = VeltoFont::initWithPropertyListRepresentation(font.propertyListRepresentation());
    if (again.fontFeatures() != font.fontFeatures() || float(again.font().pointSizeF()) != float(font.font().pointSizeF()))
        std::abort();
    return 0;
}
