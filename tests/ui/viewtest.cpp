// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAutosizingView.h"
#include "VeltoAutosizingWidthView.h"
#include "Widget+VeltoAdditions.h"

#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

using Attribute = VeltoLayoutAttribute;

namespace {

VeltoLayoutConstraintPtr constraint(QObject *first, Attribute firstAttribute, QObject *second = nullptr,
                                    Attribute secondAttribute = Attribute::NotAnAttribute, double constant = 0)
{
    return std::make_shared<VeltoLayoutConstraint>(
        VeltoLayoutConstraint{first, firstAttribute, VeltoLayoutRelation::Equal, second, secondAttribute, 1.0, constant});
}

QSize constrainedSize(const VeltoAutosizingView &view)
{
    const auto constant = [](const VeltoLayoutConstraintPtr &c) { return c ? int(c->constant) : -1; };
    return {constant(view.widthConstraint()), constant(view.heightConstraint())};
}

} // namespace

class ViewTest : public QObject
{
    Q_OBJECT

private slots:
    void autosizingFollowsChildren_data()
    {
        QTest::addColumn<qint64>("horizontal");
        QTest::addColumn<qint64>("vertical");
        QTest::addColumn<QList<QRect>>("children");
        QTest::addColumn<QSize>("constrained"); // -1: no constraint in that dimension

        QTest::newRow("no children") << qint64(1) << qint64(2) << QList<QRect>{} << QSize(0, 0);
        QTest::newRow("from the origin") << qint64(2) << qint64(0) << QList<QRect>{{10, 5, 50, 20}} << QSize(60, -1);
        QTest::newRow("largest size") << qint64(1) << qint64(0) << QList<QRect>{{10, 5, 50, 20}} << QSize(50, -1);
        QTest::newRow("any other mode is largest size") << qint64(7) << qint64(2) << QList<QRect>{{10, 5, 50, 20}, {0, 40, 30, 10}}
                                                        << QSize(50, 50);
        QTest::newRow("height only") << qint64(0) << qint64(1) << QList<QRect>{{10, 5, 50, 20}, {0, 40, 30, 10}} << QSize(-1, 20);
    }

    void autosizingFollowsChildren()
    {
        QFETCH(qint64, horizontal);
        QFETCH(qint64, vertical);
        QFETCH(QList<QRect>, children);
        QFETCH(QSize, constrained);
        QWidget window;
        auto *view = new VeltoAutosizingView(&window);
        view->setHorizontalAutosizingMode(VeltoAutosizingMode(horizontal));
        view->setVerticalAutosizingMode(VeltoAutosizingMode(vertical));
        for (const QRect &frame : children)
            (new QWidget(view))->setGeometry(frame);
        window.show();
        QTRY_COMPARE(constrainedSize(*view), constrained);
        if (constrained.width() >= 0)
            QCOMPARE(view->width(), constrained.width());
        if (constrained.height() >= 0)
            QCOMPARE(view->height(), constrained.height());
        QCOMPARE(velto::constraintsVelto(view).size(), qsizetype((constrained.width() >= 0) + (constrained.height() >= 0)));
    }

    void autosizingWatchesMovesAndNewChildren()
    {
        QWidget window;
        auto *strip = new VeltoAutosizingWidthView(&window);
        strip->setVerticalAutosizingMode(VeltoAutosizingMode::LargestSize);
        auto *first = new QWidget(strip);
        first->setGeometry(0, 0, 40, 30);
        window.show();
        QTRY_COMPARE(constrainedSize(*strip), QSize(40, 30));
        const VeltoLayoutConstraintPtr width = strip->widthConstraint();
        QVERIFY(width->firstItem == strip && width->firstAttribute == Attribute::Width);
        QVERIFY(!width->secondItem && width->multiplier == 0);
        first->move(25, 0);
        QTRY_COMPARE(constrainedSize(*strip), QSize(65, 30));
        QCOMPARE(strip->widthConstraint(), width); // the same constraint, a new constant
        auto *second = new QWidget(strip);
        second->setGeometry(70, 0, 10, 45);
        second->show();
        QTRY_COMPARE(constrainedSize(*strip), QSize(80, 45));
        second->resize(20, 5);
        QTRY_COMPARE(constrainedSize(*strip), QSize(90, 30));
        delete second;
        QTRY_COMPARE(constrainedSize(*strip), QSize(65, 30));
        QCOMPARE(strip->size(), QSize(65, 30));
    }

    void enclosingConstraintSearches()
    {
        QWidget window;
        auto *panel = new QWidget(&window);
        auto *view = new QWidget(panel);
        auto *label = new QWidget(panel);
        const auto viewWidth = constraint(view, Attribute::Width, nullptr, Attribute::NotAnAttribute, 80);
        const auto labelLeftOfView = constraint(label, Attribute::Right, view, Attribute::Left, 8);
        const auto viewTopToPanel = constraint(view, Attribute::Top, panel, Attribute::Top);
        const auto viewWidthLikeLabel = constraint(label, Attribute::Width, view, Attribute::Width);
        const auto unrelated = constraint(label, Attribute::Height);
        velto::addConstraintVelto(view, viewWidth);
        velto::addConstraintVelto(panel, labelLeftOfView);
        velto::addConstraintVelto(panel, unrelated);
        velto::addConstraintVelto(panel, viewTopToPanel);
        velto::addConstraintVelto(panel, viewTopToPanel);
        velto::addConstraintVelto(&window, viewWidthLikeLabel);
        using List = QList<VeltoLayoutConstraintPtr>;

        List visited;
        velto::enumerateEnclosingConstraintsVelto(view, [&](const VeltoLayoutConstraintPtr &c, bool &) { visited << c; });
        QCOMPARE(visited, (List{viewWidth, labelLeftOfView, unrelated, viewTopToPanel, viewWidthLikeLabel}));
        visited.clear();
        velto::enumerateEnclosingConstraintsVelto(view, [&](const VeltoLayoutConstraintPtr &c, bool &stop) {
            visited << c;
            stop = c == labelLeftOfView;
        });
        QCOMPARE(visited, (List{viewWidth, labelLeftOfView}));
        velto::enumerateEnclosingConstraintsVelto(nullptr, [&](const VeltoLayoutConstraintPtr &c, bool &) { visited << c; });
        QCOMPARE(visited.size(), 2);

        QCOMPARE(velto::enclosingConstraintsWithItemVelto(view, label), (List{labelLeftOfView, unrelated, viewWidthLikeLabel}));
        QCOMPARE(velto::enclosingConstraintsWithItemVelto(view, view, label), (List{labelLeftOfView, viewWidthLikeLabel}));
        QCOMPARE(velto::enclosingConstraintsWithItemVelto(label, panel, view), List{viewTopToPanel});
        QCOMPARE(velto::enclosingConstraintsWithAttributeVelto(view, Attribute::Width, nullptr),
                 (List{viewWidth, viewWidthLikeLabel}));
        QCOMPARE(velto::enclosingConstraintsWithAttributeVelto(view, Attribute::Width, label), List{viewWidthLikeLabel});
        QCOMPARE(velto::enclosingConstraintsWithAttributeVelto(view, Attribute::Width, nullptr, 1), List{viewWidth});
        bool ambiguous = false;
        QCOMPARE(velto::firstEnclosingConstraintWithAttributeVelto(view, Attribute::Width, nullptr, &ambiguous), viewWidth);
        QVERIFY(ambiguous);
        QCOMPARE(velto::firstEnclosingConstraintWithAttributeVelto(view, Attribute::Top, nullptr, &ambiguous), viewTopToPanel);
        QVERIFY(!ambiguous);
        QCOMPARE(velto::firstEnclosingConstraintWithAttributeVelto(view, Attribute::Height, nullptr, &ambiguous), nullptr);
        QCOMPARE(velto::firstUnambiguousEnclosingConstraintWithAttributeVelto(view, Attribute::Width, nullptr), viewWidth);

        QObject *other = nullptr;
        Attribute otherAttribute = Attribute::NotAnAttribute;
        QVERIFY(labelLeftOfView->hasAttributeVelto(Attribute::Left, view, &other, &otherAttribute));
        QCOMPARE(other, label);
        QCOMPARE(otherAttribute, Attribute::Right);
        QVERIFY(!labelLeftOfView->hasAttributeVelto(Attribute::Right, view));
        velto::removeConstraintVelto(panel, labelLeftOfView);
        QCOMPARE(velto::enclosingConstraintsWithItemVelto(view, label), (List{unrelated, viewWidthLikeLabel}));
    }

    void eventsGoToTheDeepestChild()
    {
        QWidget window;
        window.resize(200, 200);
        auto *back = new QPushButton(&window);
        back->setGeometry(0, 0, 100, 100);
        auto *front = new QWidget(&window);
        front->setGeometry(50, 50, 100, 100);
        auto *button = new QPushButton(front);
        button->setGeometry(10, 10, 30, 30);
        window.show();
        // A press at a point of the window, asked of (or sent to) \a view.
        const auto containing = [&](QWidget *view, QPoint at, bool send = false) {
            const QMouseEvent press(QEvent::MouseButtonPress, at, window.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
            return send ? velto::dispatchEventToSubview(view, &press) : velto::subviewContainingEvent(view, &press);
        };
        QCOMPARE(containing(&window, {65, 65}), button);
        QCOMPARE(containing(&window, {55, 55}), front); // front covers back
        QCOMPARE(containing(&window, {20, 20}), back);
        QCOMPARE(containing(&window, {190, 10}), nullptr);
        QCOMPARE(containing(front, {65, 65}), button);

        QSignalSpy pressed(button, &QPushButton::pressed); // only a press inside it, in its own coordinates
        QCOMPARE(containing(&window, {65, 65}, true), button);
        QCOMPARE(pressed.size(), 1);
        QCOMPARE(containing(&window, {190, 10}, true), &window);
        QCOMPARE(velto::dispatchEventToSubview(&window, nullptr), &window);
    }

    void snapshotsAndVisibleRect()
    {
        QWidget window;
        window.resize(100, 100);
        auto *child = new QWidget(&window);
        child->setGeometry(60, 70, 80, 80);
        QCOMPARE(velto::imageWithCachedDisplayInRectVelto(child, {0, 0, 30, 20}).size(), QSize(30, 20)); // not on screen
        window.show();
        QCOMPARE(velto::visibleContentRectVelto(child), VeltoRect(0, 0, 40, 30)); // clipped by the window
        child->hide();
        QCOMPARE(velto::visibleContentRectVelto(child), VeltoRect());
        QCOMPARE(velto::visibleContentRectVelto(nullptr), VeltoRect());
        QVERIFY(velto::imageWithCachedDisplayInRectVelto(nullptr, {0, 0, 1, 1}).isNull());
    }
};

QTEST_MAIN(ViewTest)
#include "viewtest.moc"
