#include "VeltoMessageBoxPresenter.h"

#include "MessageBox+VeltoAdditions.h"
#include "Widget+VeltoSheets.h"

#include <QApplication>
#include <QMessageBox>

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

void VeltoMessageBoxPresenter::installAsPresenter()
{
    install(std::make_shared<VeltoMessageBoxPresenter>());
}
