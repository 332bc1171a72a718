// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Object+VeltoDispatch.h"

#include "VTInvocation_p.h"

#include <cstring>
#include <optional>

namespace {

// A result of at most 8 trivially copyable bytes, read raw, as a register would hold it.
struct RawResult
{
    QMetaType type;
    quint64 bits = 0;
};

std::optional<RawResult> callForRawResult(QObject *object, const char *selector, const QVariant &argument)
{
    if (!object)
        return std::nullopt;
    VTInvocation invocation(selector, {&argument});
    if (!invocation.bindToClassOf(object))
        return std::nullopt;
    RawResult result{invocation.method().returnMetaType()};
    const bool trivial = result.type.isValid() && result.type.sizeOf() <= qsizetype(sizeof result.bits)
        && !(result.type.flags() & (QMetaType::NeedsConstruction | QMetaType::NeedsDestruction));
    if (trivial) {
        invocation.invoke(object, &result.bits);
    } else {
        QVariant discarded(result.type);
        invocation.invoke(object, discarded.isValid() ? discarded.data() : nullptr);
        result.type = QMetaType(); // not readable as a scalar
    }
    return result;
}

template<typename T>
T numericResult(const std::optional<RawResult> &result)
{
    T value{};
    if (result && result->type.isValid())
        QMetaType::convert(result->type, &result->bits, QMetaType::fromType<T>(), &value);
    return value;
}

qint64 wordIfEightBytes(const std::optional<RawResult> &result)
{
    if (!result || !result->type.isValid() || result->type.sizeOf() != 8)
        return 0;
    qint64 word;
    std::memcpy(&word, &result->bits, sizeof word);
    return word;
}

} // namespace

namespace velto {

// A zombie answers calls by name itself (VeltoZombie); calls that reach VTInvocation are trapped there.

bool respondsToSelectorVelto(const QObject *object, const char *selector)
{
    if (const VeltoZombie *zombie = VeltoZombie::zombieForObject(object))
        return zombie->respondsToSelector(selector);
    return object && instancesRespondToSelectorVelto(object->metaObject(), selector);
}

bool instancesRespondToSelectorVelto(const QMetaObject *metaObject, const char *selector)
{
    return VTInvocation::methodIndex(metaObject, selector) >= 0;
}

int parameterCountForSelectorVelto(const QObject *object, const char *selector)
{
    if (const VeltoZombie *zombie = VeltoZombie::zombieForObject(object))
        return zombie->methodSignatureForSelector(selector);
    const int index = object ? VTInvocation::methodIndex(object->metaObject(), selector) : -1;
    return index < 0 ? -1 : object->metaObject()->method(index).parameterCount();
}

QVariant performSelectorIfResponds(QObject *object, const char *selector, const QVariant &first,
                                   const QVariant &second, const QVariant &third)
{
    if (!object)
        return {};
    if (const VeltoZombie *zombie = VeltoZombie::zombieForObject(object))
        return zombie->performSelector(selector);
    VTInvocation invocation(selector, {&first, &second, &third});
    if (!invocation.bindToClassOf(object))
        return {};
    const QMetaType returnType = invocation.method().returnMetaType();
    QVariant result;
    if (returnType == QMetaType::fromType<QVariant>()) { // the method's own QVariant, not one wrapped in another
        invocation.invoke(object, &result);
        return result;
    }
    if (returnType.isValid() && returnType.id() != QMetaType::Void)
        result = QVariant(returnType);
    invocation.invoke(object, result.isValid() ? result.data() : nullptr);
    return result;
}

bool boolForPerformSelector(QObject *object, const char *selector, const QVariant &argument)
{
    const auto result = callForRawResult(object, selector, argument);
    return result && result->type.isValid() && (result->bits & 0xff) != 0;
}

double floatForPerformSelector(QObject *object, const char *selector, const QVariant &argument)
{
    return numericResult<double>(callForRawResult(object, selector, argument));
}

qint64 intForPerformSelector(QObject *object, const char *selector, const QVariant &argument)
{
    return numericResult<qint64>(callForRawResult(object, selector, argument));
}

qint64 performSelectorWithFloat(QObject *object, const char *selector, double value)
{
    return wordIfEightBytes(callForRawResult(object, selector, QVariant(value)));
}

qint64 performSelectorWithInt(QObject *object, const char *selector, qint64 value)
{
    return wordIfEightBytes(callForRawResult(object, selector, QVariant(value)));
}

qint64 performSelectorWithBool(QObject *object, const char *selector, bool value)
{
    return wordIfEightBytes(callForRawResult(object, selector, QVariant(value)));
}

} // namespace velto
