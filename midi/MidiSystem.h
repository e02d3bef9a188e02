#pragma once

#include "midi/MidiBackend.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

/// A MIDI system does not run, for certain. One that does not answer, or refuses, is not absent.
class MidiSystemAbsent : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A MIDI system that may or may not be there.
struct MidiSystem {
    QString name;
    /// Null or std::exception when it is not there; MidiSystemAbsent when that is certain.
    std::function<std::unique_ptr<MidiBackend>()> open;
};

/// The first of @p systems that has a port, else the first that is there at all, else null. Logs the choice
/// in a line that begins with @p purpose ("MIDI output"). A system that is not chosen is closed before the
/// next one is opened, unless it may still be needed. @p allAbsent, where given, becomes true when each one
/// is certain not to be there, else false.
std::unique_ptr<MidiBackend> openFirstWorking(const QString &purpose, const std::vector<MidiSystem> &systems,
                                              bool *allAbsent = nullptr);

/// The systems that the MIDI library was compiled with, its default one first. Null when none works.
/// @p patience: how long an answer of a system's server is waited for, here and in the backend's calls.
/// @p allAbsent: see openFirstWorking().
std::unique_ptr<MidiBackend> openMidiOutput();
std::unique_ptr<MidiBackend> openMidiOutput(std::chrono::milliseconds patience, bool *allAbsent = nullptr);
std::unique_ptr<MidiBackend> openMidiInput();
