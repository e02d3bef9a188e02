#include "app/frame/AppFonts.h"
#include "mapping/SpecialAction.h"
#include "tests/support/main/Main.h"
#include "tests/unit/app/PageInWindow.h"
#include "ui/SaveDialog.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

/// What the page shows of the device: its marks, the layer that is held, what was sent.
class tst_DeviceOnPage : public QObject, private PageInWindow
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void marksStandOverTheirControls();
    void marksFollowTheDevice();
    void marksChangeAtMostOnceAFrame();
    void marksOfAHiddenPageAreRightWhenItIsShown();
    void lostDeviceClosesTheDialogs();
    void theHeldLayerAndThePressedBoxStandOut();
    void whatWasSentIsSaidForTwoSeconds();
    void whatHasNoWordsTakesNoneAway();
    void aHiddenPageSaysNothing();
};

void tst_DeviceOnPage::marksStandOverTheirControls()
{
    makePage();
    const QPoint places[] = {{417, 338}, {392, 322}, {366, 338}, {366, 368}, {417, 368},
                             {463, 338}, {488, 338}, {513, 338}, {502, 368}, {476, 368}};
    const int pictures[] = {5, 5, 5, 7, 7, 4, 2, 3, 1, 1};
    const auto marks = m_page->findChildren<QLabel *>(QStringLiteral("controlMark"));
    QCOMPARE(marks.size(), 10);
    for (int control = 0; control < 10; ++control) {
        QCOMPARE(marks[control]->mapTo(m_page, QPoint()), places[control]);
        QCOMPARE(marks[control]->size(), QSize(20, 20));
        QCOMPARE(marks[control]->styleSheet(),
                 QStringLiteral("background-image: url(:/icons/buttonszr/%1.png)").arg(pictures[control]));
        QVERIFY(marks[control]->isHidden());
    }
    const auto *knob = m_page->findChild<QLabel *>(QStringLiteral("knobMark"));
    QCOMPARE(knob->mapTo(m_page, QPoint()), QPoint(392, 352));
    const auto *left = m_page->findChild<QLabel *>(QStringLiteral("leftArrow"));
    const auto *right = m_page->findChild<QLabel *>(QStringLiteral("rightArrow"));
    QCOMPARE(QRect(left->mapTo(m_page, QPoint()), left->size()), QRect(373, 325, 58, 39));
    QCOMPARE(QRect(right->mapTo(m_page, QPoint()), right->size()), QRect(373, 325, 58, 39));
    QCOMPARE(left->styleSheet(), QStringLiteral("background-color:rgba(0,0,0,0); "
                                                "background-image:url(:/icons/buttonszr/arrow_left.png)"));
    QCOMPARE(right->styleSheet(), QStringLiteral("background-color:rgba(0,0,0,0); "
                                                 "background-image: url(:/icons/buttonszr/arrow_right.png)"));
    QVERIFY(knob->isHidden() && left->isHidden() && right->isHidden());
}

void tst_DeviceOnPage::marksFollowTheDevice()
{
    makePage();
    const auto marks = m_page->findChildren<QLabel *>(QStringLiteral("controlMark"));
    const auto *knob = m_page->findChild<QLabel *>(QStringLiteral("knobMark"));
    const auto *left = m_page->findChild<QLabel *>(QStringLiteral("leftArrow"));
    Q_EMIT m_serial->onButtonpress(7, true);
    QVERIFY(marks[7]->isHidden()); // the action does not wait for the mark
    QTRY_VERIFY(marks[7]->isVisible());
    Q_EMIT m_serial->onKnobevent('D');
    QTRY_VERIFY(knob->isVisible());
    Q_EMIT m_serial->onKnobevent('L');
    QTRY_VERIFY(left->isVisible());
    Q_EMIT m_serial->onKnobevent('U');
    Q_EMIT m_serial->onButtonpress(7, false);
    QTRY_VERIFY(knob->isHidden() && left->isHidden() && marks[7]->isHidden());
}

// A burst of presses is shown no more often than a screen shows anything, and its end is shown.
void tst_DeviceOnPage::marksChangeAtMostOnceAFrame()
{
    makePage();
    auto *mark = m_page->findChildren<QLabel *>(QStringLiteral("controlMark")).at(7);
    struct : QObject {
        bool eventFilter(QObject *, QEvent *event) override
        {
            changes += event->type() == QEvent::Show || event->type() == QEvent::Hide ? 1 : 0;
            return false;
        }
        int changes = 0;
    } counter;
    mark->installEventFilter(&counter);
    QTest::qWait(50);
    QElapsedTimer elapsed;
    elapsed.start();
    for (int i = 0; i < 100; ++i) {
        Q_EMIT m_serial->onButtonpress(7, true);
        QCoreApplication::processEvents();
        Q_EMIT m_serial->onButtonpress(7, false);
        QCoreApplication::processEvents();
    }
    QVERIFY2(counter.changes <= elapsed.elapsed() / 16 + 1, qPrintable(QString::number(counter.changes)));
    QVERIFY(counter.changes > 0);
    Q_EMIT m_serial->onButtonpress(7, true);
    QTRY_VERIFY(mark->isVisible());
}

void tst_DeviceOnPage::marksOfAHiddenPageAreRightWhenItIsShown()
{
    makePage();
    const auto marks = m_page->findChildren<QLabel *>(QStringLiteral("controlMark"));
    Q_EMIT m_serial->onButtonpress(7, true);
    QTRY_VERIFY(marks[7]->isVisible());
    m_page->hide();
    Q_EMIT m_serial->onButtonpress(7, false);
    Q_EMIT m_serial->onButtonpress(4, true);
    m_page->show();
    QVERIFY(marks[7]->isHidden());
    QVERIFY(marks[4]->isVisible());
}

void tst_DeviceOnPage::lostDeviceClosesTheDialogs()
{
    makePage();
    auto *dialog = m_page->findChild<SaveDialog *>();
    dialog->show();
    QSignalSpy pages(m_page, &DeviceZR::displayControlPanel);
    Q_EMIT m_serial->portChange(QString());
    QVERIFY(dialog->isHidden());
    QCOMPARE(pages.size(), 1);
    QCOMPARE(pages.constFirst().constFirst().toString(), QString());
}

void tst_DeviceOnPage::theHeldLayerAndThePressedBoxStandOut()
{
    makePage();
    shortCut shift;
    shift.key1 = SPECIAL_ACTION;
    shift.key2 = static_cast<int>(SpecialAction::Shift1);
    for (const Layer layer : Layers::all) {
        m_rig->mappings.assign(3, layer, shift);
    }
    shortCut named;
    named.key1 = 65;
    named.label = QStringLiteral("WWWWW");
    m_rig->mappings.assign(6, Layer::Shift1, named);
    const auto *outline = menu(3)->findChild<QWidget *>(QStringLiteral("pressed"));
    const QImage before = menu(6)->grab().toImage();
    QVERIFY(!outline->isVisible());
    Q_EMIT m_serial->onButtonpress(3, true);
    QVERIFY(!outline->isVisible()); // not before what was done
    QTRY_VERIFY(outline->isVisible());
    QTRY_VERIFY(menu(6)->grab().toImage() != before);
    QVERIFY(!menu(6)->findChild<QWidget *>(QStringLiteral("pressed"))->isVisible());
    Q_EMIT m_serial->onButtonpress(3, false);
    QTRY_VERIFY(!outline->isVisible());
    QTRY_COMPARE(menu(6)->grab().toImage(), before);
}

void tst_DeviceOnPage::whatWasSentIsSaidForTwoSeconds()
{
    makePage();
    m_rig->mappings.assign(3, Layer::Normal, shortCut{17, 16, 'S', QStringLiteral("Save")});
    const auto *line = m_page->findChild<QLabel *>(QStringLiteral("sent"));
    QVERIFY(line->isHidden());
    press(3);
    QTRY_VERIFY(line->isVisible());
    QCOMPARE(line->text(), QString::fromUtf8("3 \u00b7 Ctrl + Shift + S"));
    for (const QWidget *widget : m_page->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (widget != line && widget->geometry() != m_page->rect() && !widget->isHidden()) {
            QVERIFY2(!widget->geometry().intersects(line->geometry()), widget->metaObject()->className());
        }
    }
    QTRY_VERIFY_WITH_TIMEOUT(line->isHidden(), 4000);
}

void tst_DeviceOnPage::whatHasNoWordsTakesNoneAway()
{
    makePage();
    m_rig->mappings.assign(3, Layer::Normal, shortCut{17, 16, 'S', QStringLiteral("Save")});
    shortCut arrows;
    arrows.key1 = SPECIAL_ACTION;
    arrows.key2 = static_cast<qint32>(SpecialAction::UpDownKeys);
    m_rig->mappings.assign(4, Layer::Normal, arrows);
    press(4);
    const auto *line = m_page->findChild<QLabel *>(QStringLiteral("sent"));
    QTRY_VERIFY(line->text().startsWith(QLatin1String("4 ")));
    press(3); // and, before it is shown, a hand on the knob
    Q_EMIT m_serial->onKnobevent('D');
    QTRY_COMPARE(line->text(), QString::fromUtf8("3 \u00b7 Ctrl + Shift + S"));
    Q_EMIT m_serial->onKnobevent('U');
}

void tst_DeviceOnPage::aHiddenPageSaysNothing()
{
    makePage();
    m_window->hide();
    press(3);
    QTest::qWait(100);
    m_window->show();
    QVERIFY(m_page->findChild<QLabel *>(QStringLiteral("sent"))->isHidden());
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    AppFonts::load();
    tst_DeviceOnPage test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_DeviceOnPage.moc"
