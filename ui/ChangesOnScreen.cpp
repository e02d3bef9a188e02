#include "ui/ChangesOnScreen.h"

#include "app/frame/FittingText.h"
#include "app/frame/FocusFrame.h"
#include "app/frame/Look.h"
#include "engine/EventDispatcher.h"
#include "engine/Settings.h"
#include "ui/ComboMenuEntries.h"
#include "ui/PageCheckBox.h"
#include "ui/ScreenNote.h"

#include <QApplication>

ChangesOnScreen::ChangesOnScreen(const EventDispatcher &dispatcher, Settings &settings, QWidget *page)
    : QObject(page)
    , m_dispatcher(dispatcher)
    , m_box(new PageCheckBox(page))
{
    m_box->setObjectName(QStringLiteral("showChanges"));
    m_box->setGeometry(230, 625, 200, 15);
    m_box->setFont(Look::font(Look::Face::Page, 10));
    m_box->setStyleSheet(QStringLiteral("QCheckBox { color : rgba(255,255,255,0.87); }"));
    FittingText::show(m_box, tr("Show changes on screen"),
                      tr("Shows the layer and what the knob does for a moment, while you work elsewhere"));
    new FocusFrame(m_box);
    const QString key = QLatin1String(settingsKey);
    m_box->setChecked(settings.value(key, false).toBool());
    connect(&m_nextFrame, &QTimer::timeout, this, [this] { m_note->say(inWords()); });
    setOn(m_box->isChecked());
    connect(m_box, &QCheckBox::toggled, this, [this, &settings, key](bool on) {
        settings.setValue(key, on);
        setOn(on);
    });
}

ChangesOnScreen::~ChangesOnScreen() = default;

void ChangesOnScreen::setOn(bool on)
{
    disconnect(&m_dispatcher, nullptr, this, nullptr);
    m_nextFrame.stop();
    m_note.reset();
    if (on) {
        m_note = std::make_unique<ScreenNote>();
        connect(&m_dispatcher, &EventDispatcher::layerChanged, this, &ChangesOnScreen::showLater);
        connect(&m_dispatcher, &EventDispatcher::knobModeChanged, this, &ChangesOnScreen::showLater);
    }
}

QString ChangesOnScreen::inWords() const
{
    return tr("%1 · %2").arg(Layers::shownName(m_dispatcher.currentLayer()),
                             ComboMenuEntries::knobMode(m_dispatcher.knobMode()));
}

// A window of the program that the user works in shows the change itself. Some window systems call the note
// active, whatever it asks for.
void ChangesOnScreen::showLater()
{
    const QWidget *active = QApplication::activeWindow();
    if (active == nullptr || active == m_note.get()) {
        m_nextFrame.request();
    }
}
