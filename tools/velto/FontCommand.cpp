// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto font FAMILY [--features]`: the face a name resolves to, its file, and whether it has small
// capitals; `velto font --covering CHAR`: the fonts that cover a character.

#include "Commands.h"

#include "Font+VeltoAdditions.h"
#include "FontDatabase+VeltoAdditions.h"
#include "VeltoFont.h"
#include "VeltoFontFeatures.h"

#include <QFontInfo>

using namespace Qt::StringLiterals;

namespace {

// CHAR is one character, or its code point written U+XXXX.
std::optional<char32_t> characterArgument(const QString &text)
{
    if (text.startsWith(u"U+", Qt::CaseInsensitive)) {
        bool ok = false;
        const uint codePoint = text.mid(2).toUInt(&ok, 16);
        return ok && codePoint <= 0x10FFFF ? std::optional<char32_t>(codePoint) : std::nullopt;
    }
    const QList<uint> codePoints = text.toUcs4();
    return codePoints.size() == 1 ? std::optional<char32_t>(codePoints.first()) : std::nullopt;
}

QString codePointName(char32_t character)
{
    return u"U+%1"_s.arg(uint(character), 4, 16, QLatin1Char('0')).toUpper();
}

int listCovering(const CommandLine &line, const QString &text)
{
    const std::optional<char32_t> character = characterArgument(text);
    if (!character)
        return line.usageError(u"\"%1\" is neither one character nor U+XXXX"_s.arg(text));
    const QList<QFont> fonts = velto::fontsCoveringCharacter(*character, 12);
    if (fonts.isEmpty())
        return line.failure(u"no font covers %1"_s.arg(codePointName(*character)));
    for (const QFont &font : fonts)
        line.out << font.family() << '\n';
    return ExitSuccess;
}

int describeFont(const CommandLine &line, const QString &name)
{
    const std::optional<QFont> font = velto::fontWithName(name, 12);
    if (!font)
        return line.failure(u"no font is named \"%1\""_s.arg(name));
    const QFontInfo resolved(*font);
    const QString file = velto::fontFilePathVelto(*font);
    const bool smallCaps = VeltoFont(*font).fontByAddingChangeCaseFontFeature(VeltoFontChangeCase_SmallCaps).has_value();
    line.out << "font: " << resolved.family() << ' ' << resolved.styleName() << " (" << velto::fontName(*font) << ")\n"
             << "file: " << (file.isEmpty() ? u"(none known to fontconfig)"_s : file) << '\n'
             << "small capitals: " << (smallCaps ? "honoured" : "not honoured") << '\n';
    if (line.isSet(u"features"_s))
        line.out << "features: " << velto::layoutFeatureTagsVelto(*font).join(u' ') << '\n';
    return ExitSuccess;
}

int runFont(const CommandLine &line)
{
    const bool covering = line.isSet(u"covering"_s);
    if (covering == !line.arguments.isEmpty())
        return line.usageError(covering ? u"give FAMILY or --covering, not both"_s : u"give FAMILY or --covering CHAR"_s);
    if (covering && line.isSet(u"features"_s))
        return line.usageError(u"--features goes with FAMILY"_s);
    return covering ? listCovering(line, line.value(u"covering"_s)) : describeFont(line, line.arguments.first());
}

const bool registered = registerCommand({
    .name = "font",
    .summary = "what a font's file holds, or which fonts cover a character",
    .synopsis = {"FAMILY [--features]", "--covering CHAR"},
    .description = "With FAMILY (a family, \"Linux Libertine O\", or a face's PostScript name, \"LinLibertineOB\"), "
                   "prints the face it resolves to with its PostScript name, the file it is read from, and whether "
                   "it honours small capitals (its layout tables have the OpenType feature smcp for Latin text); "
                   "with --features also every feature tag of its GSUB and GPOS tables. A name no installed font "
                   "has is an error.\n\n"
                   "With --covering, prints the families whose regular face covers CHAR (one character, or U+XXXX), "
                   "one per line in the order of the font database; none is an error.",
    .options = {QCommandLineOption(u"features"_s, u"Also print the face's OpenType feature tags."_s),
                QCommandLineOption(u"covering"_s, u"List the fonts that cover CHAR."_s, u"CHAR"_s)},
    .arguments = {0, 1},
    .run = runFont,
    .needsGuiApplication = true,
});

} // namespace
