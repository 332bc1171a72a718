// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSecureURLSerialization.h"

#include "VTNumberConversion_p.h"
#include "VeltoException.h"
#include "VeltoPropertyList.h"

#include <QSharedData>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView DataKey{"data"};
constexpr QLatin1StringView FlagsKey{"flags"};
constexpr QLatin1StringView SubpathKey{"subpath"};

bool refuse(VeltoError *error, const VeltoError &failure)
{
    if (error)
        *error = failure;
    return false;
}

} // namespace

class VeltoSecureURLSerialization::Private : public QSharedData
{
public:
    QByteArray bookmarkData;
    qint32 captureFlags = 0;
    QString subpathFragment;
};

VeltoSecureURLSerialization::VeltoSecureURLSerialization() : d(new Private) {}
VeltoSecureURLSerialization::VeltoSecureURLSerialization(const VeltoSecureURLSerialization &other) = default;
VeltoSecureURLSerialization &VeltoSecureURLSerialization::operator=(const VeltoSecureURLSerialization &other) = default;
VeltoSecureURLSerialization::~VeltoSecureURLSerialization() = default;

std::optional<VeltoSecureURLSerialization> VeltoSecureURLSerialization::initWithSerializationData(const QByteArray &data,
                                                                                                  VeltoError *error)
{
    VeltoSecureURLSerialization record;
    if (!record.setPropertiesFromSerializationData(data, error))
        return std::nullopt;
    return record;
}

VeltoError VeltoSecureURLSerialization::missingDataError()
{
    return VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData,
                                       u"Security-scoped serialization data is nil."_s);
}

bool VeltoSecureURLSerialization::setPropertiesFromSerializationData(const QByteArray &data, VeltoError *error)
{
    if (data.isNull())
        return refuse(error, missingDataError());
    const qsizetype tagSize = VeltoSecureURLSerializationTag.size();
    if (data.size() <= tagSize || !data.startsWith(QByteArrayView(VeltoSecureURLSerializationTag))) {
        d->bookmarkData = data;
        d->captureFlags = 0;
        d->subpathFragment = QString();
        return true;
    }
    const std::optional<QVariant> root = VeltoPropertyList::read(data.sliced(tagSize), nullptr, error);
    if (!root)
        return false;
    if (root->typeId() != QMetaType::QVariantMap) {
        return refuse(error, VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData,
                                                         u"Security-scoped serialization data is not a dictionary."_s));
    }
    const QVariantMap values = root->toMap();
    const QVariant bookmark = values.value(DataKey);
    const QVariant subpath = values.value(SubpathKey);
    d->captureFlags = qint32(VTNumberConversion::integerValue(VTNumberConversion::numberValue(values.value(FlagsKey))));
    d->bookmarkData = bookmark.typeId() == QMetaType::QByteArray ? bookmark.toByteArray() : QByteArray();
    // An empty subpath is still a subpath: keep it apart from none.
    d->subpathFragment = subpath.typeId() == QMetaType::QString ? subpath.toString() : QString();
    if (subpath.typeId() == QMetaType::QString && d->subpathFragment.isNull())
        d->subpathFragment = u""_s;
    return true;
}

QByteArray VeltoSecureURLSerialization::generatedSerializationData() const
{
    if (d->captureFlags == 0 && d->subpathFragment.isNull())
        return d->bookmarkData;
    if (d->bookmarkData.isNull()) {
        throw VeltoException(VeltoInvalidArgumentException,
                             u"VeltoSecureURLSerialization::generatedSerializationData: a record with flags %1 or a "
                             "subpath needs bookmark data"_s.arg(d->captureFlags));
    }
    QVariantMap values{{DataKey, d->bookmarkData}, {FlagsKey, qint64(d->captureFlags)}};
    if (!d->subpathFragment.isNull())
        values.insert(SubpathKey, d->subpathFragment);
    const QByteArray list = VeltoPropertyList::write(values, VeltoPropertyListBinaryFormat);
    if (list.isNull())
        return d->bookmarkData;
    QByteArray stored;
    stored.reserve(VeltoSecureURLSerializationTag.size() + list.size());
    return stored.append(QByteArrayView(VeltoSecureURLSerializationTag)).append(list);
}

QByteArray VeltoSecureURLSerialization::appleBookmarkData() const
{
    return d->bookmarkData;
}

void VeltoSecureURLSerialization::setAppleBookmarkData(const QByteArray &data)
{
    d->bookmarkData = data;
}

qint32 VeltoSecureURLSerialization::captureFlags() const
{
    return d->captureFlags;
}

void VeltoSecureURLSerialization::setCaptureFlags(qint32 flags)
{
    d->captureFlags = flags;
}

QString VeltoSecureURLSerialization::subpathFragment() const
{
    return d->subpathFragment;
}

void VeltoSecureURLSerialization::setSubpathFragment(const QString &fragment)
{
    d->subpathFragment = fragment;
}
