// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSemaphore.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <semaphore.h>

using namespace Qt::StringLiterals;

namespace {

// The longest name (after its leading slash) whose file "sem.<name>" fits a file name.
constexpr qsizetype MaximumNameLength = NAME_MAX - 4;

QString reasonForErrno(int number)
{
    switch (number) {
    case EACCES:
        return u"access denied"_s;
    case ENAMETOOLONG:
        return u"name too long"_s;
    case EEXIST:
        return u"already exists"_s;
    default:
        return QString(u""_s);
    }
}

} // namespace

class VeltoSemaphore::Private
{
public:
    sem_t *sem = SEM_FAILED;
    QString name;
    bool wasCreated = false;
};

VeltoSemaphore::VeltoSemaphore() : d(std::make_unique<Private>()) {}

std::unique_ptr<VeltoSemaphore> VeltoSemaphore::initWithName(const QString &name, bool create, VeltoError *error)
{
    const QByteArray encoded = name.toUtf8();
    sem_t *sem = SEM_FAILED;
    // glibc keeps a semaphore as the file "sem.<name>" and answers EINVAL rather than ENAMETOOLONG for
    // names longer than a file name; every too-long name is reported as too long.
    if (encoded.size() - (encoded.startsWith('/') ? 1 : 0) > MaximumNameLength)
        errno = ENAMETOOLONG;
    else
        sem = create ? sem_open(encoded.constData(), O_CREAT | O_EXCL, 0664, 0u) : sem_open(encoded.constData(), 0);
    if (sem == SEM_FAILED) {
        const int number = errno;
        if (error)
            *error = VeltoError::errorWithDomain(VeltoPOSIXErrorDomain, number,
                                                 u"failed to create/open semaphore \"%1\", %2"_s.arg(name, reasonForErrno(number)));
        return nullptr;
    }
    std::unique_ptr<VeltoSemaphore> semaphore(new VeltoSemaphore);
    semaphore->d->sem = sem;
    semaphore->d->name = name;
    semaphore->d->wasCreated = create;
    return semaphore;
}

VeltoSemaphore::~VeltoSemaphore()
{
    close();
}

void VeltoSemaphore::wait()
{
    // A signal may interrupt the wait; it is not a post, so wait again.
    while (isOpen() && sem_wait(d->sem) != 0 && errno == EINTR) {
    }
}

bool VeltoSemaphore::tryWait()
{
    return isOpen() && sem_trywait(d->sem) == 0;
}

void VeltoSemaphore::post()
{
    if (isOpen())
        sem_post(d->sem);
}

void VeltoSemaphore::close()
{
    if (d->sem == SEM_FAILED || d->sem == nullptr)
        return;
    sem_close(d->sem);
    d->sem = SEM_FAILED;
    if (d->wasCreated)
        sem_unlink(d->name.toUtf8().constData());
}

QString VeltoSemaphore::name() const { return d->name; }
bool VeltoSemaphore::wasCreated() const { return d->wasCreated; }
bool VeltoSemaphore::isOpen() const { return d->sem != SEM_FAILED && d->sem != nullptr; }

QString VeltoSemaphore::description() const
{
    return u"VeltoSemaphore<0x%1> \"%2\""_s.arg(quintptr(this), 0, 16).arg(d->name);
}
