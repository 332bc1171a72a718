// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "MessageBox+VeltoAdditions.h"

#include "VeltoSheetBlockHelper.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QMessageBox>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LongestKeptText = 299;
constexpr qsizetype MostKeptLines = 3;
constexpr qsizetype ShortestHalvedText = 8;

// The frame height the alert has when shown: QMessageBox sizes itself only as it is shown, so a hidden
// alert is shown off-screen for a moment. A window off screen has no window-manager frame yet, so for a
// hidden alert this is the height of the alert itself; its title bar falls within the top margin.
double laidOutHeight(QMessageBox &alert)
{
    if (alert.isVisible())
        return alert.frameGeometry().height();
    const bool offScreenAlready = alert.testAttribute(Qt::WA_DontShowOnScreen);
    alert.setAttribute(Qt::WA_DontShowOnScreen, true);
    alert.show();
    const double height = alert.frameGeometry().height();
    alert.hide();
    alert.setAttribute(Qt::WA_DontShowOnScreen, offScreenAlready);
    return height;
}

// The codes exec() reports: a standard button's value, else the position among the buttons added with a
// role, in the order they were added (their order among the button box's children).
QList<std::pair<QAbstractButton *, qint64>> buttonCodes(const QMessageBox &alert)
{
    QList<QAbstractButton *> added;
    if (const auto *box = alert.findChild<QDialogButtonBox *>(QString(), Qt::FindDirectChildrenOnly)) {
        for (QObject *child : box->children()) {
            auto *button = qobject_cast<QAbstractButton *>(child);
            if (button && alert.standardButton(button) == QMessageBox::NoButton)
                added << button;
        }
    }
    QList<std::pair<QAbstractButton *, qint64>> codes;
    for (QAbstractButton *button : alert.buttons()) {
        const QMessageBox::StandardButton standard = alert.standardButton(button);
        codes.append({button, standard != QMessageBox::NoButton ? qint64(standard) : qint64(added.indexOf(button))});
    }
    return codes;
}

} // namespace

QString VeltoFixTooLongString(const QString &text)
{
    if (text.size() <= LongestKeptText && text.count(u'\n') < MostKeptLines)
        return text;
    if (text.size() < ShortestHalvedText)
        return u"..."_s;
    qsizetype half = text.size() / 2;
    if (text.at(half - 1).isHighSurrogate())
        --half;
    return text.first(half) + u"..."_s;
}

namespace velto {

double maximumHeightForAlertOnScreen(const QScreen *screen)
{
    const double height = screen ? screen->geometry().height() : 0.0;
    return height - AlertScreenTopMargin - AlertScreenBottomMargin;
}

void ensureAlertFitsOnScreenVelto(QMessageBox &alert)
{
    const double maximum = maximumHeightForAlertOnScreen(QGuiApplication::primaryScreen());
    while (maximum < laidOutHeight(alert)) {
        const QString text = VeltoFixTooLongString(alert.text());
        const QString informative = VeltoFixTooLongString(alert.informativeText());
        if (text == alert.text() && informative == alert.informativeText())
            return;
        alert.setText(text);
        alert.setInformativeText(informative);
    }
}

int showModalVelto(QMessageBox &alert)
{
    ensureAlertFitsOnScreenVelto(alert);
    return alert.exec();
}

void showWithWindowVelto(QMessageBox *alert, QWidget *window, const std::function<void(qint64 returnCode)> &didEndBlock)
{
    if (!alert)
        return;
    ensureAlertFitsOnScreenVelto(*alert);
    if (window) {
        VeltoSheetBlockHelper::initWithDidEndBlock(didEndBlock)->beginSheetAlert(alert, window);
        return;
    }
    const int response = alert->exec();
    if (didEndBlock)
        didEndBlock(response);
}

QAbstractButton *buttonWithReturnCodeVelto(const QMessageBox &alert, qint64 code)
{
    for (const auto &[button, buttonCode] : buttonCodes(alert)) {
        if (buttonCode == code)
            return button;
    }
    return nullptr;
}

} // namespace velto
