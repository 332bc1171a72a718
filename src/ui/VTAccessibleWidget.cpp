// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTAccessibleWidget_p.h"

#include "Object+VeltoAccessibility.h"

#include <QCoreApplication>
#include <QSequentialIterable>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

// The attributes QAccessibleWidget itself answers, as the names a class's list starts from.
const QStringList &baseAttributeNames()
{
    static const QStringList names{u"AXRole"_s,     u"AXRoleDescription"_s, u"AXParent"_s, u"AXChildren"_s,
                                   u"AXPosition"_s, u"AXSize"_s,            u"AXTitle"_s,  u"AXDescription"_s};
    return names;
}

QString attributeForText(QAccessible::Text t)
{
    switch (t) {
    case QAccessible::Name:
        return u"AXTitle"_s;
    case QAccessible::Description:
        return u"AXDescription"_s;
    case QAccessible::Value:
        return u"AXValue"_s;
    default:
        return {};
    }
}

void installFactory()
{
    QAccessible::installFactory(&VTAccessibleWidget::factory);
}

} // namespace

// Every application that links the library answers through the dispatch, with nothing to call.
Q_COREAPP_STARTUP_FUNCTION(installFactory)

QAccessibleInterface *VTAccessibleWidget::factory(const QString &className, QObject *object)
{
    // Qt asks once per class up the hierarchy; the object's own class answers for all of them.
    if (!object || !object->isWidgetType() || className != QLatin1StringView(object->metaObject()->className()))
        return nullptr;
    if (!velto::veltoAccessibilityImpl_cachedAttributeNames(object)) {
        velto::veltoAccessibilityImpl_cacheAttributeNamesFromSuper(object, baseAttributeNames());
        velto::veltoAccessibilityImpl_cacheActionNamesFromSuper(object, {});
    }
    if (velto::veltoAccessibilityInfo(object->metaObject()).implementedAccessibilityAttributes().size() < 2)
        return nullptr; // only the role description every object answers
    return new VTAccessibleWidget(static_cast<QWidget *>(object));
}

VTAccessibleWidget::VTAccessibleWidget(QWidget *widget)
    : QAccessibleWidget(widget), m_implemented(velto::veltoAccessibilityInfo(widget->metaObject()).implementedAccessibilityAttributes())
{
}

QVariant VTAccessibleWidget::value(const QString &attribute) const
{
    return velto::veltoAccessibilityImpl_valueForAttribute(object(), attribute);
}

QObjectList VTAccessibleWidget::children() const
{
    QObjectList objects;
    const QVariant list = value(u"AXChildren"_s);
    if (!list.canConvert<QSequentialIterable>())
        return objects;
    for (const QVariant &element : list.value<QSequentialIterable>()) {
        if (QObject *child = element.value<QObject *>())
            objects << child;
    }
    return objects;
}

QAccessible::Role VTAccessibleWidget::role() const
{
    return answers(u"AXRole"_s) ? QAccessible::Role(value(u"AXRole"_s).toInt()) : QAccessibleWidget::role();
}

QString VTAccessibleWidget::text(QAccessible::Text t) const
{
    const QString attribute = attributeForText(t);
    return answers(attribute) ? value(attribute).toString() : QAccessibleWidget::text(t);
}

void VTAccessibleWidget::setText(QAccessible::Text t, const QString &text)
{
    if (!velto::veltoAccessibilityImpl_setValue(object(), text, attributeForText(t)))
        QAccessibleWidget::setText(t, text);
}

QRect VTAccessibleWidget::rect() const
{
    QRect frame = QAccessibleWidget::rect();
    if (answers(u"AXPosition"_s))
        frame.moveTopLeft(value(u"AXPosition"_s).toPoint());
    if (answers(u"AXSize"_s))
        frame.setSize(value(u"AXSize"_s).toSize());
    return frame;
}

QAccessible::State VTAccessibleWidget::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    if (answers(u"AXDisclosing"_s)) {
        state.expandable = true;
        state.expanded = value(u"AXDisclosing"_s).toBool();
    }
    bool settable = false;
    if (velto::veltoAccessibilityImpl_getIsSettable(object(), &settable, u"AXValue"_s) && settable)
        state.editable = true;
    return state;
}

QAccessibleInterface *VTAccessibleWidget::parent() const
{
    if (!answers(u"AXParent"_s))
        return QAccessibleWidget::parent();
    return QAccessible::queryAccessibleInterface(value(u"AXParent"_s).value<QObject *>());
}

int VTAccessibleWidget::childCount() const
{
    return answers(u"AXChildren"_s) ? int(children().size()) : QAccessibleWidget::childCount();
}

QAccessibleInterface *VTAccessibleWidget::child(int index) const
{
    if (!answers(u"AXChildren"_s))
        return QAccessibleWidget::child(index);
    return QAccessible::queryAccessibleInterface(children().value(index));
}

int VTAccessibleWidget::indexOfChild(const QAccessibleInterface *child) const
{
    if (!answers(u"AXChildren"_s))
        return QAccessibleWidget::indexOfChild(child);
    return child ? int(children().indexOf(child->object())) : -1;
}
