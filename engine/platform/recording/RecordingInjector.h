#pragma once

#include "engine/platform/InputInjector.h"
#include "engine/platform/recording/Recorder.h"

/// Injects nothing and records what it was told.
class RecordingInjector final : public InputInjector
{
    Q_DISABLE_COPY_MOVE(RecordingInjector)

public:
    /// @p recorder must outlive this object.
    explicit RecordingInjector(Recorder &recorder)
        : m_recorder(recorder)
    {
    }

    void sendKey(quint16 virtualKey, bool down) override { m_recorder.recordKey(virtualKey, down); }
    void sendLeftButton(bool down) override { m_recorder.recordLeftButton(down); }
    void prepareKeys(const QVector<quint16> &virtualKeys) override { m_preparedKeys = virtualKeys; }

    /// What the latest prepareKeys() named.
    const QVector<quint16> &preparedKeys() const { return m_preparedKeys; }

private:
    Recorder &m_recorder;
    QVector<quint16> m_preparedKeys;
};
