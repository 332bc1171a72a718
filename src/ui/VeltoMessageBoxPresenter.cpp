#include "VeltoMessageBoxPresenter.h"

#include <QApplication>
#include <QMessageBox>

VeltoMessageBoxPresenter::VeltoMessageBoxPresenter() = default;

void VeltoMessageBoxPresenter::presentError(const VeltoError &error)
{
    auto *box = new QMessageBox(QMessageBox::Warning, QApplication::applicationDisplayName(),
                                error.descriptionForUserVelto(), QMessageBox::Ok, QApplication::activeWindow());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void VeltoMessageBoxPresenter::installAsPresenter()
{
    install(std::make_shared<VeltoMessageBoxPresenter>());
}
