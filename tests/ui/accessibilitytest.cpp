// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Object+VeltoAccessibility.h"
#include "VTAccessibilityTables_p.h"
#include "VTAccessibleWidget_p.h"
#include "VeltoAccessibilityAttributeInfo.h"

#include <QAccessible>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// A custom widget that is accessible through the dispatch alone.
class Gauge : public QWidget
{
    Q_OBJECT

public:
    QString title = u"Words"_s;
    bool disclosing = true;
    QList<QObject *> parts;

    Q_INVOKABLE int veltoAccessibilityValue_role() const { return QAccessible::ProgressBar; }
    Q_INVOKABLE QString veltoAccessibilityValue_title() const { return title; }
    Q_INVOKABLE void veltoAccessibilityValue_setTitle(const QString &text) { title = text; }
    Q_INVOKABLE int veltoAccessibilityValue_value() const { return 42; }
    Q_INVOKABLE void veltoAccessibilityValue_setValue(const QVariant &) {}
    Q_INVOKABLE QPoint veltoAccessibilityValue_position() const { return {300, 200}; }
    Q_INVOKABLE QList<QObject *> veltoAccessibilityValue_children() const { return parts; }
    Q_INVOKABLE bool veltoAccessibilityValue_disclosing() const { return disclosing; }
    Q_INVOKABLE void veltoAccessibilityAction_press() {}
    Q_INVOKABLE QVariant veltoAccessibilityValueForAttribute(const QString &attribute) const
    {
        return attribute == u"AXFocused"_s ? QVariant(true) : QVariant();
    }
};

class DescribedGauge : public Gauge
{
    Q_OBJECT

public:
    Q_INVOKABLE QString veltoAccessibilityValue_description() const { return u"Counts words"_s; }
};

class TitleOnly : public QWidget
{
    Q_OBJECT

public:
    Q_INVOKABLE QString veltoAccessibilityValue_title() const { return u"Only a title"_s; }
};

} // namespace

class AccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void theAttributeTableInItsOrder()
    {
        QStringList names;
        VTAccessibilityAttributesVisitAll([&](const QString &name, const QByteArray &, const QByteArray &) { names << name; });
        QCOMPARE(names, (QStringList{u"AXRole"_s, u"AXRoleDescription"_s, u"AXSubrole"_s, u"AXValue"_s, u"AXTitle"_s,
                                     u"AXDescription"_s, u"AXParent"_s, u"AXChildren"_s, u"AXPosition"_s, u"AXSize"_s,
                                     u"AXIndex"_s, u"AXRows"_s, u"AXVisibleRows"_s, u"AXSelectedRows"_s, u"AXColumns"_s,
                                     u"AXVisibleColumns"_s, u"AXSelectedColumns"_s, u"AXSortDirection"_s, u"AXDisclosing"_s,
                                     u"AXDisclosedRows"_s, u"AXDisclosedByRow"_s, u"AXDisclosureLevel"_s}));
        const auto *role = VeltoAccessibilityAttributeInfo::infoForAttribute(u"AXRole"_s);
        QCOMPARE(role->veltoGetter() + ' ' + role->veltoSetter(),
                 QByteArray("veltoAccessibilityValue_role veltoAccessibilityValue_setRole"));
        const auto *byRow = VeltoAccessibilityAttributeInfo::infoForAttribute(u"AXDisclosedByRow"_s);
        QCOMPARE(byRow->veltoGetter() + ' ' + byRow->veltoSetter(),
                 QByteArray("veltoAccessibilityValue_disclosedByRow veltoAccessibilityValue_setDisclosedByRow"));
        QCOMPARE(VeltoAccessibilityAttributeInfo::infoForAttribute(u"AXFocused"_s), nullptr);
    }

    void classInfoIsWorkedOutOncePerClass()
    {
        TitleOnly titled;
        QVERIFY(!velto::veltoAccessibilityImpl_cachedAttributeNames(&titled));
        QStringList all = velto::veltoAccessibilityImpl_cacheAttributeNamesFromSuper(&titled, {u"AXParent"_s, u"AXTitle"_s});
        all.sort(); // once each, in no particular order
        QCOMPARE(all, (QStringList{u"AXParent"_s, u"AXRoleDescription"_s, u"AXTitle"_s}));
        const VeltoAccessibilityClassInfo &info = velto::veltoAccessibilityInfo(&TitleOnly::staticMetaObject);
        QCOMPARE(info.implementedAccessibilityAttributes(), (QSet<QString>{u"AXRoleDescription"_s, u"AXTitle"_s}));
        bool settable = true;
        QVERIFY(velto::veltoAccessibilityImpl_getIsSettable(&titled, &settable, u"AXTitle"_s));
        QVERIFY(!settable); // no setter

        // A subclass has a record of its own, filled only when it is cached for the subclass.
        DescribedGauge described;
        Gauge gauge;
        velto::veltoAccessibilityImpl_cacheAttributeNamesFromSuper(&gauge, {});
        QVERIFY(!velto::veltoAccessibilityImpl_cachedAttributeNames(&described));
        velto::veltoAccessibilityImpl_cacheAttributeNamesFromSuper(&described, {});
        const auto implements = [](const QMetaObject &klass, const QString &attribute) {
            return velto::veltoAccessibilityInfo(&klass).implementedAccessibilityAttributes().contains(attribute);
        };
        QVERIFY(implements(DescribedGauge::staticMetaObject, u"AXDescription"_s));
        QVERIFY(!implements(Gauge::staticMetaObject, u"AXDescription"_s));
        QCOMPARE(velto::veltoAccessibilityImpl_cacheActionNamesFromSuper(&described, {u"SetFocus"_s}).size(), 2);
        QCOMPARE(velto::veltoAccessibilityInfo(&DescribedGauge::staticMetaObject).implementedAccessibilityActions(),
                 QSet<QString>{u"AXPress"_s});
        QVERIFY(!velto::veltoAccessibilityImpl_performAction(&described, u"AXPress"_s));
    }

    void gettersAndSettersByName()
    {
        Gauge gauge;
        TitleOnly titled;
        QPushButton button;
        velto::veltoAccessibilityImpl_cacheAttributeNamesFromSuper(&gauge, {});
        QCOMPARE(velto::veltoAccessibilityImpl_valueForAttribute(&gauge, u"AXTitle"_s), QVariant(u"Words"_s));
        QCOMPARE(velto::veltoAccessibilityImpl_valueForAttribute(&gauge, u"AXFocused"_s), QVariant(true)); // outside the table
        QCOMPARE(velto::veltoAccessibilityImpl_valueForAttribute(&titled, u"AXFocused"_s), QVariant());
        QCOMPARE(velto::veltoAccessibilityImpl_valueForAttribute(&gauge, u"AXSubrole"_s), QVariant()); // in the table, not answered
        QCOMPARE(velto::veltoAccessibilityImpl_valueForAttribute(&gauge, u"AXRoleDescription"_s), QVariant(u"progress bar"_s));
        QCOMPARE(velto::veltoAccessibilityValue_roleDescription(&button), u"button"_s);
        QCOMPARE(velto::veltoAccessibilityValue_roleDescription(nullptr), QString());

        bool settable = true;
        QVERIFY(!velto::veltoAccessibilityImpl_getIsSettable(&gauge, &settable, u"AXFocused"_s));
        QVERIFY(!velto::veltoAccessibilityImpl_getIsSettable(&gauge, &settable, u"AXSubrole"_s));
        QVERIFY(settable); // untouched
        QVERIFY(velto::veltoAccessibilityImpl_getIsSettable(&gauge, nullptr, u"AXTitle"_s));
        QVERIFY(velto::veltoAccessibilityImpl_setValue(&gauge, u"Characters"_s, u"AXTitle"_s));
        QCOMPARE(gauge.title, u"Characters"_s);
        QVERIFY(!velto::veltoAccessibilityImpl_setValue(&gauge, 1, u"AXRole"_s));
        QVERIFY(!velto::veltoAccessibilityImpl_setValue(nullptr, 1, u"AXTitle"_s));
    }

    void qtAsksThroughTheDispatch()
    {
        QWidget window;
        auto *gauge = new Gauge;
        gauge->setParent(&window);
        gauge->setGeometry(10, 10, 80, 20);
        auto *part = new TitleOnly;
        part->setParent(&window);
        gauge->parts = {part};
        auto *button = new QPushButton(u"Plain"_s, &window);
        window.show();

        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(gauge);
        QVERIFY(dynamic_cast<VTAccessibleWidget *>(accessible));
        QCOMPARE(accessible->role(), QAccessible::ProgressBar);
        QCOMPARE(accessible->text(QAccessible::Name), u"Words"_s);
        QCOMPARE(accessible->text(QAccessible::Value), u"42"_s);
        accessible->setText(QAccessible::Name, u"Lines"_s);
        QCOMPARE(gauge->title, u"Lines"_s);
        QCOMPARE(accessible->rect(), QRect(QPoint(300, 200), QSize(80, 20))); // position answered, size Qt's
        QVERIFY(accessible->state().expandable && accessible->state().expanded && accessible->state().editable);
        QCOMPARE(accessible->childCount(), 1);
        QAccessibleInterface *child = accessible->child(0);
        QVERIFY(child && child->object() == part);
        QCOMPARE(child->text(QAccessible::Name), u"Only a title"_s);
        QCOMPARE(accessible->indexOfChild(child), 0);
        QCOMPARE(child->parent()->object(), &window);

        QAccessibleInterface *plain = QAccessible::queryAccessibleInterface(button);
        QCOMPARE(plain->role(), QAccessible::Button);
        QVERIFY(!dynamic_cast<VTAccessibleWidget *>(plain)); // Qt's own, for a class without getters
    }
};

QTEST_MAIN(AccessibilityTest)
#include "accessibilitytest.moc"
