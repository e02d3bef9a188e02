#pragma once

#include "engine/platform/PointerAppearance.h"
#include "engine/platform/recording/Recorder.h"

/// Hides no pointer and records what it was told.
class RecordingAppearance final : public PointerAppearance
{
    Q_DISABLE_COPY_MOVE(RecordingAppearance)

public:
    /// @p recorder must outlive this object.
    explicit RecordingAppearance(Recorder &recorder)
        : m_recorder(recorder)
    {
    }

    void setHidden(bool hidden) override { m_recorder.recordHidden(hidden); }
    void restore() override { m_recorder.recordHidden(false); }

private:
    Recorder &m_recorder;
};
