// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The tour's font and menu stop: small capitals where a face has them and not where it has not, a
// font kept in a property list, glyphs and the hyphen test, fonts covering a character, and a menu
// built in a few calls, tidied and searched, with an item chosen as if by hand.

#include "Commands.h"
#include "Tour.h"

#include "Action+VeltoAdditions.h"
#include "Font+VeltoAdditions.h"
#include "FontDatabase+VeltoAdditions.h"
#include "Menu+VeltoAdditions.h"
#include "VeltoFont.h"
#include "VeltoFontFeatures.h"
#include "VeltoPropertyList.h"

#include <QMenu>

#include <numeric>

using namespace Qt::StringLiterals;

// The menu's target: counts the times it was sent "save".
class SavingDocument : public QObject
{
    Q_OBJECT

public slots:
    void save(QObject *) { ++saved; }

public:
    int saved = 0;
};

namespace {

QString yesNo(bool value)
{
    return value ? u"yes"_s : u"no"_s;
}

QString titlesOf(const QMenu &menu)
{
    QStringList titles;
    for (const QAction *item : menu.actions())
        titles << (item->isSeparator() ? u"---"_s : item->text());
    return titles.join(u" | "_s);
}

void fontStop(Tour &tour)
{
    const QFont libertine(u"Linux Libertine O"_s, 12);
    const QString file = velto::fontFilePathVelto(libertine);
    if (file.isEmpty()) {
        tour.say(u"(Linux Libertine O is not installed: fonts-linuxlibertine, scripts/install-deps)"_s);
        return;
    }
    tour.say(u"Linux Libertine O is read from %1"_s.arg(file));
    const std::optional<VeltoFont> smallCaps = VeltoFont(libertine).fontByAddingChangeCaseFontFeature(VeltoFontChangeCase_SmallCaps);
    tour.say(u"small capitals in Linux Libertine O: %1; in Liberation Serif: %2 (its tables have no smcp)"_s.arg(
        yesNo(smallCaps.has_value()),
        yesNo(VeltoFont(QFont(u"Liberation Serif"_s, 12)).fontByAddingChangeCaseFontFeature(VeltoFontChangeCase_SmallCaps).has_value())));
    if (!smallCaps)
        return;
    VeltoError error;
    const QByteArray stored = VeltoPropertyList::write(smallCaps->propertyListRepresentation(), VeltoPropertyListXMLFormat, &error);
    tour.writeFile(u"font.plist"_s, stored);
    const std::optional<QVariant> read = VeltoPropertyList::read(stored);
    const VeltoFont again = VeltoFont::initWithPropertyListRepresentation(read ? read->toMap() : QVariantMap());
    tour.say(u"kept in %1 (%2 bytes) and read back: %3 at %4 pt, change case %5"_s.arg(
        tour.path(u"font.plist"_s)).arg(stored.size()).arg(velto::fontName(again.font())).arg(again.font().pointSizeF())
        .arg(VeltoFontFeaturesChangeCaseValueForFeatures(again.fontFeatures())));
    const QList<quint32> shaped = smallCaps->glyphRunForString(u"Tour"_s).glyphIndexes();
    const QList<quint32> plain = VeltoFont(libertine).glyphRunForString(u"Tour"_s).glyphIndexes();
    tour.say(u"\"Tour\" shaped with small capitals: %1 glyphs, %2 of them other than the plain ones"_s.arg(shaped.size())
                 .arg(std::inner_product(shaped.begin(), shaped.end(), plain.begin(), 0, std::plus<>(), std::not_equal_to<>())));

    const QList<quint32> glyphs = velto::glyphsForCharactersInString(libertine, u"re-do"_s, VeltoMakeRange(0, 5));
    velto::VeltoHyphenGlyphCache hyphens;
    QStringList marked;
    for (quint32 glyph : glyphs)
        marked << u"%1%2"_s.arg(glyph).arg(velto::isHyphenationGlyph(libertine, glyph, hyphens) ? u" (hyphen)"_s : QString());
    tour.say(u"glyphs of \"re-do\": %1"_s.arg(marked.join(u", "_s)));

    const QList<QFont> covering = velto::fontsCoveringCharacter(U'\u2657', 12);
    tour.say(u"fonts covering U+2657 (white chess bishop): %1"_s.arg(covering.isEmpty() ? u"none"_s : covering.first().family()
                                                                  + (covering.size() > 1 ? u" and %1 more"_s.arg(covering.size() - 1) : QString())));
}

void menuStop(Tour &tour)
{
    SavingDocument document;
    QMenu menu(u"File"_s);
    QMenu recent(u"Open Recent"_s);
    velto::addItems(&menu, {velto::itemWithoutActionDisplayingCaptionToUserVelto(u"Document"_s), menu.addSeparator()});
    QAction *draft = velto::addItemWithTitle(&menu, u"Draft"_s, &document, "save", 7);
    menu.addSeparator();
    menu.addSeparator();
    velto::addItemWithSubmenuVelto(&menu, &recent);
    velto::addItemWithTitle(&recent, u"Save a Copy"_s, &document, "save", 42);
    menu.addSeparator();
    tour.say(u"a menu as built: %1"_s.arg(titlesOf(menu)));
    velto::removeItemsInRange(&menu, VeltoMakeRange(menu.actions().indexOf(draft), 1));
    velto::removeSuperfluousSeparatorItems(&menu);
    tour.say(u"without Draft, separators tidied: %1"_s.arg(titlesOf(menu)));

    QMenu *holder = nullptr;
    qint64 index = -1;
    QAction *copy = velto::itemWithActionNestedSearch(&menu, "save", &holder, &index);
    tour.say(u"the item sending save: \"%1\", tag %2, item %3 of \"%4\""_s.arg(copy->text()).arg(velto::tagVelto(copy))
                 .arg(index).arg(holder->title()));
    const bool sent = velto::dispatchActionAsIfChosenByUser(copy);
    const bool captionSent = velto::dispatchActionAsIfChosenByUser(menu.actions().first());
    tour.say(u"chosen as if by hand: sent %1, saved %2 time(s); the caption beeps instead: %3"_s.arg(yesNo(sent))
                 .arg(document.saved).arg(yesNo(!captionSent)));
}

void fontsAndMenusStop(Tour &tour)
{
    tour.stop(u"Fonts and menus: features a face honours, glyphs, coverage, tidy menus"_s);
    fontStop(tour);
    menuStop(tour);
}

const bool registered = registerTourStop(820, fontsAndMenusStop);

} // namespace

#include "FontTour.moc"
