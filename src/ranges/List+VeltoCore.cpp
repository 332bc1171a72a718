#include "List+VeltoCore.h"

#include "VeltoException.h"

#include <QMetaMethod>

using namespace Qt::StringLiterals;

namespace velto::internal {

void throwIndexBeyondBounds(quint64 index, quint64 count)
{
    const QString reason = count == 0 ? u"*** index %1 beyond bounds for empty array"_s.arg(index)
                                      : u"*** index %1 beyond bounds [0 .. %2]"_s.arg(index).arg(count - 1);
    throw VeltoException(VeltoRangeException, reason);
}

qint64 intForPerformSelector(QObject *receiver, const char *selector, QObject *argument)
{
    const QMetaObject *receiverClass = receiver->metaObject();
    // The most derived class's method of that name wins, as an override would.
    for (int i = receiverClass->methodCount() - 1; i >= 0; --i) {
        const QMetaMethod method = receiverClass->method(i);
        if (method.name() != selector || method.parameterCount() != 1)
            continue;
        const QMetaType parameter = method.parameterMetaType(0);
        if (!(parameter.flags() & QMetaType::PointerToQObject))
            continue;
        if (argument && parameter.metaObject() && !argument->metaObject()->inherits(parameter.metaObject()))
            continue;
        const int returnType = method.returnMetaType().id();
        if (returnType != QMetaType::Int && returnType != QMetaType::Long && returnType != QMetaType::LongLong)
            continue;
        // A QObject's address is that of its most derived object (QObject is always the first base),
        // so the pointer serves for a parameter of any subclass type.
        qint64 answer = 0;
        int intAnswer = 0;
        void *storage = returnType == QMetaType::Int ? static_cast<void *>(&intAnswer) : static_cast<void *>(&answer);
        if (!method.invoke(receiver, Qt::DirectConnection, QGenericReturnArgument(method.typeName(), storage),
                           QGenericArgument(parameter.name(), &argument)))
            break;
        return returnType == QMetaType::Int ? intAnswer : answer;
    }
    throw VeltoException(VeltoInvalidArgumentException,
                         u"-[%1 %2]: unrecognized selector sent to instance 0x%3"_s
                             .arg(QLatin1StringView(receiverClass->className()), QLatin1StringView(selector))
                             .arg(quintptr(receiver), 0, 16));
}

} // namespace velto::internal
