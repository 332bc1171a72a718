#include "VeltoAlertPresenter.h"
#include "VeltoMessageBoxPresenter.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>

using namespace Qt::StringLiterals;

class MessageBoxPresenterTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutAPresenterTheErrorIsLogged()
    {
        VeltoAlertPresenter::install(nullptr);
        QTest::ignoreMessage(QtWarningMsg, "*** Permission denied [NSPOSIXErrorDomain code 13]");
        VeltoAlertPresenter::show(VeltoError::posixError(13));
    }

    void installedPresenterOpensAMessageBox()
    {
        VeltoMessageBoxPresenter::installAsPresenter();
        QVERIFY(dynamic_cast<VeltoMessageBoxPresenter *>(VeltoAlertPresenter::installed().get()));
        VeltoAlertPresenter::show(VeltoError::errorWithDomain(VeltoCoreErrorDomain, 1, u"The file is damaged."_s));
        QMessageBox *box = nullptr;
        QTRY_VERIFY((box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
                    || [&] {
                           for (QWidget *widget : QApplication::topLevelWidgets())
                               if ((box = qobject_cast<QMessageBox *>(widget)) && widget->isVisible())
                                   return true;
                           return false;
                       }());
        QCOMPARE(box->text(), u"The file is damaged."_s);
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QPointer<QMessageBox> guard(box);
        box->accept();
        QTRY_VERIFY(guard.isNull()); // deletes itself when closed
        VeltoAlertPresenter::install(nullptr);
    }
};

QTEST_MAIN(MessageBoxPresenterTest)
#include "messageboxpresentertest.moc"
