// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTInvocation_p.h"

#include <QHash>

#include <cstring>
#include <mutex>

namespace {

// Per-class cache of selector -> method; misses are cached too, so they are as cheap as hits. Entries
// are never removed or moved (each is allocated on its own), so holders may keep pointers to them.
struct MethodCache
{
    std::mutex mutex;
    QHash<const QMetaObject *, QHash<QByteArray, const VTMethod *>> methods;
    const VTMethod none{};
};

MethodCache &methodCache()
{
    static MethodCache *cache = new MethodCache; // never destroyed: calls may come during exit
    return *cache;
}

bool isCallable(const QMetaMethod &method)
{
    return method.methodType() == QMetaMethod::Slot || method.methodType() == QMetaMethod::Method;
}

// The method of the most derived class named \a selector, with the most parameters: moc lists the
// shorter forms of a method with default arguments after the full one.
int resolveMethodIndex(const QMetaObject *metaObject, QByteArrayView selector)
{
    for (const QMetaObject *klass = metaObject; klass; klass = klass->superClass()) {
        int best = -1;
        for (int i = klass->methodOffset(); i < klass->methodCount(); ++i) {
            const QMetaMethod method = metaObject->method(i);
            if (isCallable(method) && method.name() == selector
                && (best < 0 || method.parameterCount() > metaObject->method(best).parameterCount()))
                best = i;
        }
        if (best >= 0)
            return best;
    }
    return -1;
}

QObject *objectIn(const QVariant *value)
{
    if (value && (value->metaType().flags() & QMetaType::PointerToQObject))
        return *static_cast<QObject *const *>(value->constData());
    return nullptr;
}

VTMethod *makeMethod(const QMetaObject *metaObject, const QByteArray &selector)
{
    auto *made = new VTMethod;
    made->name = selector;
    made->metaObject = metaObject;
    made->index = resolveMethodIndex(metaObject, selector);
    if (made->index < 0)
        return made;
    made->method = metaObject->method(made->index);
    made->parameterCount = made->method.parameterCount();
    made->callable = made->parameterCount <= int(made->parameterTypes.size());
    if (!made->callable)
        return made;
    const QMetaObject *definingClass = made->method.enclosingMetaObject();
    made->staticCall = definingClass->d.static_metacall;
    made->localIndex = made->index - definingClass->methodOffset();
    for (int i = 0; i < made->parameterCount; ++i)
        made->parameterTypes[size_t(i)] = made->method.parameterMetaType(i);
    return made;
}

} // namespace

const VTMethod &VTMethod::resolve(const QMetaObject *metaObject, const char *selector)
{
    MethodCache &cache = methodCache();
    if (!metaObject || !selector)
        return cache.none;
    // Calls by name ask for the same (class, selector) again and again: the last answer of this thread is
    // checked first, without the lock.
    thread_local const VTMethod *last = nullptr;
    if (last && last->metaObject == metaObject && std::strcmp(last->name.constData(), selector) == 0)
        return *last;
    std::lock_guard lock(cache.mutex);
    auto &forClass = cache.methods[metaObject];
    const QByteArray key = QByteArray::fromRawData(selector, qsizetype(std::strlen(selector)));
    auto found = forClass.constFind(key);
    if (found == forClass.constEnd()) {
        const QByteArray name(selector);
        found = forClass.insert(name, makeMethod(metaObject, name));
    }
    last = *found;
    return **found;
}

void VTInvocation::prepareArguments()
{
    if (!m_converted.isEmpty()) // clear() is an out-of-line call
        m_converted.clear();
    for (size_t i = 0; i < size_t(m_method->parameterCount); ++i) {
        const QMetaType type = m_method->parameterTypes[i];
        const QVariant *argument = m_arguments[i];
        if (type == QMetaType::fromType<QVariant>()) {
            m_argv[i + 1] = argument ? const_cast<QVariant *>(argument) : &m_converted.emplace_back();
        } else if (type.flags() & QMetaType::PointerToQObject) {
            QObject *object = objectIn(argument);
            if (object && type.metaObject() && !object->metaObject()->inherits(type.metaObject()))
                object = nullptr;
            m_objectArguments[i] = object;
            m_argv[i + 1] = &m_objectArguments[i];
        } else if (argument && argument->metaType() == type) {
            m_argv[i + 1] = const_cast<void *>(argument->constData());
        } else {
            QVariant &converted = m_converted.emplace_back(type);
            if (argument && argument->isValid())
                QMetaType::convert(argument->metaType(), argument->constData(), type, converted.data());
            m_argv[i + 1] = converted.data();
        }
    }
}
