#include "app/frame/ZRDialog.h"
#include "tests/support/main/Main.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

class tst_ZRDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasTwoButtonsOrOne();
    void aButtonHidesTheDialogAndThenReportsItself();
    void escapeIsTheSecondButtonWhereThereIsOne();
    void escapeWithoutASecondButtonDoesNothing();
    void closingItDoesNotEndTheProgram();
    void stylesAreThoseOfTheFrame();
    void itsTitleMovesIt();
};

void tst_ZRDialog::hasTwoButtonsOrOne()
{
    const ZRDialog two(QStringLiteral("Question"), QStringLiteral("OK"), QStringLiteral("Cancel"));
    QCOMPARE(two.findChildren<QPushButton *>().size(), 2);
    const ZRDialog one(QStringLiteral("Message"), QStringLiteral("OK"), QString());
    QCOMPARE(one.findChildren<QPushButton *>().size(), 1);
    QCOMPARE(one.findChild<QLabel *>(QStringLiteral("title"))->text(), QStringLiteral("Veltrix"));
    QCOMPARE(one.findChild<QLabel *>(QStringLiteral("message"))->text(), QStringLiteral("Message"));
}

void tst_ZRDialog::aButtonHidesTheDialogAndThenReportsItself()
{
    ZRDialog dialog(QStringLiteral("Question"), QStringLiteral("OK"), QStringLiteral("Cancel"));
    dialog.show();
    QStringList order;
    connect(&dialog, &ZRDialog::onButton1Pressed, this,
            [&] { order << (dialog.isVisible() ? QStringLiteral("visible") : QStringLiteral("hidden")); });
    QTest::mouseClick(dialog.findChildren<QPushButton *>().at(0), Qt::LeftButton);
    QCOMPARE(order, QStringList{QStringLiteral("hidden")});

    dialog.show();
    QSignalSpy second(&dialog, &ZRDialog::onButton2Pressed);
    QTest::mouseClick(dialog.findChildren<QPushButton *>().at(1), Qt::LeftButton);
    QCOMPARE(second.size(), 1);
    QVERIFY(!dialog.isVisible());
}

void tst_ZRDialog::escapeIsTheSecondButtonWhereThereIsOne()
{
    ZRDialog dialog(QStringLiteral("Question"), QStringLiteral("OK"), QStringLiteral("Cancel"));
    dialog.show();
    QSignalSpy second(&dialog, &ZRDialog::onButton2Pressed);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(second.size(), 1);
    QVERIFY(!dialog.isVisible());
}

void tst_ZRDialog::escapeWithoutASecondButtonDoesNothing()
{
    ZRDialog dialog(QStringLiteral("Message"), QStringLiteral("OK"), QString());
    dialog.show();
    QSignalSpy first(&dialog, &ZRDialog::onButton1Pressed);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(dialog.isVisible());
    QCOMPARE(first.size(), 0);
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(first.size(), 1);
}

void tst_ZRDialog::closingItDoesNotEndTheProgram()
{
    const ZRDialog dialog(QStringLiteral("Message"), QStringLiteral("OK"), QString());
    QVERIFY(!dialog.testAttribute(Qt::WA_QuitOnClose));
}

void tst_ZRDialog::stylesAreThoseOfTheFrame()
{
    const ZRDialog dialog(QStringLiteral("Message"), QStringLiteral("OK"), QString());
    QCOMPARE(dialog.styleSheet(), QStringLiteral("background-color: #ffffff;"));
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("message"))->styleSheet(),
             QStringLiteral("QLabel {color: #2d2d2d; background-color: #f9f9f9; border: 1px solid #eaeaea;"
                            "border-radius: 2px;}"));
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("title"))->styleSheet(),
             QStringLiteral("QLabel { color: #2d2d2d;}"));
    QCOMPARE(
        dialog.findChild<QPushButton *>()->styleSheet(),
        QStringLiteral(
            "QPushButton {background-color: #5342d9;border: 1px #5342d9;border-radius: 2px;color: #ffffff;}"
            "QPushButton:focus:pressed {background-color: #313f94;border: 1px #313f94;border-radius: 2px;"
            "color: #ffffff;}QPushButton:disabled {background-color: #7489e5;border: 1px #7489e5;"
            "border-radius: 2px;color: #ffffff;}QPushButton:hover {background-color: #3549c6;"
            "border: 1px #3549c6;border-radius: 2px;color: #ffffff;}"));
}

void tst_ZRDialog::itsTitleMovesIt()
{
    ZRDialog dialog(QStringLiteral("Message"), QStringLiteral("OK"), QString());
    dialog.show();
    const QPoint before = dialog.pos();
    auto *title = dialog.findChild<QLabel *>(QStringLiteral("title"));
    const QPoint start = title->mapToGlobal(title->rect().center());
    QTest::mousePress(title, Qt::LeftButton);
    QMouseEvent move(QEvent::MouseMove, title->rect().center() + QPoint(40, 30), start + QPoint(40, 30),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(title, &move);
    QTest::mouseRelease(title, Qt::LeftButton);
    QCOMPARE(dialog.pos(), before + QPoint(40, 30));

    auto *message = dialog.findChild<QLabel *>(QStringLiteral("message"));
    QTest::mousePress(message, Qt::LeftButton);
    QMouseEvent on(QEvent::MouseMove, message->rect().center() + QPoint(40, 30),
                   message->mapToGlobal(message->rect().center()) + QPoint(40, 30), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(message, &on);
    QCOMPARE(dialog.pos(), before + QPoint(40, 30));
}

QTEST_MAIN(tst_ZRDialog)
#include "tst_ZRDialog.moc"
