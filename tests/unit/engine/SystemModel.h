#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

/// What a desktop and a MIDI instrument hold after the output lines that they were given.
class SystemModel
{
public:
    /// Notes and controllers from this number on must end with what began them; those below are meant to
    /// stay.
    static constexpr int firstOwedNote = 60;

    /// Controllers from this number on are turned by the knob, and keep their value.
    static constexpr int firstKnobController = 64;

    /// Less than this on a controller is off.
    static constexpr int leastOn = 3;

    void take(const QString &line)
    {
        const QStringList parts = line.split(QLatin1Char(' '));
        const QString &what = parts.first();
        if (what == QLatin1String("key")) {
            if (parts.at(2) == QLatin1String("down")) {
                m_keys.insert(parts.at(1));
            } else {
                m_keys.remove(parts.at(1));
            }
        } else if (what == QLatin1String("left")) {
            m_left = parts.at(1) == QLatin1String("down");
        } else if (what == QLatin1String("hide") || what == QLatin1String("show")) {
            m_hidden = what == QLatin1String("hide");
        } else if (what == QLatin1String("midi") && parts.at(1).startsWith(QLatin1Char('9'))) {
            ++m_notes[note(parts)];
        } else if (what == QLatin1String("midi") && parts.at(1).startsWith(QLatin1Char('8'))) {
            if (m_notes.value(note(parts)) > 0 && --m_notes[note(parts)] == 0) {
                m_notes.remove(note(parts));
            }
        } else if (what == QLatin1String("midi") && parts.at(1).startsWith(QLatin1Char('B'))) {
            if (isOn(parts)) {
                m_controllers.insert(note(parts));
            } else {
                m_controllers.remove(note(parts));
            }
        }
    }

    /// Whether @p line lets go of something that is held at this moment.
    bool isReleaseOfSomethingHeld(const QString &line) const
    {
        const QStringList parts = line.split(QLatin1Char(' '));
        if (parts.first() == QLatin1String("key")) {
            return parts.at(2) == QLatin1String("up") && m_keys.contains(parts.at(1));
        }
        if (parts.first() == QLatin1String("midi") && parts.at(1).startsWith(QLatin1Char('B'))) {
            return !isOn(parts) && isOwedController(note(parts));
        }
        if (parts.first() == QLatin1String("midi")) {
            return parts.at(1).startsWith(QLatin1Char('8')) && isOwed(note(parts)) &&
                   m_notes.contains(note(parts));
        }
        return (line == QLatin1String("left up") && m_left) || (line == QLatin1String("show") && m_hidden);
    }

    bool isDragging() const { return m_left || m_hidden; }

    /// Empty when nothing is held.
    QString held() const
    {
        QStringList all;
        for (const QString &key : m_keys) {
            all << QStringLiteral("key ") + key;
        }
        if (m_left) {
            all << QStringLiteral("left");
        }
        if (m_hidden) {
            all << QStringLiteral("hidden pointer");
        }
        return (all + heldMidi()).join(QStringLiteral(", "));
    }

    /// The same without MIDI.
    QString heldInput() const
    {
        SystemModel input = *this;
        input.forgetMidi();
        return input.held();
    }

    /// The first two bytes of the messages that end the notes and put the controllers back that must.
    std::vector<std::array<unsigned char, 2>> whatEndsMidi() const
    {
        std::vector<std::array<unsigned char, 2>> all;
        const auto add = [&all](unsigned int kind, const QString &what) {
            all.push_back({static_cast<unsigned char>(kind + what.left(1).toUInt(nullptr, 16)),
                           static_cast<unsigned char>(what.mid(2).toUInt(nullptr, 16))});
        };
        for (auto it = m_notes.begin(); it != m_notes.end(); ++it) {
            if (isOwed(it.key())) {
                add(0x80, it.key());
            }
        }
        for (const QString &controller : m_controllers) {
            if (isOwedController(controller)) {
                add(0xB0, controller);
            }
        }
        return all;
    }

    /// The instrument has gone.
    void forgetMidi()
    {
        m_notes.clear();
        m_controllers.clear();
    }

private:
    QStringList heldMidi() const
    {
        QStringList all;
        for (auto it = m_notes.begin(); it != m_notes.end(); ++it) {
            if (isOwed(it.key())) {
                all << QStringLiteral("note ") + it.key();
            }
        }
        for (const QString &controller : m_controllers) {
            if (isOwedController(controller)) {
                all << QStringLiteral("controller ") + controller;
            }
        }
        return all;
    }

    // "0 3C": channel and number
    static QString note(const QStringList &parts)
    {
        return parts.at(1).mid(1) + QLatin1Char(' ') + parts.at(2);
    }
    static bool isOwed(const QString &note) { return note.mid(2).toInt(nullptr, 16) >= firstOwedNote; }

    static bool isOwedController(const QString &controller)
    {
        return isOwed(controller) && controller.mid(2).toInt(nullptr, 16) < firstKnobController;
    }
    static bool isOn(const QStringList &parts) { return parts.at(3).toInt(nullptr, 16) >= leastOn; }

    QSet<QString> m_keys;
    QSet<QString> m_controllers;
    QMap<QString, int> m_notes;
    bool m_left = false;
    bool m_hidden = false;
};
