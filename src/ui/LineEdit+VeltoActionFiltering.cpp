#include "LineEdit+VeltoActionFiltering.h"

#include "VTFieldActionSender_p.h"

#include <QLineEdit>

namespace velto {

void disableSendActionWhenTextValueNotChanged(QLineEdit *field)
{
    VTTextFieldWatcher::install(field);
}

bool hasChangedTextSinceUserStartedLastEdit(const QLineEdit *field)
{
    const VTTextFieldWatcher *watcher = VTTextFieldWatcher::watcherForField(field);
    return !watcher || watcher->hasUserChangedTextSinceLastEditStarted();
}

QMetaObject::Connection connectActionVelto(QLineEdit *field, const QObject *context, std::function<void()> action)
{
    return VTFieldActionSender::connectAction(field, context, std::move(action));
}

} // namespace velto
