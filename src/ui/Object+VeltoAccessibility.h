// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Object+VeltoAccessibility.h
 * \brief The accessibility dispatch: an object answers accessibility attributes through plain methods
 * named after them (VeltoAccessibilityAttributeInfo.h) instead of one switch per class.
 *
 * These functions are the dispatch; VeltoCoreGui also installs a QAccessible factory (when the
 * application object is made) that answers Qt's accessibility queries through them for every widget
 * whose class has at least one attribute getter besides the role description:
 *
 * | Qt asks | answered by |
 * |---|---|
 * | role() | "AXRole" (a QAccessible::Role) |
 * | text(Name), text(Description), text(Value) and setText() of them | "AXTitle", "AXDescription", "AXValue" |
 * | rect() | "AXPosition" and "AXSize" (screen coordinates) |
 * | parent(), childCount(), child(), indexOfChild() | "AXParent" (a QObject), "AXChildren" (a list of QObjects) |
 * | state().expandable, expanded | "AXDisclosing" |
 * | state().editable | whether "AXValue" is settable |
 *
 * What a class does not answer is left to QAccessibleWidget. Attributes without a Qt query (rows,
 * columns, sort direction, …) are read with veltoAccessibilityImpl_valueForAttribute().
 *
 * \code
 * class Gauge : public QWidget {
 *     Q_OBJECT
 * public:
 *     Q_INVOKABLE int veltoAccessibilityValue_role() const { return QAccessible::ProgressBar; }
 *     Q_INVOKABLE QString veltoAccessibilityValue_title() const { return tr("Words"); }
 *     Q_INVOKABLE QString veltoAccessibilityValue_value() const { return QString::number(m_words); }
 * };
 * \endcode
 *
 * Main thread only, like Qt's accessibility calls.
 */

#include "VeltoAccessibilityClassInfo.h"
#include "veltocoregui_export.h"

#include <QVariant>

#include <optional>

class QObject;

namespace velto {

/// veltoAccessibilityInfo: \a metaObject's own class record, made empty on first request and kept for the process.
[[nodiscard]] VELTOCOREGUI_EXPORT VeltoAccessibilityClassInfo &veltoAccessibilityInfo(const QMetaObject *metaObject);

/// veltoAccessibilityImpl_cachedAttributeNames: the allAccessibilityAttributes() of \a object's class; empty until cached.
[[nodiscard]] VELTOCOREGUI_EXPORT std::optional<QStringList> veltoAccessibilityImpl_cachedAttributeNames(const QObject *object);
/// veltoAccessibilityImpl_cachedActionNames: the allAccessibilityActions() of \a object's class; empty until cached.
[[nodiscard]] VELTOCOREGUI_EXPORT std::optional<QStringList> veltoAccessibilityImpl_cachedActionNames(const QObject *object);
/**
 * veltoAccessibilityImpl_cacheAttributeNamesFromSuper: works out the attributes \a object's class
 * implements, stores them on its class record with their union with \a superNames (the names its Qt
 * base reports; the union's order is unspecified) and returns that union.
 */
VELTOCOREGUI_EXPORT QStringList veltoAccessibilityImpl_cacheAttributeNamesFromSuper(const QObject *object,
                                                                                    const QStringList &superNames);
/// veltoAccessibilityImpl_cacheActionNamesFromSuper: the same for actions.
VELTOCOREGUI_EXPORT QStringList veltoAccessibilityImpl_cacheActionNamesFromSuper(const QObject *object,
                                                                                 const QStringList &superNames);

/**
 * veltoAccessibilityImpl_valueForAttribute: \a attribute's value: its getter's result when \a object has
 * the getter, else veltoAccessibilityValueForAttribute(). Invalid for a null object.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QVariant veltoAccessibilityImpl_valueForAttribute(QObject *object, const QString &attribute);
/**
 * veltoAccessibilityImpl_getIsSettable: false, leaving \a settable untouched, when \a attribute is not in
 * the implemented set of \a object's class record (as cached); otherwise stores in \a settable (when
 * given) whether \a object has the attribute's setter, and returns true.
 */
VELTOCOREGUI_EXPORT bool veltoAccessibilityImpl_getIsSettable(const QObject *object, bool *settable, const QString &attribute);
/// veltoAccessibilityImpl_setValue: hands \a value to \a attribute's setter; false when \a object has none.
VELTOCOREGUI_EXPORT bool veltoAccessibilityImpl_setValue(QObject *object, const QVariant &value, const QString &attribute);
/// veltoAccessibilityImpl_performAction: always false: actions are not performed through the dispatch.
[[nodiscard]] VELTOCOREGUI_EXPORT bool veltoAccessibilityImpl_performAction(QObject *object, const QString &action);

/**
 * veltoAccessibilityValueForAttribute: the answer for attributes outside the table: \a object's own
 * `QVariant veltoAccessibilityValueForAttribute(QString)` method when it has one, else invalid.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QVariant veltoAccessibilityValueForAttribute(QObject *object, const QString &attribute);
/**
 * veltoAccessibilityValue_roleDescription: the standard description of \a object's role, which answers
 * "AXRoleDescription" for every class that does not answer it itself: the role ("AXRole", else the
 * role Qt's accessibility gives the object) in lower-case words ("push button" for PushButton); null
 * when there is no role.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QString veltoAccessibilityValue_roleDescription(QObject *object);

} // namespace velto
