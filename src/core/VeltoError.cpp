// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoError.h"

#include "VeltoException.h"

#include <QHashFunctions>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

class VeltoError::Private : public QSharedData
{
public:
    QString domain;
    qint64 code = 0;
    QVariantMap userInfo;
};

VeltoError::VeltoError() : d(new Private) {}

VeltoError::VeltoError(const QString &domain, qint64 code, const QVariantMap &userInfo) : d(new Private)
{
    d->domain = domain;
    d->code = code;
    d->userInfo = userInfo;
}

VeltoError::VeltoError(const VeltoError &other) = default;
VeltoError &VeltoError::operator=(const VeltoError &other) = default;
VeltoError::~VeltoError() = default;

VeltoError VeltoError::errorWithDomain(const QString &domain, qint64 code, const QString &localizedDescription)
{
    if (localizedDescription.isEmpty())
        return VeltoError(domain, code);
    // A text of the caller's own never shows the code to the user.
    return VeltoError(domain, code,
                      {{VeltoLocalizedDescriptionKey, localizedDescription}, {VeltoOmitCodeKey, true}});
}

VeltoError VeltoError::errorWithDomainException(const QString &domain, qint64 code, const VeltoException &exception)
{
    return errorWithDomain(domain, code, exception.description());
}

VeltoError VeltoError::errorWithException(const VeltoException &exception)
{
    return errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorException,
                           u"Exception was thrown. %1: %2"_s.arg(exception.name(), exception.reason()));
}

VeltoError VeltoError::errorWithException(const std::exception &exception)
{
    return errorWithException(VeltoException::fromException(exception));
}

VeltoError VeltoError::unknownErrorVelto()
{
    return errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorUnknown, u"An unknown/unspecified error occurred."_s);
}

VeltoError VeltoError::userCancellationErrorVelto()
{
    return VeltoError(VeltoCocoaErrorDomain, VeltoCocoaErrorUserCancelled);
}

VeltoError VeltoError::posixError(int errnoValue, const QString &description)
{
    if (description.isEmpty())
        return VeltoError(VeltoPOSIXErrorDomain, errnoValue);
    return VeltoError(VeltoPOSIXErrorDomain, errnoValue, {{VeltoLocalizedDescriptionKey, description}});
}

bool VeltoError::isNull() const
{
    return d->domain.isEmpty() && d->code == 0 && d->userInfo.isEmpty();
}

QString VeltoError::domain() const
{
    return d->domain;
}

qint64 VeltoError::code() const
{
    return d->code;
}

QVariantMap VeltoError::userInfo() const
{
    return d->userInfo;
}

QString VeltoError::localizedDescription() const
{
    const QString text = d->userInfo.value(VeltoLocalizedDescriptionKey).toString();
    if (!text.isEmpty())
        return text;
    if (d->domain == VeltoPOSIXErrorDomain && d->code > 0 && d->code < 4096)
        return QString::fromLocal8Bit(std::strerror(int(d->code)));
    if (isUserCancellationErrorVelto())
        return u"The operation was cancelled."_s;
    return u"The operation could not be completed. (%1 error %2.)"_s.arg(d->domain).arg(d->code);
}

bool VeltoError::isUserCancellationErrorVelto() const
{
    return isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorUserCancelled);
}

bool VeltoError::isErrorDomainVelto(const QString &domain, qint64 code) const
{
    // The code is the cheap test; the domain text is only compared when the codes agree. A null domain
    // (a null error's) is no domain and matches none, though QString's == takes it as equal to "".
    return d->code == code && !d->domain.isNull() && !domain.isNull() && d->domain == domain;
}

bool VeltoError::isErrorNoSuchFileVelto() const
{
    return isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorFileNoSuchFile)
        || isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadNoSuchFile)
        || isErrorDomainVelto(VeltoPOSIXErrorDomain, ENOENT);
}

QString VeltoError::descriptionForUserVelto() const
{
    const QString text = localizedDescription();
    if (isUserCancellationErrorVelto() || d->userInfo.contains(VeltoOmitCodeKey))
        return text;
    const QString format = text.contains(u'\n') ? u"\n\n[%1 code %2]"_s : u" [%1 code %2]"_s;
    return text + format.arg(d->domain).arg(d->code);
}

QString VeltoError::description() const
{
    return u"Error Domain=%1 Code=%2 \"%3\""_s.arg(d->domain).arg(d->code).arg(localizedDescription());
}

bool VeltoError::operator==(const VeltoError &other) const
{
    return d == other.d
        || (d->code == other.d->code && d->domain == other.d->domain && d->userInfo == other.d->userInfo);
}

size_t qHash(const VeltoError &error, size_t seed) noexcept
{
    return qHashMulti(seed, error.domain(), error.code());
}
