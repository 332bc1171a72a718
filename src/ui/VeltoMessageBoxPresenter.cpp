// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoMessageBoxPresenter.h"

#include "MessageBox+VeltoAdditions.h"
#include "Widget+VeltoSheets.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

VeltoMessageBoxPresenter::VeltoMessageBoxPresenter() = default;

void VeltoMessageBoxPresenter::presentError(const VeltoError &error)
{
    auto *box = new QMessageBox(QMessageBox::Warning, QApplication::applicationDisplayName(),
                                error.descriptionForUserVelto(), QMessageBox::Ok);
    if (QWidget *window = velto::windowForSheet(QApplication::activeWindow())) {
        velto::showWithWindowVelto(box, window, [box](qint64) { box->deleteLater(); });
        return;
    }
    // Without a window it must not block the caller either: opened, not run.
    velto::ensureAlertFitsOnScreenVelto(*box);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

int VeltoMessageBoxPresenter::runModalAlert(const Alert &alert)
{
    QMessageBox box(QMessageBox::Warning, QApplication::applicationDisplayName(), alert.messageText,
                    QMessageBox::NoButton, QApplication::activeWindow());
    box.setInformativeText(alert.informativeText);
    const QStringList titles = alert.buttonTitles.isEmpty() ? QStringList{u"OK"_s} : alert.buttonTitles;
    QList<QAbstractButton *> buttons;
    for (const QString &title : titles) {
        const bool cancels = title == u"Cancel";
        QPushButton *button = box.addButton(title, buttons.isEmpty() ? QMessageBox::AcceptRole
                                                       : cancels       ? QMessageBox::RejectRole
                                                                       : QMessageBox::ActionRole);
        if (buttons.isEmpty())
            box.setDefaultButton(button);
        if (cancels)
            box.setEscapeButton(button);
        buttons.append(button);
    }
    (void)velto::showModalVelto(box); // the answer is read from the button clicked: 1000 + its position
    const qsizetype chosen = buttons.indexOf(box.clickedButton());
    return chosen < 0 ? NoResponse : FirstButtonReturn + int(chosen);
}

void VeltoMessageBoxPresenter::installAsPresenter()
{
    install(std::make_shared<VeltoMessageBoxPresenter>());
}
