// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto tour`: each stop shows one part of the library at work on real files in a temporary folder.

#include "Commands.h"
#include "Tour.h"

#include "VeltoBundle.h"
#include "VeltoCore.h"
#include "VeltoError.h"
#include "VeltoException.h"
#include "VeltoLocalization.h"
#include "VeltoLogDomain.h"
#include "VeltoLogging.h"
#include "VeltoRandom.h"
#include "VeltoSystemVersions.h"
#include "VeltoUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <limits>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QTextStream *tourOut = nullptr;

// Log lines of the library appear in the tour, indented under the stop that caused them.
void tourMessageHandler(QtMsgType, const QMessageLogContext &, const QString &message)
{
    *tourOut << "    log | " << message << '\n';
    tourOut->flush();
}

// Writes to the tour's user defaults; a value that cannot be written is said, not passed over.
void store(Tour &tour, const QVariant &value, const QString &key)
{
    VeltoError error;
    if (!VeltoUserDefaults::standardUserDefaults()->setObject(value, key, &error))
        tour.say(u"could not store %1: %2"_s.arg(key, error.descriptionForUserVelto()));
}

void libraryStop(Tour &tour)
{
    tour.stop(u"The library and its own strings"_s);
    const auto bundle = VeltoCoreBundle();
    tour.say(u"VeltoCore::instance() is one object per process: %1"_s
                 .arg(VeltoCore::instance() == VeltoCore::instance() ? u"yes"_s : u"no"_s));
    tour.say(u"debug build: %1"_s.arg(VeltoCore::instance()->isDebugBuild() ? u"yes"_s : u"no"_s));
    tour.say(u"framework bundle %1, languages %2, using \"%3\""_s
                 .arg(bundle->rootPath(), bundle->localizations().join(u", "_s), bundle->localizationLanguage()));
    tour.say(u"VeltoLocalizeInBundle(\"_Choose Folder\")       -> %1"_s
                 .arg(quoted(VeltoLocalizeInBundle(u"_Choose Folder"_s, bundle.get()))));
    tour.say(u"VeltoLocalizeInBundle(\"_No such key\")         -> %1  (a missing key shows as itself)"_s
                 .arg(quoted(VeltoLocalizeInBundle(u"_No such key"_s, bundle.get()))));
    tour.say(u"VeltoLocalizeExpectFailInBundle(\"_No such key\") -> %1"_s
                 .arg(VeltoLocalizeExpectFailInBundle(u"_No such key"_s, bundle.get()).isNull() ? u"null"_s : u"text"_s));
    tour.say(u"VeltoLocalizeExpectFailUsingClass(key, nullptr)  -> null, but ...InBundle(key, nullptr) -> %1"_s
                 .arg(quoted(VeltoLocalizeExpectFailInBundle(u"_x"_s, nullptr))));
}

void translationStop(Tour &tour)
{
    tour.stop(u"A translated bundle in a folder"_s);
    tour.writeFile(u"MyApp/strings/en/Localizable.json"_s, R"({"_Open Recent": "Open Recent"})");
    tour.writeFile(u"MyApp/strings/de/Localizable.json"_s, R"({"_Open Recent": "Zuletzt geöffnet"})");
    store(tour, QStringList{u"de-AT"_s, u"en"_s}, VeltoBundle::PreferredLanguagesKey);
    VeltoBundle bundle(tour.path(u"MyApp"_s));
    tour.say(u"wrote %1 with tables for %2"_s.arg(tour.path(u"MyApp/strings"_s), bundle.localizations().join(u" and "_s)));
    tour.say(u"preferred languages de-AT, en -> bundle uses \"%1\""_s.arg(bundle.localizationLanguage()));
    tour.say(u"\"_Open Recent\" -> %1"_s.arg(quoted(VeltoLocalizeInBundle(u"_Open Recent"_s, &bundle))));
    store(tour, QVariant(), VeltoBundle::PreferredLanguagesKey);
}

void errorStop(Tour &tour)
{
    tour.stop(u"Errors and the text a user sees"_s);
    const QByteArray missing = QFile::encodeName(tour.path(u"no-such-file.txt"_s));
    VeltoError openError;
    if (::open(missing.constData(), O_RDONLY) < 0)
        openError = VeltoError::posixError(errno);
    tour.say(u"open() of a missing file: %1"_s.arg(quoted(openError.descriptionForUserVelto())));
    tour.say(u"  isErrorNoSuchFileVelto: %1"_s.arg(openError.isErrorNoSuchFileVelto() ? u"yes"_s : u"no"_s));
    const VeltoError own = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData,
                                                       u"The settings file is damaged."_s);
    tour.say(u"an error with its own text:  %1"_s.arg(quoted(own.descriptionForUserVelto())));
    const VeltoError twoLines(VeltoCoreErrorDomain, VeltoCoreErrorTaskFailed,
                              {{VeltoLocalizedDescriptionKey, u"The tool failed.\nIts output was empty."_s}});
    tour.say(u"a two-line description:     %1"_s.arg(quoted(twoLines.descriptionForUserVelto())));
    tour.say(u"a cancellation:             %1"_s
                 .arg(quoted(VeltoError::userCancellationErrorVelto().descriptionForUserVelto())));
    tour.say(u"the unknown error:          %1"_s.arg(quoted(VeltoError::unknownErrorVelto().descriptionForUserVelto())));
}

void exceptionStop(Tour &tour)
{
    tour.stop(u"Programming errors are exceptions with a call stack"_s);
    tour.say(u"asking for a random number between 0 and the largest 64-bit value (a range too big to count):"_s);
    try {
        (void)VeltoRandom_UIntegerBetween(0, std::numeric_limits<quint64>::max());
    } catch (const VeltoException &exception) {
        tour.say(u"caught %1: %2"_s.arg(exception.name(), exception.reason()));
        const QStringList frames = exception.callStackSymbols();
        for (const QString &frame : frames.mid(0, 3))
            tour.say(u"  "_s + frame);
        tour.say(u"as an error for the user: %1"_s
                     .arg(quoted(VeltoError::errorWithException(exception).descriptionForUserVelto())));
    }
}

void defaultsStop(Tour &tour)
{
    tour.stop(u"User defaults keep their types in a property-list file"_s);
    const auto defaults = VeltoUserDefaults::standardUserDefaults();
    store(tour, true, u"com.velto.tour.flag"_s);
    store(tour, 42, u"com.velto.tour.answer"_s);
    store(tour, QVariantList{u"a"_s, 2.5}, u"com.velto.tour.list"_s);
    tour.say(u"stored a bool, an integer and a list in %1:"_s.arg(defaults->filePath()));
    QFile file(defaults->filePath());
    if (file.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = file.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.contains("tour") || line.contains("<true") || line.contains("<integer") || line.contains("<real"))
                tour.say(u"  | "_s + QString::fromUtf8(line));
        }
    }
    tour.say(u"read back: flag is a %1, answer is a %2"_s
                 .arg(QString::fromLatin1(defaults->objectForKey(u"com.velto.tour.flag"_s).typeName()),
                      QString::fromLatin1(defaults->objectForKey(u"com.velto.tour.answer"_s).typeName())));
}

bool tourLogging = false;

void loggingStop(Tour &tour)
{
    tour.stop(u"Logging domains switched from the user defaults"_s);
    VeltoLogDomain domain(u"Tour"_s, &tourLogging);
    domain.setPropertyWatcher([&tour](VeltoLogDomain *changed, const QString &property) {
        tour.say(u"watcher: %1.%2 changed"_s.arg(changed->domainName(), property));
    });
    const QString key = domain.userDefaultsKeyForProperty(VeltoLogDomainPropertyName_isEnabled);
    VELTO_LOG(tourLogging, u"this line is not written: the domain is off"_s);
    tour.say(u"writing %1 = \"YES\" to the user defaults and loading the domain"_s.arg(key));
    store(tour, u"YES"_s, key);
    domain.loadFromUserDefaults();
    VELTO_LOG(tourLogging, u"Tour domain is on"_s);

    tour.say(u"a statement called every second for 26 seconds (simulated clock):"_s);
    VeltoLogFloodControlData flood;
    QString pattern;
    for (int second = 1; second <= 26; ++second)
        pattern += VeltoLog_ShouldLogWithFloodControlDataAtTime(&flood, 1000.0 + second) ? u'+' : u'.';
    tour.say(u"  %1   (+ written, . muted)"_s.arg(pattern));
}

void systemStop(Tour &tour)
{
    tour.stop(u"The running system"_s);
    tour.say(u"operating-system (kernel) version: %1"_s.arg(VeltoSystemVersion_PrettyString()));
    VeltoSystemVersion parsed{};
    (void)VeltoSystemVersion_GetFromString(&parsed, u"5.10b3"_s);
    tour.say(u"\"5.10b3\" parses as %1; the system is at least that: %2"_s
                 .arg(VeltoSystemVersion_ToString(&parsed),
                      VeltoSystem_IsSystemVersionAtLeast(5, 10, 0) ? u"yes"_s : u"no"_s));
    VeltoRandom_ResetSeed(7);
    (void)VeltoRandom_Int();
    VeltoRandom_ResetSeed(7);
    QStringList dice;
    for (int i = 0; i < 6; ++i)
        dice << QString::number(VeltoRandom_UIntegerBetween(1, 6));
    tour.say(u"six dice after seeding with 7: %1 (the same on every run)"_s.arg(dice.join(u' ')));
}

const bool frameStops = registerTourStop(100, libraryStop) && registerTourStop(110, translationStop)
    && registerTourStop(120, errorStop) && registerTourStop(130, exceptionStop)
    && registerTourStop(140, defaultsStop) && registerTourStop(150, loggingStop)
    && registerTourStop(190, systemStop);

} // namespace

int runTourCommand(const CommandLine &line)
{
    QTextStream &out = line.out;
    QTemporaryDir folder;
    if (!folder.isValid()) {
        return line.failure(u"cannot make a temporary folder: "_s + folder.errorString());
    }
    out << "VeltoCore tour, working in " << folder.path() << '\n';
    tourOut = &out;
    const QtMessageHandler previous = qInstallMessageHandler(tourMessageHandler);
    VeltoUserDefaults::setStandardUserDefaults(
        std::make_shared<VeltoUserDefaults>(QDir(folder.path()).filePath(u"defaults.plist"_s)));

    Tour tour(out, folder.path());
    for (const auto stop : registeredTourStops())
        stop(tour);

    VeltoUserDefaults::setStandardUserDefaults(nullptr);
    qInstallMessageHandler(previous);
    out << "\nEnd of the tour; the temporary folder is removed.\n";
    return ExitSuccess;
}

namespace {

const bool tourCommand = registerCommand({
    .name = "tour",
    .summary = "a guided run through the library on real files in a temporary folder",
    .description = "Each stop shows one part of the library at work: the files it makes live in a temporary "
                   "folder that is removed at the end, and the library's own log lines appear indented "
                   "under the stop that caused them.",
    .run = runTourCommand,
    .needsGuiApplication = true, // the font and menu stop
});

} // namespace
