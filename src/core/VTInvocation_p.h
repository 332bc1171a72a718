// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// A prepared call: a selector and up to three object arguments, bound to one class at a time. Binding
// resolves the method once (through the per-class cache) and converts the arguments to its parameter
// types once, so a run of receivers of the same class only pays for the call itself.

#include "VeltoZombie.h"

#include <QByteArray>
#include <QMetaMethod>
#include <QObject>
#include <QVarLengthArray>
#include <QVariant>

#include <array>
#include <cstring>

// What a call by name needs from the receiver's class, resolved once per (class, selector) and kept by
// the method cache for the life of the process: holders keep a pointer instead of a copy.
struct VTMethod
{
    /// resolve: the method \a selector names in \a metaObject; one that is never callable for null arguments.
    static const VTMethod &resolve(const QMetaObject *metaObject, const char *selector);
    /// resolve, asking \a last first and keeping the answer there: for a caller that sends the same selector
    /// to the same class again and again (an observer set), a repeat costs two comparisons, no lookup.
    static const VTMethod &resolve(const QMetaObject *metaObject, const char *selector, const VTMethod *&last)
    {
        // The name is compared, not its address: a caller may pass another name in the same buffer.
        if (!last || last->metaObject != metaObject || !selector || std::strcmp(last->name.constData(), selector) != 0)
            last = &resolve(metaObject, selector);
        return *last;
    }

    QByteArray name;
    const QMetaObject *metaObject = nullptr; // the receiver's class it was resolved for
    int index = -1; // absolute; -1 when not implemented
    bool callable = false; // implemented, with at most three parameters
    QMetaMethod method;
    // The defining class's own call function and the method's index in it: the direct path that
    // QMetaMethod::invoke takes too, without walking the qt_metacall chain.
    decltype(QMetaObject::d.static_metacall) staticCall = nullptr;
    int localIndex = -1;
    int parameterCount = 0;
    std::array<QMetaType, 3> parameterTypes{};
};

class VTInvocation
{
public:
    /// The object arguments; a null pointer stands for none (as an invalid QVariant would).
    using Arguments = std::array<const QVariant *, 3>;

    explicit VTInvocation(const char *selector, Arguments arguments = {})
        : m_selector(selector), m_arguments(arguments)
    {
    }
    VTInvocation(const VTInvocation &) = delete;
    VTInvocation &operator=(const VTInvocation &) = delete;

    /// methodIndex: the absolute index of the method \a selector names in \a metaObject, or -1 (cached).
    static int methodIndex(const QMetaObject *metaObject, const char *selector)
    {
        return VTMethod::resolve(metaObject, selector).index;
    }

    /// bindToClassOf: prepares the call for \a target's class (kept when the class is the same as last
    /// time), asking and updating \a lastMethod when given (see VTMethod::resolve); false when that class
    /// does not implement the selector or needs more than three arguments. A zombie target throws
    /// "VeltoZombieAccessed" naming the selector.
    [[nodiscard]] bool bindToClassOf(const QObject *target, const VTMethod **lastMethod = nullptr)
    {
        if (const VeltoZombie *zombie = VeltoZombie::zombieForObject(target))
            zombie->warnAboutUsingZombieSelector(QString::fromUtf8(m_selector));
        const QMetaObject *metaObject = target->metaObject();
        if (metaObject == m_boundClass)
            return m_method->callable;
        m_boundClass = metaObject;
        return bind(lastMethod ? VTMethod::resolve(metaObject, m_selector, *lastMethod)
                               : VTMethod::resolve(metaObject, m_selector));
    }

    /// invoke: calls the bound method on \a target, writing the result into \a result (may be null).
    void invoke(QObject *target, void *result = nullptr)
    {
        m_argv[0] = result;
        if (m_method->staticCall)
            m_method->staticCall(target, QMetaObject::InvokeMetaMethod, m_method->localIndex, m_argv.data());
        else
            QMetaObject::metacall(target, QMetaObject::InvokeMetaMethod, m_method->index, m_argv.data());
    }

    QMetaMethod method() const { return m_method->method; }

private:
    [[nodiscard]] bool bind(const VTMethod &method)
    {
        m_method = &method;
        if (method.callable && method.parameterCount > 0)
            prepareArguments();
        return method.callable;
    }
    void prepareArguments();

    const char *m_selector;
    Arguments m_arguments;
    const QMetaObject *m_boundClass = nullptr;
    const VTMethod *m_method = nullptr;
    std::array<void *, 4> m_argv; // written by prepareArguments() and invoke() before use
    std::array<QObject *, 3> m_objectArguments;
    // Only made for arguments that need converting (most calls make and destroy none); never more than
    // three at a time, so they stay in place while bound.
    QVarLengthArray<QVariant, 3> m_converted;
};
