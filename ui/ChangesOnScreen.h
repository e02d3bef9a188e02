#pragma once

#include "ui/FrameTimer.h"

#include <QObject>

#include <memory>

class EventDispatcher;
class QCheckBox;
class ScreenNote;
class Settings;

/// Shows layer and knob mode on the screen for a moment when a control changes them while the user works in
/// another program; off until the box on the page is set. While it is off nothing follows the engine, and
/// while it is on no event of the device's waits for what is shown.
class ChangesOnScreen : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ChangesOnScreen)

public:
    /// In the settings: whether it is on.
    static constexpr char settingsKey[] = "Extra.ShowChangesOnScreen";

    /// @p page owns this object and the box. The others must outlive it.
    ChangesOnScreen(const EventDispatcher &dispatcher, Settings &settings, QWidget *page);
    ~ChangesOnScreen() override;

    QCheckBox *box() const { return m_box; }

    /// "Shift 1 · Vertical"
    QString inWords() const;

private:
    void setOn(bool on);
    void showLater();

    const EventDispatcher &m_dispatcher;
    QCheckBox *m_box;
    std::unique_ptr<ScreenNote> m_note; // none while off
    FrameTimer m_nextFrame;
};
