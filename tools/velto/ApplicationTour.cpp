// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The tour's stops for the application and file helpers: the process and its sandbox, running and
// finding tools, then a file's unique name, its extended attributes and the URLs made from text.

#include "Commands.h"
#include "Tour.h"

#include "Url+VeltoAdditions.h"
#include "VeltoApplication.h"
#include "VeltoFileManager.h"
#include "VeltoTask.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

void processStop(Tour &tour)
{
    tour.stop(u"The application, its sandbox and command-line tools"_s);
    tour.say(u"running inside a sandbox: %1 (APP_SANDBOX_CONTAINER_ID, Flatpak or Snap)"_s
                 .arg(VeltoApplication::isRunningInsideSandbox() ? u"yes"_s : u"no"_s));
    tour.say(u"real home %1, containers in %2"_s.arg(VeltoFileManager::userHomeFolderURL().toLocalFile(),
                                                     VeltoFileManager::sandboxContainersFolderURL().toLocalFile()));
    const QString uname = VeltoTask::filePathForCommandLineExecutableWithName(u"uname"_s);
    tour.say(u"the tool finder puts uname at %1"_s.arg(uname.isNull() ? u"(nowhere)"_s : uname));
    if (!uname.isNull()) {
        VeltoError error;
        const QString output = VeltoTask::launchTaskReturningStdoutAndGetError(
            [&uname](QProcess &task) {
                task.setProgram(uname);
                task.setArguments({u"-sr"_s});
            },
            &error);
        tour.say(u"uname -sr prints %1"_s.arg(quoted(output)));
    }
    VeltoError error;
    (void)VeltoTask::launchTaskReturningStdoutAndGetError(
        [](QProcess &task) {
            task.setProgram(u"/bin/sh"_s);
            task.setArguments({u"-c"_s, u"exit 3"_s});
        },
        &error);
    tour.say(u"a tool that exits with 3: %1"_s.arg(error.description()));
}

void filesStop(Tour &tour)
{
    tour.stop(u"Unique names, extended attributes and URLs from text"_s);
    (void)tour.writeFile(u"files/report.txt"_s, "first draft\n");
    const QString folder = tour.path(u"files"_s);
    const QString unique = VeltoFileManager::uniqueFileNameInFolder(u"report.txt"_s, folder);
    tour.say(u"report.txt exists in the tour's folder; the next free name is %1"_s.arg(quoted(unique)));
    (void)tour.writeFile(u"files/"_s + unique, "second draft\n");

    const QUrl file = QUrl::fromLocalFile(folder + u'/' + unique);
    VeltoError error;
    if (VeltoFileManager::writeExtendedAttribute(u"com.velto.note"_s, "reviewed by the tour", file, &error)) {
        tour.say(u"set the attribute com.velto.note (stored as user.com.velto.note); read back: %1"_s.arg(
            quoted(VeltoFileManager::readStringExtendedAttribute(u"com.velto.note"_s, file))));
        QByteArray data;
        (void)VeltoFileManager::readExtendedAttribute(u"com.velto.absent"_s, nullptr, &data, file, &error);
        tour.say(u"an attribute that is not there reads as success without data: %1"_s.arg(data.isNull() ? u"yes"_s : u"no"_s));
    } else {
        tour.say(u"this file system keeps no extended attributes: %1"_s.arg(error.descriptionForUserVelto()));
    }

    for (const QString &text : {u"example.com/page"_s, u"someone@example.com"_s, u"~/Documents/notes.txt"_s,
                                u"example com/page"_s, u"https://example.com/long\npath"_s}) {
        const QUrl url = velto::URLWithVeltoValidatedString(text);
        tour.say(u"%1 -> %2"_s.arg(quoted(text).leftJustified(34),
                                   url.isEmpty() ? u"(no URL)"_s : velto::veltoStringify(url)));
    }
    tour.say(u"shown to users as %1"_s.arg(quoted(velto::filePathForUserDisplay(
        velto::fileURLWithVeltoPath(u"~/Documents/notes.txt"_s)))));
}

const bool registered = registerTourStop(200, processStop) && registerTourStop(210, filesStop);

} // namespace
