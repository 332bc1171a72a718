// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The text readers take whatever a document or a settings file holds: numbers scanned at any index,
// escaped lists, stored dates, numbers with units and file sizes. None may crash, and what they accept
// must keep its promises: a scan's effective range lies inside the text, an escaped list read back
// from its own joined form is the same list, and a stored date that parses writes back to text that
// reads as the same instant. Anything else aborts.

#include "DateTime+VeltoAdditions.h"
#include "String+VeltoScanning.h"
#include "StringList+VeltoEscapedList.h"
#include "VeltoCharacterSet.h"
#include "VeltoFileSizeFormatter.h"
#include "VeltoNumberFormatter.h"

#include <QString>

#include <cstdlib>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

void checkScanRange(const QString &text, quint64 index, VeltoRange range)
{
    check(range.location == index);
    check(index > quint64(text.size()) ? range.length == 0 : range.end() <= quint64(text.size()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const quint64 index = size == 0 ? 0 : data[0] % (text.size() + 2);

    VeltoRange range;
    (void)velto::hexIntValueAtIndex(text, index, &range);
    checkScanRange(text, index, range);
    (void)velto::intValueAtIndex(text, index, &range);
    checkScanRange(text, index, range);
    (void)velto::floatValueAtIndex(text, index, &range);
    checkScanRange(text, index, range);

    const auto separators = VeltoCharacterSet::characterSetWithCharactersInString(u";");
    const QStringList list = velto::componentsSeparatedByCharactersInSet(text, separators, u'\\');
    if (!list.isEmpty() && !list.constLast().isEmpty()) // a trailing empty component is not written back
        check(velto::componentsSeparatedByCharactersInSet(velto::componentsJoinedByCharacter(list, u';', u'\\'),
                                                          separators, u'\\') == list);

    const QDateTime date = velto::dateWithStringValueFromPlistVelto(text);
    if (date.isValid())
        check(velto::dateWithStringValueFromPlistVelto(velto::stringValueForPlistVelto(date)) == date);

    QVariant number;
    VeltoNumberFormatter width(QStringLiteral("cm"), true);
    (void)width.getObjectValue(&number, text);
    (void)VeltoFileSizeFormatter::fileSizeFromLocalizedString(text);
    return 0;
}
