#pragma once

#include <QtGlobal>

#include <RtMidi.h>
#include <string>

/// Gathers what RtMidi reports. Left alone RtMidi prints each report to standard error and throws; with an
/// error callback it does neither, and the callback must not throw (RtMidi would keep silent ever after). So
/// the callback writes down, and the report is looked at after the call.
class RtMidiErrors
{
    Q_DISABLE_COPY_MOVE(RtMidiErrors)

public:
    explicit RtMidiErrors(RtMidi &midi);

    /// To be called after each call of the library. Throws std::runtime_error with the library's text when
    /// the call failed; a warning is logged.
    void check();

private:
    static void note(RtMidiError::Type type, const std::string &text, void *self);

    std::string m_error;
};
