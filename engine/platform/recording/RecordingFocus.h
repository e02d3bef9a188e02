#pragma once

#include "engine/platform/FocusedProgram.h"

/// Programs that get the focus when it is said so, and are told of while somebody watches.
class RecordingFocus final : public FocusedProgram
{
    Q_DISABLE_COPY_MOVE(RecordingFocus)

public:
    RecordingFocus() = default;

    bool isTold() const override { return true; }
    void setWatched(bool watched) override
    {
        const bool begins = watched && !m_watched;
        m_watched = watched;
        if (begins && !m_program.id.isEmpty()) {
            Q_EMIT focused(m_program);
        }
    }

    /// The program whose windows are called @p text gets the focus.
    void focus(const QString &text)
    {
        m_program = Program::called(text);
        if (m_watched) {
            Q_EMIT focused(m_program);
        }
    }

    bool isWatched() const { return m_watched; }

private:
    Program m_program;
    bool m_watched = false;
};
