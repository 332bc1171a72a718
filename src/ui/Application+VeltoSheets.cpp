// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Application+VeltoSheets.h"

#include "VeltoSheetBlockHelper.h"
#include "VeltoWeakKeyDictionary.h"

#include <QApplication>
#include <QDialog>

namespace {

// Sheets begun on a parent (not owned) to the helper that runs each (owned while the sheet is up).
VeltoWeakKeyDictionary &sheetMap()
{
    static VeltoWeakKeyDictionary *const map = new VeltoWeakKeyDictionary();
    return *map;
}

} // namespace

namespace velto {

void beginSheetVelto(QDialog *sheet, QWidget *parent, const std::function<void(qint64 returnCode)> &completionHandler)
{
    if (!sheet)
        return;
    if (!parent) {
        sheet->setWindowModality(Qt::ApplicationModal);
        const int response = sheet->exec();
        if (completionHandler)
            completionHandler(response);
        return;
    }
    if (sheetMap().objectForKey(sheet).isValid())
        return; // already up
    // However the sheet ends, its entry goes before the caller's block runs.
    const auto helper = VeltoSheetBlockHelper::initWithDidEndBlock([sheet, completionHandler](qint64 returnCode) {
        sheetMap().removeObjectForKey(sheet);
        if (completionHandler)
            completionHandler(returnCode);
    });
    sheetMap().setObject(QVariant::fromValue(helper), sheet);
    helper->beginSheet(sheet, parent);
}

void endSheetVelto(QDialog *sheet, qint64 returnCode)
{
    const auto helper = sheetMap().objectForKey(sheet).value<std::shared_ptr<VeltoSheetBlockHelper>>();
    if (helper) {
        helper->endSheet(sheet, returnCode);
        sheetMap().removeObjectForKey(sheet);
        return;
    }
    if (auto *modal = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
        modal->done(int(returnCode));
}

} // namespace velto
