// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoPointerKeyDictionary.h"

#include "VTSnapshot_p.h"
#include "VeltoException.h"

#include <QDebug>
#include <QHash>

using namespace Qt::StringLiterals;

class VeltoPointerKeyDictionary::Private
{
public:
    QHash<const void *, QVariant> entries;
};

VeltoPointerKeyDictionary::VeltoPointerKeyDictionary() : d(std::make_unique<Private>()) {}
VeltoPointerKeyDictionary::~VeltoPointerKeyDictionary() = default;

quint64 VeltoPointerKeyDictionary::count() const
{
    return quint64(d->entries.size());
}

QVariant VeltoPointerKeyDictionary::objectForPointer(const void *pointer) const
{
    return d->entries.value(pointer);
}

void VeltoPointerKeyDictionary::setObject(const QVariant &value, const void *pointer)
{
    if (!value.isValid())
        throw VeltoException(VeltoInvalidArgumentException,
                             u"VeltoPointerKeyDictionary::setObject: attempt to insert nil object for pointer 0x%1"_s
                                 .arg(quintptr(pointer), 0, 16));
    d->entries.insert(pointer, value);
}

void VeltoPointerKeyDictionary::removeObjectForPointer(const void *pointer)
{
    d->entries.remove(pointer);
}

std::unique_ptr<void *[]> VeltoPointerKeyDictionary::newPointerVector() const
{
    return VTSnapshotBuffer(d->entries.asKeyValueRange(), d->entries.size(),
                            [](auto it) { return (*it).first; });
}

QString VeltoPointerKeyDictionary::description() const
{
    QString text = u"VeltoPointerKeyDictionary<0x%1> { \n"_s.arg(quintptr(this), 0, 16);
    for (auto it = d->entries.constBegin(); it != d->entries.constEnd(); ++it) {
        // Values that have a text show it; others show as QDebug prints them.
        QString value;
        if (it.value().canConvert<QString>())
            value = it.value().toString();
        else
            QDebug(&value).noquote().nospace() << it.value();
        text += u"\t0x%1 = %2 \n"_s.arg(quintptr(it.key()), 0, 16).arg(value);
    }
    return text + u"}"_s;
}
