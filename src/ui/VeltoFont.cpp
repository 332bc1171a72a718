// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFont.h"

#include "Font+VeltoAdditions.h"
#include "VTFontFace_p.h"
#include "VTFontLookup_p.h"
#include "VariantMap+VeltoAdditions.h"
#include "VariantMap+VeltoCorePlist.h"
#include "VariantMap+VeltoObjectAdditions.h"
#include "VeltoFontFeatures.h"

#include <QGuiApplication>
#include <QRawFont>

#include <algorithm>

using namespace Qt::StringLiterals;

class VeltoFontData : public QSharedData
{
public:
    QFont font;
    QVariantList features;
};

namespace {

const QString FontNameKey = u"fontName"_s;
const QString PointSizeKey = u"pointSize"_s;
const QString FontFeaturesKey = u"fontFeatures"_s;

constexpr quint64 SecondSmallCapsSelector = 12;

// The feature settings that have an OpenType counterpart, and the tag each switches on (0: a default
// selector, which switches nothing on and every face honours).
struct OpenTypeCounterpart
{
    quint32 type;
    quint64 selector;
    quint32 tag;
};
constexpr OpenTypeCounterpart OpenTypeCounterparts[] = {
    {VeltoFontFeatureType_LetterCase, 0, 0},
    {VeltoFontFeatureType_LetterCase, 3, VTOpenTypeTag("smcp")},
    {VeltoFontFeatureType_LetterCase, SecondSmallCapsSelector, VTOpenTypeTag("smcp")},
    {VeltoFontFeatureType_LetterCase, 14, VTOpenTypeTag("unic")},
    {VeltoFontFeatureType_LetterCase, 15, 0},
    {VeltoFontFeatureType_StyleOptions, 0, 0},
    {VeltoFontFeatureType_StyleOptions, 4, VTOpenTypeTag("titl")},
    {VeltoFontFeatureType_LowerCase, 0, 0},
    {VeltoFontFeatureType_LowerCase, 1, VTOpenTypeTag("smcp")},
    {VeltoFontFeatureType_LowerCase, 2, VTOpenTypeTag("pcap")},
    {VeltoFontFeatureType_UpperCase, 0, 0},
    {VeltoFontFeatureType_UpperCase, 1, VTOpenTypeTag("c2sc")},
    {VeltoFontFeatureType_UpperCase, 2, VTOpenTypeTag("c2pc")},
};

const OpenTypeCounterpart *counterpartOf(const QVariant &setting)
{
    const QVariantMap map = setting.toMap();
    const qint64 type = velto::intForKey(map, VeltoFontFeatureKey_Type);
    const qint64 selector = velto::intForKey(map, VeltoFontFeatureKey_Value);
    const auto found = std::find_if(std::begin(OpenTypeCounterparts), std::end(OpenTypeCounterparts),
                                    [&](const OpenTypeCounterpart &counterpart) {
                                        return qint64(counterpart.type) == type && selector >= 0
                                            && counterpart.selector == quint64(selector);
                                    });
    return found == std::end(OpenTypeCounterparts) ? nullptr : found;
}

// The tags to switch on for features, or nothing when one of them has no OpenType counterpart.
std::optional<QList<quint32>> openTypeTags(const QVariantList &features)
{
    QList<quint32> tags;
    for (const QVariant &setting : features) {
        const OpenTypeCounterpart *counterpart = counterpartOf(setting);
        if (!counterpart)
            return std::nullopt;
        if (counterpart->tag != 0)
            tags.append(counterpart->tag);
    }
    return tags;
}

bool honours(const VTFontFace &face, const QVariantList &features)
{
    const std::optional<QList<quint32>> tags = openTypeTags(features);
    return tags && std::all_of(tags->begin(), tags->end(), [&](quint32 tag) { return face.hasLayoutFeature(tag); });
}

// The settings stored in plist: a list of maps with exactly the two number entries; nothing, with the
// error, otherwise.
std::optional<QVariantList> storedFeatures(const QVariantMap &plist, VeltoError *error)
{
    const std::optional<QVariantList> features = velto::plistArrayVeltoForKeyAssumingValueClass(
        plist, FontFeaturesKey, QMetaType::fromType<QVariantMap>(), error);
    if (!features)
        return std::nullopt;
    const QMetaType number = QMetaType::fromType<qint64>();
    for (const QVariant &setting : *features) {
        const QVariantMap map = setting.toMap();
        if (!velto::plistObjectVeltoForKeyAssumingNotNilClass(map, VeltoFontFeatureKey_Type, number, error).isValid()
            || !velto::plistObjectVeltoForKeyAssumingNotNilClass(map, VeltoFontFeatureKey_Value, number, error).isValid())
            return std::nullopt;
        if (map.size() != 2) {
            if (error)
                *error = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData,
                                                     u"A font feature setting holds entries besides its type and selector."_s);
            return std::nullopt;
        }
    }
    return features;
}

} // namespace

VeltoFont::VeltoFont(const QFont &font) : VeltoFont(font, {}) {}

VeltoFont::VeltoFont(const QFont &font, const QVariantList &features) : d(new VeltoFontData)
{
    d->font = font;
    d->features = features;
}

VeltoFont::VeltoFont(const VeltoFont &other) = default;
VeltoFont &VeltoFont::operator=(const VeltoFont &other) = default;
VeltoFont::~VeltoFont() = default;

QFont VeltoFont::font() const
{
    return d->font;
}

QVariantList VeltoFont::fontFeatures() const
{
    return d->features;
}

bool VeltoFont::hasFontFeature(quint32 type, qint64 *selector) const
{
    return VeltoFontFeatures_GetValueForFeature(d->features, type, selector);
}

std::optional<VeltoFont> VeltoFont::fontByAddingFontFeautures(const QVariantList &additions) const
{
    if (additions.isEmpty())
        return *this;
    const QVariantList combined = d->features + additions;
    const std::shared_ptr<const VTFontFace> face = VTFontFace::faceForFont(d->font);
    if (!face || !honours(*face, combined))
        return std::nullopt;
    return VeltoFont(d->font, combined);
}

std::optional<VeltoFont> VeltoFont::fontByAddingFontFeature(quint32 type, quint64 selector) const
{
    return fontByAddingFontFeautures(VeltoFontFeaturesByAdding({}, type, selector, false));
}

std::optional<VeltoFont> VeltoFont::fontByAddingChangeCaseFontFeature(quint32 changeCase) const
{
    if (changeCase == 0)
        return *this;
    if (std::optional<VeltoFont> changed = fontByAddingFontFeature(VeltoFontFeatureType_LetterCase, changeCase))
        return changed;
    if (changeCase != VeltoFontChangeCase_SmallCaps)
        return std::nullopt;
    if (std::optional<VeltoFont> changed = fontByAddingFontFeature(VeltoFontFeatureType_LetterCase, SecondSmallCapsSelector))
        return changed;
    return fontByAddingFontFeature(VeltoFontFeatureType_LowerCase, 1);
}

QVariantMap VeltoFont::propertyListRepresentation() const
{
    QVariantMap plist{{FontNameKey, velto::fontName(d->font)}};
    velto::setFloat(plist, float(VTPointSizeOf(d->font)), PointSizeKey);
    if (!d->features.isEmpty())
        plist.insert(FontFeaturesKey, d->features);
    return plist;
}

VeltoFont VeltoFont::initWithPropertyListRepresentation(const QVariantMap &plist, VeltoError *error)
{
    // Kinds are checked before the typed reads, which take a value of the wrong kind for a caller's mistake.
    const bool sizeIsNumber = velto::plistObjectVeltoForKey(plist, PointSizeKey, QMetaType::fromType<double>(),
                                                            QVariant(0.0), error).isValid();
    const double size = VTUsablePointSize(sizeIsNumber ? velto::floatForKey(plist, PointSizeKey) : 0.0);
    const QString name =
        velto::plistObjectVeltoForKey(plist, FontNameKey, QMetaType::fromType<QString>(), QVariant(), error).toString();
    const VeltoFont font(velto::fontWithName(name, size)
                             .value_or([&] {
                                 QFont userFont = QGuiApplication::font();
                                 userFont.setPointSizeF(size);
                                 return userFont;
                             }()));
    const std::optional<QVariantList> features = storedFeatures(plist, error);
    if (!features)
        return font;
    if (std::optional<VeltoFont> featured = font.fontByAddingFontFeautures(*features))
        return *featured;
    if (error)
        *error = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData,
                                             u"The font \u201c%1\u201d does not honour the stored font features."_s.arg(velto::fontName(font.font())));
    return font;
}

QGlyphRun VeltoFont::glyphRunForString(const QString &text) const
{
    QGlyphRun run;
    const std::shared_ptr<const VTFontFace> face = VTFontFace::faceForFont(d->font);
    const QRawFont raw = QRawFont::fromFont(d->font);
    if (!face || !raw.isValid())
        return run;
    const VTFontFace::Shaped shaped = face->shape(text, openTypeTags(d->features).value_or(QList<quint32>()));
    const qreal scale = raw.pixelSize() / face->unitsPerEm();
    QList<QPointF> positions;
    positions.reserve(shaped.positions.size());
    for (const QPointF &position : shaped.positions)
        positions.append(position * scale);
    run.setRawFont(raw);
    run.setGlyphIndexes(shaped.glyphs);
    run.setPositions(positions);
    return run;
}

bool VeltoFont::operator==(const VeltoFont &other) const
{
    return d == other.d || (d->font == other.d->font && d->features == other.d->features);
}
