// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto bookmark capture PATH` and `velto bookmark resolve DATA`: durable file references as the
// library stores them (the global serialization, in base64), and the tour stop that follows one file
// through a rename and an atomic save.

#include "Commands.h"
#include "Tour.h"

#include "Url+VeltoAdditions.h"
#include "VeltoSecureURL.h"

#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

int captureBookmark(const CommandLine &line, const QString &path)
{
    VeltoError error;
    const auto url = VeltoSecureURL::initCapturingBookmarkForURL(velto::fileURLWithVeltoPath(path),
                                                                line.isSet(u"read-only"_s), &error);
    if (!url)
        return line.failure(error.descriptionForUserVelto());
    line.out << url->serializationStorableGlobally().toBase64() << '\n';
    return ExitSuccess;
}

int resolveBookmark(const CommandLine &line, const QString &data)
{
    const auto stored = QByteArray::fromBase64Encoding(data.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!stored)
        return line.usageError(u"DATA is not base64"_s);
    const auto url = VeltoSecureURL::initWithSerializedData(*stored);
    const QByteArray before = url->appleBookmarkData();
    VeltoError error;
    const QUrl resolved = url->resolvedURLWithFlags({}, &error);
    if (resolved.isEmpty())
        return line.failure(error.descriptionForUserVelto());
    line.out << "path: " << resolved.toLocalFile() << '\n'
             << "stale: " << (url->appleBookmarkData() != before ? "yes" : "no") << '\n'
             << "data: " << url->serializationGeneratedWithAppleBookmarkData(url->appleBookmarkData()).toBase64() << '\n';
    return ExitSuccess;
}

int runBookmark(const CommandLine &line)
{
    const QString action = line.arguments.at(0);
    if (action == u"capture")
        return captureBookmark(line, line.arguments.at(1));
    if (line.isSet(u"read-only"_s))
        return line.usageError(u"--read-only is for capture"_s);
    if (action == u"resolve")
        return resolveBookmark(line, line.arguments.at(1));
    return line.usageError(u"no action \"%1\""_s.arg(action));
}

bool saveText(const QString &path, const QByteArray &text)
{
    QSaveFile file(path); // a new file renamed over the old one, as editors save
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
}

void bookmarkStop(Tour &tour)
{
    tour.stop(u"Secure file references: a file followed through a rename and an atomic save"_s);
    const QString original = tour.path(u"bookmarks/draft.txt"_s);
    const QString renamed = tour.path(u"bookmarks/final.txt"_s);
    VeltoError error;
    const auto captured = tour.writeFile(u"bookmarks/draft.txt"_s, "first draft\n")
                              ? VeltoSecureURL::initCapturingBookmarkForURL(QUrl::fromLocalFile(original), false, &error)
                              : nullptr;
    if (!captured) {
        tour.say(u"could not capture: "_s + error.descriptionForUserVelto());
        return;
    }
    const QByteArray stored = captured->serializationStorableGlobally();
    tour.say(u"captured %1: %2 stored bytes"_s.arg(quoted(captured->fileName())).arg(stored.size()));
    QFile::rename(original, renamed);
    const auto reopened = VeltoSecureURL::initWithSerializedData(stored);
    // Resolves the bookmark afresh (not the URL cached while it is reachable) and tells whether the
    // reference had to make its bookmark again.
    const auto follow = [&reopened] {
        const QByteArray before = reopened->appleBookmarkData();
        const QString name = reopened->resolveBookmarkedURLUncachedWithFlags({}).fileName();
        return u"%1 (bookmark made again: %2)"_s.arg(name, reopened->appleBookmarkData() != before ? u"yes"_s : u"no"_s);
    };
    tour.say(u"renamed to final.txt, resolved from the stored bytes: "_s + follow());
    saveText(renamed, "second draft\n");
    tour.say(u"saved over it atomically (a new file, a new inode): "_s + follow());
    tour.say(u"the stored bytes stay those it was made from: %1"_s.arg(
        reopened->serializationStorableGlobally() == stored ? u"yes"_s : u"no"_s));
    QFile::remove(renamed);
    (void)reopened->resolvedURLWithFlags({}, &error);
    tour.say(u"deleted: %1"_s.arg(quoted(error.descriptionForUserVelto())));
}

const bool registered = registerCommand({
    .name = "bookmark",
    .summary = "capture and resolve durable file references",
    .synopsis = {"capture [--read-only] PATH", "resolve DATA"},
    .description = "capture prints the stored form of a secure reference to PATH (a file or folder), in base64: "
                   "what an application keeps in its settings to find the file again after a relaunch.\n\n"
                   "resolve reads such DATA and prints the file's path now (\"path: \"), whether the reference "
                   "had to be made again because the file was renamed, moved below its folder or replaced by an "
                   "atomic save (\"stale: yes\"), and the stored form of the refreshed reference (\"data: \"). "
                   "A file that is gone, or DATA that holds no reference, is an error.",
    .options = {QCommandLineOption(u"read-only"_s, u"capture: make the reference for reading only."_s)},
    .arguments = {2, 2},
    .words = {u"capture"_s, u"resolve"_s},
    .run = runBookmark,
}) && registerTourStop(230, bookmarkStop);

} // namespace
