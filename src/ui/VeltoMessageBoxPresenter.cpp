#include "VeltoMessageBoxPresenter.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

VeltoMessageBoxPresenter::VeltoMessageBoxPresenter() = default;

void VeltoMessageBoxPresenter::presentError(const VeltoError &error)
{
    auto *box = new QMessageBox(QMessageBox::Warning, QApplication::applicationDisplayName(),
                                error.descriptionForUserVelto(), QMessageBox::Ok, QApplication::activeWindow());
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
    box.exec();
    const qsizetype chosen = buttons.indexOf(box.clickedButton());
    return chosen < 0 ? NoResponse : FirstButtonReturn + int(chosen);
}

void VeltoMessageBoxPresenter::installAsPresenter()
{
    install(std::make_shared<VeltoMessageBoxPresenter>());
}
