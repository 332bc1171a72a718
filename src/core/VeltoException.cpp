// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoException.h"

#include "VTSymbols_p.h"

#include <dlfcn.h>

#include <cstring>
#include <typeinfo>

using namespace Qt::StringLiterals;

namespace {

bool isConstructorFrame(quintptr returnAddress)
{
    Dl_info info{};
    const auto *lookup = reinterpret_cast<const char *>(returnAddress) - 1;
    return dladdr(lookup, &info) != 0 && info.dli_sname != nullptr
        && std::strncmp(info.dli_sname, "_ZN14VeltoExceptionC", 20) == 0;
}

} // namespace

class VeltoException::Private
{
public:
    QString name;
    QString reason;
    QList<quintptr> addresses;
    QByteArray what;
};

VeltoException::VeltoException(const QString &name, const QString &reason) : d(new Private)
{
    d->name = name;
    d->reason = reason;
    const QList<quintptr> frames = VTSymbols::returnAddresses();
    // The stack starts at the code that made the exception: skip this constructor's frames (one, or
    // two where the compiler keeps the complete-object and base-object constructors apart).
    qsizetype first = 0;
    while (first < frames.size() && isConstructorFrame(frames.at(first)))
        ++first;
    d->addresses = frames.mid(first);
    d->what = description().toUtf8();
}

VeltoException::~VeltoException()
{
    delete d;
}

VeltoException::VeltoException(const VeltoException &other) : std::exception(other), d(new Private(*other.d)) {}

VeltoException &VeltoException::operator=(const VeltoException &other)
{
    if (this != &other)
        *d = *other.d;
    return *this;
}

VeltoException VeltoException::fromException(const std::exception &exception)
{
    if (const auto *velto = dynamic_cast<const VeltoException *>(&exception))
        return *velto;
    return VeltoException(VTSymbols::typeName(typeid(exception)), QString::fromUtf8(exception.what()));
}

QString VeltoException::name() const
{
    return d->name;
}

QString VeltoException::reason() const
{
    return d->reason;
}

QString VeltoException::description() const
{
    return u"%1: %2"_s.arg(d->name, d->reason);
}

QStringList VeltoException::callStackSymbols() const
{
    return VTSymbols::callStackSymbols(d->addresses);
}

QList<quintptr> VeltoException::callStackReturnAddresses() const
{
    return d->addresses;
}

const char *VeltoException::what() const noexcept
{
    return d->what.constData();
}
