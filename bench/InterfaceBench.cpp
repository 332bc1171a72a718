// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The interface helpers against what Qt offers for the same job: VeltoTableView's type-to-select against
// QAbstractItemView::keyboardSearch over the same model, and a text answered through the accessibility
// dispatch (a method found by name) against a hand-written QAccessibleWidget that calls it directly.

#include "BenchRatio.h"
#include "VeltoTableView.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QStandardItemModel>

using namespace Qt::StringLiterals;

namespace {

constexpr int Rows = 10'000;

void makeApplication()
{
    static int argc = 1;
    static char name[] = "InterfaceBench";
    static char *argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(argc, argv);
}

// Notes titled "Note 00000" to "Note 09999"; the searches look for the last one, so both read every row.
QStandardItemModel &notes()
{
    static QStandardItemModel *const model = [] {
        auto *made = new QStandardItemModel(Rows, 1);
        for (int row = 0; row < Rows; ++row)
            made->setItem(row, new QStandardItem(u"Note %1"_s.arg(row, 5, 10, QChar(u'0'))));
        return made;
    }();
    return *model;
}

const QString LastNote = u"note 09999"_s;

class TypingTable : public VeltoTableView
{
public:
    using VeltoTableView::VeltoTableView;
    using VeltoTableView::insertText;
};

void BM_TypeToSelect(benchmark::State &state)
{
    makeApplication();
    double now = 0; // every search starts a new prefix
    TypingTable table([&now] { return now += 2 * VeltoTableView::TypingPause; });
    table.setModel(&notes());
    for (auto _ : state) {
        table.setCurrentIndex(notes().index(0, 0));
        table.insertText(LastNote);
    }
    if (table.currentIndex().row() != Rows - 1)
        state.SkipWithError("type-to-select missed the row");
}
BENCHMARK(BM_TypeToSelect)->Unit(benchmark::kMicrosecond);

void BM_QtKeyboardSearch(benchmark::State &state)
{
    makeApplication();
    QTableView table;
    table.setModel(&notes());
    for (auto _ : state) {
        table.setCurrentIndex(notes().index(0, 0)); // Qt searches from the current row
        table.keyboardSearch(QString());             // an empty search starts a new one
        table.keyboardSearch(LastNote);
    }
    if (table.currentIndex().row() != Rows - 1)
        state.SkipWithError("keyboardSearch missed the row");
}
BENCHMARK(BM_QtKeyboardSearch)->Unit(benchmark::kMicrosecond);

class Meter : public QWidget
{
    Q_OBJECT

public:
    int words = 42;
    Q_INVOKABLE int veltoAccessibilityValue_role() const { return QAccessible::ProgressBar; }
    Q_INVOKABLE QString veltoAccessibilityValue_value() const { return QString::number(words); }
};

// What a class would write without the dispatch: its own interface with a switch.
class HandWrittenMeterAccessible : public QAccessibleWidget
{
public:
    explicit HandWrittenMeterAccessible(Meter *meter) : QAccessibleWidget(meter, QAccessible::ProgressBar) {}
    QString text(QAccessible::Text t) const override
    {
        switch (t) {
        case QAccessible::Value:
            return static_cast<Meter *>(widget())->veltoAccessibilityValue_value();
        default:
            return QAccessibleWidget::text(t);
        }
    }
};

void BM_DispatchedAccessibleText(benchmark::State &state)
{
    makeApplication();
    Meter meter;
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&meter);
    for (auto _ : state)
        benchmark::DoNotOptimize(accessible->text(QAccessible::Value));
    if (accessible->text(QAccessible::Value) != u"42"_s)
        state.SkipWithError("the dispatch gave another value");
}
BENCHMARK(BM_DispatchedAccessibleText);

void BM_HandWrittenAccessibleText(benchmark::State &state)
{
    makeApplication();
    Meter meter;
    HandWrittenMeterAccessible accessible(&meter);
    for (auto _ : state)
        benchmark::DoNotOptimize(accessible.text(QAccessible::Value));
}
BENCHMARK(BM_HandWrittenAccessibleText);

} // namespace

VELTO_BENCHMARK_RATIO("BM_TypeToSelect", "BM_QtKeyboardSearch");
VELTO_BENCHMARK_RATIO("BM_DispatchedAccessibleText", "BM_HandWrittenAccessibleText");

VELTO_BENCHMARK_MAIN()

#include "InterfaceBench.moc"
