// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// A program outside the project that uses the installed headers and libraries.
#include <VeltoCore/VeltoCore.h>
#include <VeltoCore/VeltoError.h>
#include <VeltoCore/VeltoLocalization.h>
#include <VeltoCore/VeltoBundle.h>
#include <VeltoCore/VeltoMessageBoxPresenter.h>

#include <QApplication>
#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    VeltoMessageBoxPresenter::installAsPresenter();
    const QString text = VeltoLocalizeInBundle(QStringLiteral("_Choose Folder"), VeltoCoreBundle().get());
    std::printf("%s\n%s\n", qPrintable(text), qPrintable(VeltoError::unknownErrorVelto().descriptionForUserVelto()));
    return text == QLatin1String("Choose Folder") ? 0 : 1;
}
