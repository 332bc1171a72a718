// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "LineEdit+VeltoFileSize.h"

#include "VeltoFileSizeFormatter.h"

#include <QLineEdit>

namespace velto {

namespace {

void stepFileSizeField(QLineEdit *field, VeltoFileSizeFormatter::StepDirection direction)
{
    if (!field)
        return;
    const quint64 value = VeltoFileSizeFormatter::fileSizeFromLocalizedString(field->text());
    field->setText(VeltoFileSizeFormatter::localizedStringForFileSize(
        VeltoFileSizeFormatter::steppedFileSize(value, direction)));
}

} // namespace

void stepUpFileSizeInTextField(QLineEdit *field)
{
    stepFileSizeField(field, VeltoFileSizeFormatter::StepDirection::Up);
}

void stepDownFileSizeInTextField(QLineEdit *field)
{
    stepFileSizeField(field, VeltoFileSizeFormatter::StepDirection::Down);
}

} // namespace velto
