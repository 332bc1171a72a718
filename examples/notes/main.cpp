// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Notes: a small document-based application on VeltoCoreGui. A document is a list of notes kept in a
// property-list file; see NotesWindow.cpp for how the library's table, text field, alert and
// accessibility helpers are used.
//
//   notes [FILE]                 open FILE (a .notes property list) or start with an empty list
//   notes --screenshot OUT.png   draw the window with sample notes into OUT.png and describe it

#include "NotesWindow.h"

#include <VeltoCore/VeltoMessageBoxPresenter.h>
#include <VeltoCore/VeltoUserDefaults.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    app.setOrganizationName(u"Velto"_s);
    app.setApplicationName(u"Notes"_s);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(u"file"_s, u"A notes file to open."_s);
    const QCommandLineOption screenshot(u"screenshot"_s, u"Draw the window with sample notes into <png>."_s, u"png"_s);
    parser.addOption(screenshot);
    parser.process(app);
    VeltoMessageBoxPresenter::installAsPresenter(); // the library's own errors appear as alerts

    QTemporaryDir freshDefaults;
    if (parser.isSet(screenshot)) // the same picture on every machine: settings as on a first run
        VeltoUserDefaults::setStandardUserDefaults(std::make_shared<VeltoUserDefaults>(freshDefaults.filePath(u"defaults.plist"_s)));
    NotesWindow window;
    if (parser.isSet(screenshot)) {
        window.addNote(u"Groceries"_s, u"Apples, bread, coffee and a bag of oranges."_s);
        window.addNote(u"Release checklist"_s, u"Tag the version. Build the packages. Write the announcement."_s);
        window.addNote(u"Ideas"_s, u"A word meter that counts as you type."_s);
        return window.takeScreenshot(parser.value(screenshot)) ? 0 : 1;
    }
    if (!parser.positionalArguments().isEmpty())
        window.open(parser.positionalArguments().constFirst());
    window.show();
    return app.exec();
}
