#include "app/frame/FocusFrame.h"
#include "app/frame/Look.h"
#include "tests/support/main/Main.h"

#include <QTest>

#include <memory>

class tst_FocusFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_window.reset(); }

    void showsForTheKeyboardOnly();
    void comesBackWithTheWindow();
    void followsOnlyAFrameWhenWhatHadTheFocusGoes();
    void liesOverAllOfTheButton();
    void isOfTheColourThatASheetSets();
    void isSeenOnAButtonOfItsColour();

private:
    QColor corner() const { return m_button->grab().toImage().pixelColor(m_button->width() / 2, 0); }

    std::unique_ptr<QWidget> m_window;
    QWidget *m_button = nullptr;
    QWidget *m_other = nullptr;
    FocusFrame *m_frame = nullptr;
};

void tst_FocusFrame::init()
{
    m_window = std::make_unique<QWidget>();
    m_window->resize(200, 100);
    m_window->setStyleSheet(QStringLiteral("background-color: black"));
    m_other = new QWidget(m_window.get());
    m_button = new QWidget(m_window.get());
    m_button->setGeometry(20, 20, 60, 30);
    m_button->setFocusPolicy(Qt::StrongFocus);
    m_other->setFocusPolicy(Qt::StrongFocus);
    m_frame = new FocusFrame(m_button);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_other->setFocus();
}

void tst_FocusFrame::showsForTheKeyboardOnly()
{
    for (const Qt::FocusReason reason :
         {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason}) {
        m_button->setFocus(reason);
        QVERIFY(m_frame->isVisible());
        m_other->setFocus();
        QVERIFY(!m_frame->isVisible());
    }
    for (const Qt::FocusReason reason :
         {Qt::MouseFocusReason, Qt::OtherFocusReason, Qt::ActiveWindowFocusReason}) {
        m_button->setFocus(reason);
        QVERIFY(!m_frame->isVisible());
        m_other->setFocus();
    }
}

void tst_FocusFrame::comesBackWithTheWindow()
{
    m_button->setFocus(Qt::TabFocusReason);
    QFocusEvent gone(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(m_button, &gone);
    QVERIFY(!m_frame->isVisible());
    QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(m_button, &back);
    QVERIFY(m_frame->isVisible());
}

// A page that leaves, a button that is disabled: the toolkit hands the focus on as if by Tab.
void tst_FocusFrame::followsOnlyAFrameWhenWhatHadTheFocusGoes()
{
    const auto leave = [this](bool byHiding) {
        if (byHiding) {
            m_other->hide();
        } else {
            m_other->setEnabled(false);
        }
        QVERIFY(m_button->hasFocus());
    };
    const auto comeBack = [this] {
        m_other->show();
        m_other->setEnabled(true);
        m_other->setFocus();
    };
    for (const bool byHiding : {true, false}) {
        leave(byHiding);
        QVERIFY(!m_frame->isVisible());
        comeBack();
    }
    const FocusFrame other(m_other);
    for (const bool byHiding : {true, false}) {
        m_button->setFocus(Qt::OtherFocusReason);
        m_other->setFocus(Qt::TabFocusReason);
        QVERIFY(other.isVisible());
        leave(byHiding);
        QVERIFY(m_frame->isVisible());
        comeBack();
        QVERIFY(other.isVisible()); // where it was left
        m_button->setFocus(Qt::OtherFocusReason);
        m_other->setFocus(Qt::MouseFocusReason);
        QVERIFY(!other.isVisible());
        leave(byHiding);
        QVERIFY(!m_frame->isVisible());
        comeBack();
        QVERIFY(!other.isVisible());
    }
}

void tst_FocusFrame::liesOverAllOfTheButton()
{
    m_button->resize(90, 40);
    QCOMPARE(m_frame->geometry(), m_button->rect());
    QVERIFY(m_window->childAt(m_button->geometry().center()) != m_frame); // clicks go through
}

void tst_FocusFrame::isOfTheColourThatASheetSets()
{
    m_button->setFocus(Qt::TabFocusReason);
    QVERIFY(corner().red() > 200 && corner().red() == corner().blue()); // white, more or less
    cleanup();
    init();
    m_window->setStyleSheet(Look::accented("QWidget { background-color: black } "
                                           "FocusFrame { qproperty-colour: @accent; }"));
    m_button->setFocus(Qt::TabFocusReason);
    QCOMPARE(corner(), Look::accent);
}

// The OK of a dialog, say.
void tst_FocusFrame::isSeenOnAButtonOfItsColour()
{
    m_window->setStyleSheet(Look::accented("QWidget { background-color: @accent } "
                                           "FocusFrame { qproperty-colour: @accent; }"));
    m_button->setFocus(Qt::TabFocusReason);
    const QImage drawn = m_button->grab().toImage();
    QVERIFY(drawn.pixelColor(m_button->width() / 2, 3).red() > 200); // white, more or less
    QCOMPARE(drawn.pixelColor(m_button->width() / 2, 6), drawn.pixelColor(m_button->rect().center()));
}

QTEST_MAIN(tst_FocusFrame)
#include "tst_FocusFrame.moc"
