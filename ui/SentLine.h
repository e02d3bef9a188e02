#pragma once

#include "engine/DoneAction.h"
#include "ui/FrameTimer.h"

#include <QLabel>
#include <QRect>
#include <QTimer>

#include <optional>

/// Says on the page's bottom line, for two seconds, what the last control did.
///
/// It shows up to once a frame, and some time after it was told: what was done has reached the system by
/// then. A hidden page costs nothing.
class SentLine : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SentLine)

public:
    /// On the page, between the check boxes and the MIDI output.
    static constexpr QRect place{436, 625, 248, 16};
    static constexpr int shownMs = 2000;

    explicit SentLine(QWidget *page);

public Q_SLOTS:
    void tell(const DoneAction &done);

private:
    void showNow();

    FrameTimer m_nextFrame;
    QTimer m_end;
    QString m_told;
    std::optional<DoneAction> m_last; // that has words, and is not shown yet
};
