#include "engine/DoneAction.h"
#include "mapping/SpecialAction.h"
#include "tests/support/main/Main.h"
#include "tests/support/script/EngineRig.h"

#include <QTest>
#include <QVector>

#include <utility>

namespace
{

using Event = DoneAction::Event;

/// The engine, and what it tells.
class Rig : public EngineRig
{
    Q_DISABLE_COPY_MOVE(Rig)

public:
    Rig()
    {
        QObject::connect(dispatcher.get(), &EventDispatcher::acted, dispatcher.get(),
                         [this](const DoneAction &done) { m_told.append(done); });
    }

    void makeSpecial(int button, SpecialAction code)
    {
        shortCut action;
        action.key1 = SPECIAL_ACTION;
        action.key2 = static_cast<qint32>(code);
        dispatcher->setAction(button, Layer::Normal, action);
    }

    QVector<DoneAction> take() { return std::exchange(m_told, {}); }

    QVector<Event> takeEvents()
    {
        QVector<Event> events;
        for (const DoneAction &done : take()) {
            events.append(done.event);
        }
        return events;
    }

private:
    QVector<DoneAction> m_told;
};

} // namespace

/// What the page is told of what the controls have done.
class tst_ToldActions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachEventOfTheKnobIsToldAsWhatItIs();
    void aButtonIsToldWithItsLayer();
    void nothingIsToldInTheGameAndAllAgainBehindIt();
};

void tst_ToldActions::eachEventOfTheKnobIsToldAsWhatItIs()
{
    Rig rig;
    for (const char type : {'D', 'L', 'R', 'S', '+', 'U'}) {
        rig.dispatcher->onKnobevent(type);
    }
    const QVector<DoneAction> told = rig.take();
    QCOMPARE(told.size(), 4); // a knob that stands or sends what is none has done nothing
    const Event expected[] = {Event::Touch, Event::TurnLeft, Event::TurnRight, Event::LetGo};
    for (int i = 0; i < told.size(); ++i) {
        QCOMPARE(told[i].event, expected[i]);
        QCOMPARE(told[i].control, DoneAction::knob);
        QCOMPARE(told[i].mode, KnobMode::Circular);
    }
}

void tst_ToldActions::aButtonIsToldWithItsLayer()
{
    Rig rig;
    rig.makeSpecial(2, SpecialAction::Shift1);
    rig.dispatcher->onButtonpress(2, true);
    rig.take();
    rig.dispatcher->onButtonpress(7, true);
    rig.dispatcher->onButtonpress(7, false);
    const QVector<DoneAction> told = rig.take();
    QCOMPARE(told.size(), 2);
    QCOMPARE(told[0].event, Event::Press);
    QCOMPARE(told[1].event, Event::Release);
    for (const DoneAction &done : told) {
        QCOMPARE(done.control, 7);
        QCOMPARE(done.layer, Layer::Shift1);
    }
}

void tst_ToldActions::nothingIsToldInTheGameAndAllAgainBehindIt()
{
    Rig rig;
    rig.makeSpecial(0, SpecialAction::Horizontal);
    rig.makeSpecial(1, SpecialAction::Vertical);
    rig.makeSpecial(2, SpecialAction::Circular);
    for (const int button : {0, 1, 2}) {
        rig.dispatcher->onButtonpress(button, true);
    }
    for (const int button : {0, 1, 2}) {
        rig.dispatcher->onButtonpress(button, false);
    }
    QVERIFY(rig.dispatcher->isGameOn());
    rig.take();
    rig.dispatcher->onKnobevent('D');
    rig.dispatcher->onKnobevent('L');
    rig.dispatcher->onKnobevent('U');
    QVERIFY(rig.take().isEmpty());

    rig.recorder.takeLines();
    rig.dispatcher->leaveGame();
    QVERIFY(!rig.dispatcher->isGameOn());
    QCOMPARE(rig.recorder.takeLines(), QStringList{QStringLiteral("panel ZR")});
    rig.dispatcher->onKnobevent('D');
    rig.dispatcher->onKnobevent('L');
    rig.dispatcher->onKnobevent('U');
    QCOMPARE(rig.takeEvents(), (QVector<Event>{Event::Touch, Event::TurnLeft, Event::LetGo}));
    QCOMPARE(rig.recorder.lines().first(), QStringLiteral("left down"));
}

QTEST_GUILESS_MAIN(tst_ToldActions)
#include "tst_ToldActions.moc"
