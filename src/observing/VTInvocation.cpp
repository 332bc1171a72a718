#include "VTInvocation_p.h"

#include <QHash>

#include <cstring>
#include <mutex>

namespace {

// Per-class cache of selector -> method index; -1 is cached too, so misses are as cheap as hits.
struct MethodCache
{
    std::mutex mutex;
    QHash<const QMetaObject *, QHash<QByteArray, int>> indexes;
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

QObject *objectIn(const QVariant &value)
{
    if (value.metaType().flags() & QMetaType::PointerToQObject)
        return *static_cast<QObject *const *>(value.constData());
    return nullptr;
}

} // namespace

VTInvocation::VTInvocation(const char *selector, const QVariant &first, const QVariant &second,
                           const QVariant &third)
    : m_selector(selector), m_arguments{&first, &second, &third}
{
}

int VTInvocation::methodIndex(const QMetaObject *metaObject, const char *selector)
{
    if (!metaObject || !selector)
        return -1;
    // Broadcasts ask for the same (class, selector) again and again: the last answer of this thread is
    // checked first, without the lock.
    struct LastLookup
    {
        const QMetaObject *metaObject = nullptr;
        QByteArray selector;
        int index = -1;
    };
    thread_local LastLookup last;
    if (last.metaObject == metaObject && std::strcmp(last.selector.constData(), selector) == 0)
        return last.index;
    MethodCache &cache = methodCache();
    std::lock_guard lock(cache.mutex);
    auto &forClass = cache.indexes[metaObject];
    const QByteArray key = QByteArray::fromRawData(selector, qsizetype(std::strlen(selector)));
    if (auto found = forClass.constFind(key); found != forClass.constEnd()) {
        last = {metaObject, found.key(), *found};
        return *found;
    }
    const int index = resolveMethodIndex(metaObject, key);
    forClass.insert(QByteArray(selector), index);
    last = {metaObject, QByteArray(selector), index};
    return index;
}

bool VTInvocation::bindToClassOf(const QObject *target)
{
    const QMetaObject *klass = target->metaObject();
    if (klass == m_boundClass)
        return m_bound;
    m_boundClass = klass;
    m_methodIndex = methodIndex(klass, m_selector);
    if (m_methodIndex < 0)
        return m_bound = false;
    m_method = klass->method(m_methodIndex);
    m_bound = m_method.parameterCount() <= 3;
    if (!m_bound)
        return false;
    const QMetaObject *definingClass = m_method.enclosingMetaObject();
    m_staticCall = definingClass->d.static_metacall;
    m_localIndex = m_methodIndex - definingClass->methodOffset();
    for (int i = 0; i < m_method.parameterCount(); ++i) {
        const QMetaType type = m_method.parameterMetaType(i);
        const QVariant &argument = *m_arguments[size_t(i)];
        if (type == QMetaType::fromType<QVariant>()) {
            m_argv[size_t(i) + 1] = const_cast<QVariant *>(&argument);
        } else if (type.flags() & QMetaType::PointerToQObject) {
            QObject *object = objectIn(argument);
            if (object && type.metaObject() && !object->metaObject()->inherits(type.metaObject()))
                object = nullptr;
            m_objectArguments[size_t(i)] = object;
            m_argv[size_t(i) + 1] = &m_objectArguments[size_t(i)];
        } else if (argument.metaType() == type) {
            m_argv[size_t(i) + 1] = const_cast<void *>(argument.constData());
        } else {
            m_converted[size_t(i)] = QVariant(type);
            if (argument.isValid())
                QMetaType::convert(argument.metaType(), argument.constData(), type, m_converted[size_t(i)].data());
            m_argv[size_t(i) + 1] = m_converted[size_t(i)].data();
        }
    }
    return true;
}

void VTInvocation::invoke(QObject *target, void *result)
{
    m_argv[0] = result;
    if (m_staticCall)
        m_staticCall(target, QMetaObject::InvokeMetaMethod, m_localIndex, m_argv.data());
    else
        QMetaObject::metacall(target, QMetaObject::InvokeMetaMethod, m_methodIndex, m_argv.data());
}
