#include "engine/platform/recording/RecordingPointer.h"

RecordingPointer::RecordingPointer(Recorder &recorder)
    : m_recorder(recorder)
{
}

void RecordingPointer::moveTo(QPoint position)
{
    m_position = position;
    m_recorder.recordMove(position);
}
