// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The Qt side of the accessibility dispatch: an accessible interface for widgets whose class answers
// attributes through veltoAccessibilityValue_… methods, and the QAccessible factory that hands it out.

#include "veltocoregui_export.h"

#include <QAccessibleWidget>
#include <QSet>

class VELTOCOREGUI_TESTS_EXPORT VTAccessibleWidget : public QAccessibleWidget
{
public:
    /// The interface for \a widget, answering through its class's implemented attributes.
    explicit VTAccessibleWidget(QWidget *widget);

    /**
     * factory: the installed QAccessible factory: an interface for \a object when it is a widget asked for
     * under its own class name and its class implements an attribute getter (besides the role
     * description every class answers); null otherwise. Caches the class's names on first sight.
     */
    static QAccessibleInterface *factory(const QString &className, QObject *object);

    QAccessible::Role role() const override;
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text t, const QString &text) override;
    QRect rect() const override;
    QAccessible::State state() const override;
    QAccessibleInterface *parent() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;

private:
    bool answers(const QString &attribute) const { return m_implemented.contains(attribute); }
    QVariant value(const QString &attribute) const;
    QObjectList children() const;

    const QSet<QString> m_implemented;
};
