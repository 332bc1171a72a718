// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "MessageBox+VeltoAdditions.h"
#include "VeltoDocument.h"
#include "VeltoWindowController.h"
#include "Widget+VeltoSheets.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QString numberedLines(int count)
{
    QStringList lines;
    for (int line = 1; line <= count; ++line)
        lines << u"Line %1 of a report that explains, at some length, why the file could not be saved."_s.arg(line);
    return lines.join(u'\n');
}

// The frame height a message box takes when shown after showing each pair of texts in turn: a
// QMessageBox lays itself out differently depending on what it showed before, so a box must go
// through the same texts to be measured the same way.
double heightAfter(const QList<std::pair<QString, QString>> &texts)
{
    QMessageBox box(QMessageBox::Warning, u"Alert"_s, QString(), QMessageBox::Ok);
    box.setAttribute(Qt::WA_DontShowOnScreen);
    double height = 0;
    for (const auto &[text, informative] : texts) {
        box.setText(text);
        box.setInformativeText(informative);
        box.show();
        height = box.frameGeometry().height();
        box.hide();
    }
    return height;
}

// The texts of each round of shortening, from the originals (round 0) to round \a rounds.
QList<std::pair<QString, QString>> roundsOf(QString text, QString informative, int rounds)
{
    QList<std::pair<QString, QString>> texts{{text, informative}};
    for (int round = 0; round < rounds; ++round) {
        text = VeltoFixTooLongString(text);
        informative = VeltoFixTooLongString(informative);
        texts.append({text, informative});
    }
    return texts;
}

// How many rounds turned the originals into the final texts; -1 when none did.
int roundsTaken(const QString &text, const QString &informative, const QString &finalText, const QString &finalInformative)
{
    for (int rounds = 0; rounds < 64; ++rounds) {
        if (roundsOf(text, informative, rounds).constLast() == std::pair(finalText, finalInformative))
            return rounds;
    }
    return -1;
}

class Controller : public VeltoWindowController
{
public:
    Controller(QWidget *window, VeltoDocument *document) : m_window(window), m_document(document) { attachWindow(window); }
    bool isWindowLoaded() const override { return true; }
    QObject *window() override { return m_window; }
    VeltoDocument *document() const override { return m_document; }

private:
    QWidget *m_window;
    VeltoDocument *m_document;
};

class Document : public VeltoDocument
{
public:
    QList<VeltoWindowController *> windowControllers() const override { return m_controllers; }
    QObject *windowForSheet() const override { return m_sheetWindow; }
    QList<VeltoWindowController *> m_controllers;
    QObject *m_sheetWindow = nullptr;
};

} // namespace

class AlertTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fixTooLongString_data();
    void fixTooLongString();
    void maximumHeightOnScreens();
    void longAlertsAreShortenedJustEnough_data();
    void longAlertsAreShortenedJustEnough();
    void anAlertThatCannotFitStopsShortening();
    void modalForms();
    void sheetForm();
    void buttonsByReturnCode();
    void windowForSheetLookups();
    void drawAShortenedAlert();
};

void AlertTest::initTestCase()
{
    QCOMPARE(QGuiApplication::primaryScreen()->geometry().height(), 900);
    QCOMPARE(QGuiApplication::screens().size(), 2);
}

void AlertTest::fixTooLongString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fixed");

    const QString long299 = QString(299, u'a');
    QTest::newRow("299 units on one line") << long299 << long299;
    QTest::newRow("300 units") << QString(150, u'b') + QString(150, u'c') << QString(150, u'b') + u"..."_s;
    QTest::newRow("three lines") << u"one\ntwo\nthree"_s << u"one\ntwo\nthree"_s;
    QTest::newRow("four short lines") << u"1\n2\n3\n4"_s << u"..."_s;
    QTest::newRow("four lines") << u"line1\nline2\nline3\nline4"_s << u"line1\nline2"_s + u"..."_s;
    QTest::newRow("301 units, odd") << QString(301, u'd') << QString(150, u'd') + u"..."_s;
    QTest::newRow("a pair at the cut") << QString(149, u'e') + u"😀"_s + QString(149, u'f') << QString(149, u'e') + u"..."_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("carriage returns are not lines") << u"a\rb\rc\rd"_s << u"a\rb\rc\rd"_s;
}

void AlertTest::fixTooLongString()
{
    QFETCH(QString, text);
    QFETCH(QString, fixed);
    QCOMPARE(VeltoFixTooLongString(text), fixed);
}

void AlertTest::maximumHeightOnScreens()
{
    QCOMPARE(velto::maximumHeightForAlertOnScreen(QGuiApplication::screens().at(0)), 715.0);
    QCOMPARE(velto::maximumHeightForAlertOnScreen(QGuiApplication::screens().at(1)), 415.0);
    QCOMPARE(velto::maximumHeightForAlertOnScreen(nullptr), -185.0);
}

void AlertTest::longAlertsAreShortenedJustEnough_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("informative");

    QTest::newRow("fits as it is") << u"The document could not be saved."_s << u"The disk is full."_s;
    QTest::newRow("a long message") << numberedLines(60) << u"Try again later."_s;
    QTest::newRow("a long explanation") << u"The document could not be saved."_s << numberedLines(90);
    QTest::newRow("both long") << numberedLines(45) << numberedLines(45);
    QTest::newRow("one huge line") << QString(40000, u'x') << QString();
}

void AlertTest::longAlertsAreShortenedJustEnough()
{
    QFETCH(QString, text);
    QFETCH(QString, informative);
    QMessageBox alert(QMessageBox::Warning, u"Alert"_s, text, QMessageBox::Ok);
    alert.setInformativeText(informative);
    velto::ensureAlertFitsOnScreenVelto(alert);
    QVERIFY(!alert.isVisible());
    const double maximum = 715.0;
    // Both texts went through the same rounds, and one round fewer would not have fitted.
    const int rounds = roundsTaken(text, informative, alert.text(), alert.informativeText());
    QVERIFY(rounds >= 0);
    if (rounds > 0)
        QVERIFY(heightAfter(roundsOf(text, informative, rounds - 1)) > maximum);
    // Shown later, the alert appears on screen, within the limit (the window manager's frame aside).
    alert.open();
    QVERIFY(alert.isVisible() && alert.windowHandle()->isVisible());
    QVERIFY2(alert.height() <= maximum, qPrintable(QString::number(alert.height())));
    alert.done(0);
}

void AlertTest::anAlertThatCannotFitStopsShortening()
{
    QMessageBox alert(QMessageBox::NoIcon, u"Alert"_s, numberedLines(30), QMessageBox::Ok);
    QPixmap tall(32, 2000);
    tall.fill(Qt::gray);
    alert.setIconPixmap(tall);
    velto::ensureAlertFitsOnScreenVelto(alert); // returns: the texts can shrink no further
    QCOMPARE(VeltoFixTooLongString(alert.text()), alert.text());
    QVERIFY(alert.text().endsWith(u"..."));
    QVERIFY(roundsTaken(numberedLines(30), QString(), alert.text(), QString()) > 0);
}

void AlertTest::modalForms()
{
    QMessageBox alert(QMessageBox::Question, u"Alert"_s, u"Replace the file?"_s, QMessageBox::Yes | QMessageBox::Cancel);
    QTimer::singleShot(0, &alert, [&] { alert.button(QMessageBox::Cancel)->click(); });
    QCOMPARE(velto::showModalVelto(alert), int(QMessageBox::Cancel));

    QStringList events;
    QTimer::singleShot(0, &alert, [&] { alert.button(QMessageBox::Yes)->click(); });
    velto::showWithWindowVelto(&alert, nullptr, [&](qint64 code) { events << u"block %1"_s.arg(code); });
    events << u"returned"_s;
    QCOMPARE(events, (QStringList{u"block %1"_s.arg(int(QMessageBox::Yes)), u"returned"_s}));
}

void AlertTest::sheetForm()
{
    QWidget window;
    window.show();
    auto *alert = new QMessageBox(QMessageBox::Warning, u"Alert"_s, numberedLines(80), QMessageBox::Ok | QMessageBox::Cancel);
    QList<qint64> codes;
    velto::showWithWindowVelto(alert, &window, [&](qint64 code) {
        codes << code;
        alert->deleteLater();
    });
    QVERIFY(codes.isEmpty()); // returned before the block
    QVERIFY(alert->isVisible());
    QCOMPARE(alert->parentWidget(), &window);
    QCOMPARE(alert->windowModality(), Qt::WindowModal);
    QVERIFY(alert->text().endsWith(u"..."));
    QVERIFY(alert->height() <= 715);
    QPointer<QMessageBox> guard(alert);
    alert->button(QMessageBox::Ok)->click();
    QCOMPARE(codes, QList<qint64>{QMessageBox::Ok});
    QTRY_VERIFY(guard.isNull());
    QCOMPARE(codes, QList<qint64>{QMessageBox::Ok});
}

void AlertTest::buttonsByReturnCode()
{
    QMessageBox alert(QMessageBox::Question, u"Alert"_s, u"Keep both?"_s);
    QAbstractButton *keep = alert.addButton(u"Keep Both"_s, QMessageBox::AcceptRole);
    QAbstractButton *ok = alert.addButton(QMessageBox::Ok);
    QAbstractButton *stop = alert.addButton(u"Stop"_s, QMessageBox::RejectRole);
    // Each button's code is the one exec() reports when it is chosen.
    for (QAbstractButton *button : {keep, ok, stop}) {
        QTimer::singleShot(0, button, [button] { button->click(); });
        const int code = alert.exec();
        QCOMPARE(velto::buttonWithReturnCodeVelto(alert, code), button);
    }
    QCOMPARE(velto::buttonWithReturnCodeVelto(alert, QMessageBox::Ok), ok);
    QVERIFY(!velto::buttonWithReturnCodeVelto(alert, QMessageBox::Cancel));
    QVERIFY(!velto::buttonWithReturnCodeVelto(alert, 7));
}

void AlertTest::windowForSheetLookups()
{
    QWidget window;
    auto *view = new QPushButton(u"Save"_s, &window);
    QCOMPARE(velto::windowForSheet(view), &window);
    QCOMPARE(velto::windowForSheet(&window), &window);
    QVERIFY(!velto::windowForSheet(static_cast<QWidget *>(nullptr)));
    QVERIFY(!velto::windowForSheet(static_cast<VeltoWindowController *>(nullptr)));

    // A window whose controller shows a document that wants its sheets on its main window.
    QWidget mainWindow;
    Document document;
    Controller controller(&window, &document);
    document.m_controllers = {&controller};
    QCOMPARE(velto::windowForSheet(&controller), &window); // the document names no window yet
    QCOMPARE(velto::windowForSheet(view), &window);
    document.m_sheetWindow = &mainWindow;
    QCOMPARE(velto::windowForSheet(&controller), &mainWindow);
    QCOMPARE(velto::windowForSheet(view), &mainWindow);
    // A controller without a document answers with its own window.
    QWidget other;
    Controller alone(&other, nullptr);
    QCOMPARE(velto::windowForSheet(&alone), &other);
}

void AlertTest::drawAShortenedAlert()
{
    // The same alert before and after shortening, side by side, with the limit of the primary screen
    // drawn as a red line: the picture in docs/images.
    const QString message = u"The document “Quarterly Report” could not be saved.\n"_s + numberedLines(44);
    const QString explanation = u"Check that the disk is connected and has room, then try again. "_s.repeated(20);
    QMessageBox before(QMessageBox::Warning, u"Alert"_s, message, QMessageBox::Ok | QMessageBox::Cancel);
    before.setInformativeText(explanation);
    before.setAttribute(Qt::WA_DontShowOnScreen);
    before.show();
    QMessageBox after(QMessageBox::Warning, u"Alert"_s, message, QMessageBox::Ok | QMessageBox::Cancel);
    after.setInformativeText(explanation);
    velto::ensureAlertFitsOnScreenVelto(after);
    after.setAttribute(Qt::WA_DontShowOnScreen);
    after.show();
    const QImage original = before.grab().toImage();
    const QImage shortened = after.grab().toImage();
    QVERIFY(original.height() > 715);
    QVERIFY(shortened.height() <= 715);
    QVERIFY(shortened.height() > 400); // shortened just enough, not to nothing

    QImage picture(original.width() + shortened.width() + 60, original.height() + 40, QImage::Format_ARGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.drawImage(20, 20, original);
    painter.drawImage(original.width() + 40, 20, shortened);
    painter.setPen(Qt::darkGray); // the alerts' edges, which the reduced palette may lose
    painter.drawRect(QRect(QPoint(20, 20), original.size()).adjusted(-1, -1, 0, 0));
    painter.drawRect(QRect(QPoint(original.width() + 40, 20), shortened.size()).adjusted(-1, -1, 0, 0));
    painter.setPen(QPen(Qt::red, 2, Qt::DashLine));
    painter.drawLine(0, 20 + 715, picture.width(), 20 + 715);
    painter.end();
    if (qEnvironmentVariableIntValue("VELTO_WRITE_IMAGES") == 1) {
        QVERIFY(QDir().mkpath(QStringLiteral(VELTO_IMAGES_DIR)));
        // A palette of grays and the red line is all the picture needs, and keeps the file small.
        const QImage indexed = picture.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither | Qt::AvoidDither);
        QVERIFY(indexed.save(QStringLiteral(VELTO_IMAGES_DIR "/shortened-alert.png"), "PNG", 0));
    }
}

int main(int argc, char *argv[])
{
    // Two screens of known sizes: 900 points high (the primary) and 600.
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" VELTO_TEST_DATA_DIR "/alertscreens.json");
    QApplication application(argc, argv);
    AlertTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "alerttest.moc"
