#include "app/frame/ClickableLabel.h"
#include "tests/support/main/Main.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

class tst_ClickableLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isClickedByThePressOfTheMouse();
    void isClickedByTheKeyboard();
    void isAButtonForScreenReaders();
};

void tst_ClickableLabel::isClickedByThePressOfTheMouse()
{
    ClickableLabel label;
    const QSignalSpy clicks(&label, &ClickableLabel::clicked);
    QTest::mousePress(&label, Qt::LeftButton);
    QCOMPARE(clicks.size(), 1);
    QTest::mouseRelease(&label, Qt::LeftButton);
    QCOMPARE(clicks.size(), 1);
}

void tst_ClickableLabel::isClickedByTheKeyboard()
{
    ClickableLabel label;
    const QSignalSpy clicks(&label, &ClickableLabel::clicked);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(&label, key);
    }
    QCOMPARE(clicks.size(), 3);
    QTest::keyClick(&label, Qt::Key_A);
    QCOMPARE(clicks.size(), 3);
}

void tst_ClickableLabel::isAButtonForScreenReaders()
{
    ClickableLabel label;
    label.setAccessibleName(QStringLiteral("Print"));
    const QSignalSpy clicks(&label, &ClickableLabel::clicked);
    QAccessibleInterface *button = QAccessible::queryAccessibleInterface(&label);
    QCOMPARE(button->role(), QAccessible::Button);
    QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Print"));
    QVERIFY(button->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicks.size(), 0); // a click may run a dialog: the screen reader does not wait for it
    QTRY_COMPARE(clicks.size(), 1);
}

QTEST_MAIN(tst_ClickableLabel)
#include "tst_ClickableLabel.moc"
