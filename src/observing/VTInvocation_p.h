#pragma once

// A prepared call: a selector and up to three object arguments, bound to one class at a time. Binding
// resolves the method once (through the per-class cache) and converts the arguments to its parameter
// types once, so a run of receivers of the same class only pays for the call itself.

#include <QMetaMethod>
#include <QObject>
#include <QVariant>

#include <array>

class VTInvocation
{
public:
    VTInvocation(const char *selector, const QVariant &first = {}, const QVariant &second = {},
                 const QVariant &third = {});
    VTInvocation(const VTInvocation &) = delete;
    VTInvocation &operator=(const VTInvocation &) = delete;

    /// methodIndex: the absolute index of the method \a selector names in \a metaObject, or -1 (cached).
    static int methodIndex(const QMetaObject *metaObject, const char *selector);

    /// bindToClassOf: prepares the call for \a target's class (kept when the class is the same as
    /// last time); false when that class does not implement the selector or needs more than three arguments.
    bool bindToClassOf(const QObject *target);
    /// invoke: calls the bound method on \a target, writing the result into \a result (may be null).
    void invoke(QObject *target, void *result = nullptr);

    QMetaMethod method() const { return m_method; }

private:
    const char *m_selector;
    std::array<const QVariant *, 3> m_arguments;
    const QMetaObject *m_boundClass = nullptr;
    bool m_bound = false;
    int m_methodIndex = -1;
    QMetaMethod m_method;
    // The defining class's own call function and the method's index in it: the direct path that
    // QMetaMethod::invoke takes too, without walking the qt_metacall chain.
    decltype(QMetaObject::d.static_metacall) m_staticCall = nullptr;
    int m_localIndex = -1;
    std::array<void *, 4> m_argv{};
    std::array<QObject *, 3> m_objectArguments{};
    std::array<QVariant, 3> m_converted;
};
