#pragma once

#include "engine/MidiActions.h"
#include "midi/MidiOutPort.h"
#include "midi/OwedMessages.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/midi/FakeMidiBackend.h"
#include "tests/support/script/ManualClock.h"

#include <QTest>

#include <memory>

/// MIDI actions on an open port of a backend that notes what is sent.
class MidiActionsRig
{
protected:
    void begin()
    {
        m_midi = std::make_shared<FakeMidi>();
        m_afterCrash = std::make_unique<OwedMessages>();
        m_midi->ports = {"Midi Through:0", "loop:FROM host"};
        m_log = std::make_unique<LogCapture>();
        m_port = std::make_unique<MidiOutPort>(std::make_unique<FakeMidiBackend>(m_midi));
        m_actions = std::make_unique<MidiActions>(*m_port, *m_afterCrash, m_clock);
        QCOMPARE(m_port->openPort(1), 0);
    }
    void end()
    {
        m_actions.reset();
        m_port.reset();
        m_log.reset();
    }

    static shortCut knob()
    {
        shortCut action;
        action.channel = 2;
        action.knobcc = 20;
        return action;
    }

    /// The knob's events, one a character.
    void play(const shortCut &action, const QByteArray &types)
    {
        for (const char type : types) {
            m_actions->knobEvent(action, type);
        }
    }

    /// What was sent since the last call.
    QStringList sent()
    {
        QStringList lines;
        for (const std::vector<unsigned char> &message : m_midi->sent) {
            const QByteArray bytes(reinterpret_cast<const char *>(message.data()),
                                   static_cast<int>(message.size()));
            lines.append(QString::fromLatin1(bytes.toHex(' ').toUpper()));
        }
        m_midi->sent.clear();
        return lines;
    }

    std::shared_ptr<FakeMidi> m_midi;
    std::unique_ptr<LogCapture> m_log;
    std::unique_ptr<MidiOutPort> m_port;
    std::unique_ptr<OwedMessages> m_afterCrash;
    ManualClock m_clock;
    std::unique_ptr<MidiActions> m_actions;
};
