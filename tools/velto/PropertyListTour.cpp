// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The tour's files stop: a settings file saved as a binary property list and loaded back, typed reads
// and their errors, a hostile file refused, dictionary additions that copy nothing when nothing
// changes, and type identifiers.

#include "Commands.h"
#include "Tour.h"

#include "VariantMap+VeltoAdditions.h"
#include "VariantMap+VeltoCorePlist.h"
#include "VeltoPropertyList.h"
#include "VeltoUTI.h"

using namespace Qt::StringLiterals;

namespace {

void filesStop(Tour &tour)
{
    tour.stop(u"Files and data: property lists, dictionaries, type identifiers"_s);

    const QVariantMap settings{{u"title"_s, u"Quarterly report"_s}, {u"zoom"_s, 1.25}, {u"pages"_s, 12},
                               {u"recent"_s, QVariantList{u"a.txt"_s, 3}}};
    const QUrl url = QUrl::fromLocalFile(tour.path(u"settings.plist"_s));
    VeltoError error;
    if (!velto::writePlistToURL(settings, url, VeltoDataWritingAtomic, &error)) {
        tour.say(u"could not save: "_s + error.descriptionForUserVelto());
        return;
    }
    const std::optional<QVariantMap> loaded = velto::dictionaryWithPlistLoadedFromURL(url, &error);
    tour.say(u"saved %1 as a binary property list, loaded back equal: %2"_s
                 .arg(url.toLocalFile(), loaded == settings ? u"yes"_s : u"no"_s));
    (void)velto::plistObjectVeltoForKey(*loaded, u"pages"_s, QMetaType::fromType<QString>(), {}, &error);
    tour.say(u"\"pages\" asked for as a string: %1"_s.arg(quoted(error.descriptionForUserVelto())));
    (void)velto::plistArrayVeltoForKeyAssumingValueClass(*loaded, u"recent"_s, QMetaType::fromType<QString>(), &error);
    tour.say(u"\"recent\" checked for strings only: %1"_s.arg(quoted(error.descriptionForUserVelto())));

    const QByteArray cycle = QByteArray::fromHex("62706c6973743030" "a100" "08" "000000000000" "0101"
                                                 "0000000000000001" "0000000000000000" "000000000000000a");
    (void)VeltoPropertyList::read(cycle, nullptr, &error);
    tour.say(u"a 43-byte binary list holding itself: %1"_s.arg(quoted(error.descriptionForUserVelto())));

    const QVariantMap same = velto::dictionaryRemovingObjectForKey(settings, u"missing"_s);
    tour.say(u"removing a key that is not there copies nothing: %1"_s.arg(same.isSharedWith(settings) ? u"yes"_s : u"no"_s));
    tour.say(u"{title, zoom, pages, recent} isSubdictionaryOf {zoom: 1.25}: %1 (it asks whether the argument is contained)"_s
                 .arg(velto::isSubdictionaryOf(settings, {{u"zoom"_s, 1.25}}) ? u"yes"_s : u"no"_s));

    for (const QString &extension : {u"pdf"_s, u"md"_s, u"plist"_s})
        tour.say(u"extension %1 -> %2 -> %3"_s.arg(extension, VeltoUTI::UTIForFileExtension(extension),
                                                  VeltoUTI::pasteboardTypeForUTI(VeltoUTI::UTIForFileExtension(extension))));
    tour.say(u"clipboard types [text/html, x-special/gnome-copied-files, public.url] as identifiers, unknown culled: %1"_s
                 .arg(VeltoUTI::UTIsForPasteboardTypes({u"text/html"_s, u"x-special/gnome-copied-files"_s, u"public.url"_s},
                                                      VeltoUTICulling::CullUnknown).join(u", "_s)));
}

const bool registered = registerTourStop(540, filesStop);

} // namespace
