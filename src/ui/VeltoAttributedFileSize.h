// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoAttributedFileSize.h
 * \brief The attributed form of a file size: the text with its unit ("KB", "MB") drawn in gray, as
 * formats for QTextLayout.
 *
 * \code
 * const VeltoAttributedFileSize shown = velto::attributedStringForObjectValue(formatter, 1'500'000, {});
 * layout.setText(shown.string);
 * layout.setFormats(shown.formats);
 * \endcode
 */

#include "VeltoFileSizeFormatter.h"
#include "veltocoregui_export.h"

#include <QList>
#include <QTextCharFormat>
#include <QTextLayout>

/// VeltoAttributedFileSize: a text and the character formats of its ranges (in order, not overlapping).
struct VeltoAttributedFileSize
{
    QString string;
    QList<QTextLayout::FormatRange> formats;
};

namespace velto {

/// The colour of the unit part: Qt::gray, fixed so that the result needs no application or palette.
[[nodiscard]] VELTOCOREGUI_EXPORT QColor fileSizeUnitColor();

/**
 * attributedStringForObjectValue: \a formatter's text of \a value with \a defaultAttributes, and the unit
 * part (from the unit VeltoFileSizeFormatter::unitForString() finds to the end) in the same attributes
 * with fileSizeUnitColor() as foreground. A text without a unit has one range; a value the formatter does
 * not format gives an empty text and no ranges.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT VeltoAttributedFileSize attributedStringForObjectValue(
    const VeltoFileSizeFormatter &formatter, const QVariant &value, const QTextCharFormat &defaultAttributes);

} // namespace velto
