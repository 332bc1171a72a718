// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Variant+VeltoCore.h"

namespace velto {

namespace {

bool stringBoolValue(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    if (i == text.size())
        return false;
    const QChar first = text.at(i);
    if (first == u'Y' || first == u'y' || first == u'T' || first == u't')
        return true;
    if (first == u'+' || first == u'-')
        ++i;
    while (i < text.size() && text.at(i) == u'0')
        ++i;
    return i < text.size() && text.at(i) >= u'1' && text.at(i) <= u'9';
}

} // namespace

bool boolValueVelto(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::QString:
        return stringBoolValue(value.toString());
    case QMetaType::QByteArray:
        return stringBoolValue(QString::fromUtf8(value.toByteArray()));
    case QMetaType::Double:
    case QMetaType::Float:
        return value.toDouble() != 0.0;
    default:
        break;
    }
    bool ok = false;
    const qlonglong number = value.toLongLong(&ok);
    if (ok)
        return number != 0;
    const qulonglong unsignedNumber = value.toULongLong(&ok);
    return ok && unsignedNumber != 0;
}

} // namespace velto
