// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file LineEdit+VeltoFileSize.h
 * \brief Additions to QLineEdit for a file-size field: the up and down arrows' steps.
 *
 * \code
 * connect(upButton, &QToolButton::clicked, sizeField, [sizeField] { velto::stepUpFileSizeInTextField(sizeField); });
 * \endcode
 *
 * The field's value is its text read by VeltoFileSizeFormatter::fileSizeFromLocalizedString() ("12 KB"
 * is 12,000); the stepped value is written back as VeltoFileSizeFormatter::localizedStringForFileSize().
 * The step follows VeltoFileSizeFormatter::steppedFileSize(). Call from the field's thread.
 */

#include "veltocoregui_export.h"

class QLineEdit;

namespace velto {

/// stepUpFileSizeInTextField: raises the size in \a field by one step (unchanged at the 64-bit limit);
/// nothing for a null field.
VELTOCOREGUI_EXPORT void stepUpFileSizeInTextField(QLineEdit *field);
/// stepDownFileSizeInTextField: lowers the size in \a field by one step, to 0 at the least; nothing for
/// a null field.
VELTOCOREGUI_EXPORT void stepDownFileSizeInTextField(QLineEdit *field);

} // namespace velto
