// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSheetBlockHelper.h"

#include <QDialog>
#include <QMessageBox>
#include <QPointer>

class VeltoSheetBlockHelper::Private
{
public:
    DidEndBlock block;
    QPointer<QDialog> sheet;     // cleared when the dialog goes
    const QDialog *sheetAddress = nullptr; // which dialog this helper runs, also while it is being deleted
    std::shared_ptr<VeltoSheetBlockHelper> self; // set while the sheet is up
    QMetaObject::Connection finished;
    QMetaObject::Connection destroyed;
};

VeltoSheetBlockHelper::VeltoSheetBlockHelper(DidEndBlock block) : d(std::make_unique<Private>())
{
    d->block = std::move(block);
}

VeltoSheetBlockHelper::~VeltoSheetBlockHelper() = default;

std::shared_ptr<VeltoSheetBlockHelper> VeltoSheetBlockHelper::initWithDidEndBlock(DidEndBlock block)
{
    return std::shared_ptr<VeltoSheetBlockHelper>(new VeltoSheetBlockHelper(std::move(block)));
}

void VeltoSheetBlockHelper::beginSheet(QDialog *sheet, QWidget *parent)
{
    if (!sheet || !parent || d->self || d->sheetAddress)
        return;
    d->self = shared_from_this();
    d->sheet = sheet;
    d->sheetAddress = sheet;
    if (sheet->parentWidget() != parent)
        sheet->setParent(parent, sheet->windowFlags());
    const std::weak_ptr<VeltoSheetBlockHelper> helper = d->self;
    // The user may end the sheet too (a button, Escape); either way the block runs once.
    d->finished = QObject::connect(sheet, &QDialog::finished, sheet, [helper, sheet](int result) {
        if (const auto running = helper.lock())
            running->endSheet(sheet, result);
    });
    // A sheet deleted while up ends it as rejected. The dialog is half destroyed by now (destroyed() comes
    // from the QWidget destructor), so it is let go of first and not touched again.
    d->destroyed = QObject::connect(sheet, &QObject::destroyed, [helper, sheet] {
        if (const auto running = helper.lock()) {
            running->d->sheet.clear();
            running->endSheet(sheet, QDialog::Rejected);
        }
    });
    sheet->open();
}

void VeltoSheetBlockHelper::beginSheetAlert(QMessageBox *alert, QWidget *parent)
{
    beginSheet(alert, parent);
}

void VeltoSheetBlockHelper::endSheet(QDialog *sheet, qint64 returnCode)
{
    if (!d->self || sheet != d->sheetAddress)
        return;
    // Released when this call returns, however the block leaves the sheet.
    const std::shared_ptr<VeltoSheetBlockHelper> keepAlive = std::move(d->self);
    QObject::disconnect(d->finished);
    QObject::disconnect(d->destroyed);
    const QPointer<QDialog> shown = d->sheet;
    d->sheet.clear();
    const DidEndBlock block = std::move(d->block);
    d->block = nullptr;
    if (block)
        block(returnCode);
    if (shown && shown->isVisible())
        shown->done(int(returnCode));
}

bool VeltoSheetBlockHelper::isSheetUp() const
{
    return d->self != nullptr;
}
