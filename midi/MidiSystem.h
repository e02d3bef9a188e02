#pragma once

#include "midi/MidiBackend.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

/// A MIDI system that may or may not be there.
struct MidiSystem {
    QString name;
    /// Null or std::exception when it is not there.
    std::function<std::unique_ptr<MidiBackend>()> open;
};

/// The first of @p systems that has a port, else the first that is there at all, else null. Logs the choice
/// in a line that begins with @p purpose ("MIDI output"). A system that is not chosen is closed before the
/// next one is opened, unless it may still be needed.
std::unique_ptr<MidiBackend> openFirstWorking(const QString &purpose, const std::vector<MidiSystem> &systems);

/// The systems that the MIDI library was compiled with, its default one first. Null when none works.
/// @p patience: how long an answer of a system's server is waited for, here and in the backend's calls.
std::unique_ptr<MidiBackend> openMidiOutput();
std::unique_ptr<MidiBackend> openMidiOutput(std::chrono::milliseconds patience);
std::unique_ptr<MidiBackend> openMidiInput();
