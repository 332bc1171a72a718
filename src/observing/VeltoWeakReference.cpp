// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoWeakReference.h"

using namespace Qt::StringLiterals;

VeltoWeakReference::~VeltoWeakReference() = default;

QString VeltoWeakReference::description() const
{
    const auto address = [](const void *pointer) {
        return u"0x"_s + QString::number(quintptr(pointer), 16);
    };
    return u"VeltoWeakReference<%1> to <%2>"_s.arg(address(this), address(m_object));
}

void *_VeltoWeakReferenceCollection_Unbox(const VeltoWeakReference &reference)
{
    return reference.object();
}
