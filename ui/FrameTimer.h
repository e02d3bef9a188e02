#pragma once

#include <QTimer>

/// Times out once, about a frame after it was asked to. What is shown in its time is made no more often than
/// it can be seen, and after what it is about was done.
class FrameTimer : public QTimer
{
    Q_DISABLE_COPY_MOVE(FrameTimer)

public:
    static constexpr int frameMs = 16;

    FrameTimer()
    {
        setSingleShot(true);
        setInterval(frameMs);
    }
    ~FrameTimer() override = default;

    /// Does nothing when it has been asked already.
    void request()
    {
        if (!isActive()) {
            start();
        }
    }
};
