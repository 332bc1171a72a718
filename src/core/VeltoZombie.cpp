// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoZombie.h"

#include "VTZombieClass_p.h"
#include "VeltoAlertPresenter.h"
#include "VeltoException.h"
#include "VeltoLogSink.h"
#include "VeltoObjectDealloc.h"

#include <QCoreApplication>
#include <QTimer>

#include <atomic>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// The final destruction routine that zombies replaced; zombies are on exactly when it is set.
std::atomic<void (*)(QObject *, std::size_t)> VeltoZombie_OriginalAppleDealloc{nullptr};

// The alert waits for the exception to unwind and for the main loop, whatever thread touched the zombie.
void queueZombieAlert(const QString &text)
{
    const VeltoAlertPresenter::Alert alert{
        u"Error: Zombie Access!"_s,
        u"A memory management error occurred. Please use the Help menu to send feedback report.\n\n"_s + text,
        {u"OK"_s}};
    QCoreApplication *application = QCoreApplication::instance();
    if (!application) {
        (void)VeltoAlertPresenter::runModal(alert); // no main loop to wait for
        return;
    }
    QMetaObject::invokeMethod(
        application, [alert] { QTimer::singleShot(10ms, [alert] { (void)VeltoAlertPresenter::runModal(alert); }); },
        Qt::QueuedConnection);
}

} // namespace

bool VeltoZombie::isActivated()
{
    return VeltoZombie_OriginalAppleDealloc.load(std::memory_order_acquire) != nullptr;
}

void VeltoZombie::activateZombies()
{
    if (isActivated())
        return;
    const int response = VeltoAlertPresenter::runModal(
        {u"Do you want to enable zombie objects?"_s,
         u"Zombies are a debugging tool that helps diagnose bugs when working with Velto Software technical "
         "support. Do not enable them unless instructed. If you enable them, memory (RAM) will leak when using "
         "Pennova."_s,
         {u"Enable Zombies"_s, u"Cancel"_s}});
    if (response == VeltoAlertPresenter::FirstButtonReturn)
        activateZombiesNow();
}

void VeltoZombie::activateZombiesNow()
{
    VeltoZombie_OriginalAppleDealloc.store(VeltoObject_Dealloc.replace(&VeltoZombie_Dealloc), std::memory_order_release);
    VeltoLogSink::write(u"*** enabling Velto Zombies to aid in diagnosing bugs, but WILL leak memory!"_s);
}

const VeltoZombie *VeltoZombie::zombieForObject(const QObject *object) noexcept
{
    if (!object || !isActivated() || !VTZombieClass::isZombie(object))
        return nullptr;
    return reinterpret_cast<const VeltoZombie *>(object);
}

const QMetaObject *VeltoZombie::veltoOriginalClass() const
{
    return VTZombieClass::ofZombie(this).originalClass();
}

QString VeltoZombie::className() const
{
    return VTZombieClass::ofZombie(this).name();
}

QString VeltoZombie::debugDescription() const
{
    return u"%1<0x%2>"_s.arg(className(), QString::number(quintptr(this), 16));
}

bool VeltoZombie::respondsToSelector(const char *selector) const
{
    if (qstrcmp(selector, "debugDescription") == 0)
        return true;
    warnAboutUsingZombieSelector(QString::fromUtf8(selector));
}

int VeltoZombie::methodSignatureForSelector(const char *selector) const
{
    VeltoLogSink::write(u"* WARN: method signature requested for selector '%1' on zombie %2"_s
                            .arg(QString::fromUtf8(selector), debugDescription()));
    return 0;
}

QVariant VeltoZombie::performSelector(const char *selector) const
{
    if (qstrcmp(selector, "debugDescription") == 0)
        return debugDescription();
    warnAboutUsingZombieSelector(QString::fromUtf8(selector));
}

void VeltoZombie::warnAboutUsingZombieSelector(const QString &selector) const
{
    const QString text = u"Zombie %1 sent %2"_s.arg(className(), selector);
    VeltoLogSink::write(u"*** ERROR: "_s + text);
    queueZombieAlert(text);
    throw VeltoException(VeltoZombieAccessedException, text);
}

void VeltoZombie_Dealloc(QObject *object, std::size_t allocatedSize)
{
    void *memory = dynamic_cast<void *>(object);
    const VTZombieClass &zombieClass = VTZombieClass::forObject(*object);
    object->~QObject(); // its fields, children, connections and guards go; its memory stays
    zombieClass.retype(memory, allocatedSize, object);
}
