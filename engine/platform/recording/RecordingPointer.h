#pragma once

#include "engine/platform/Pointer.h"
#include "engine/platform/recording/Recorder.h"

/// A pointer that exists in memory only: it stands where it was last put. Movements are recorded; the screens
/// are not its borders.
class RecordingPointer final : public Pointer
{
    Q_DISABLE_COPY_MOVE(RecordingPointer)

public:
    /// Starts at (0,0) on one screen of 1920 by 1080. @p recorder must outlive this object.
    explicit RecordingPointer(Recorder &recorder);

    QPoint position() const override { return m_position; }
    void moveTo(QPoint position) override;
    QVector<QRect> screens() const override { return m_screens; }

    /// Puts the pointer somewhere without recording it, as the user's hand does.
    void place(QPoint position) { m_position = position; }
    void setScreens(const QVector<QRect> &screens) { m_screens = screens; }

private:
    Recorder &m_recorder;
    QPoint m_position;
    QVector<QRect> m_screens{QRect(0, 0, 1920, 1080)};
};
