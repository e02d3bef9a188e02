#pragma once

#include <QByteArray>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <functional>

/// Takes down, in order and one text line each, what would have happened on a desktop.
///
/// The lines are those of the text scripts in tests/scripts: "key 17 down", "left up", "hide", "show",
/// "move 10 -4", "midi 90 3C 64", "panel GAME", "game S". Used on the GUI thread.
class Recorder
{
    Q_DISABLE_COPY_MOVE(Recorder)

public:
    using Sink = std::function<void(const QString &line)>;

    /// Keeps every line until takeLines().
    Recorder() = default;

    /// Hands every line to @p sink and keeps none, so that it can run for weeks.
    explicit Recorder(Sink sink);

    void recordKey(quint16 virtualKey, bool down);
    void recordLeftButton(bool down);
    void recordHidden(bool hidden);
    void recordMove(QPoint position);
    void recordMidi(const QByteArray &message);
    void recordPanel(const QString &name);
    void recordGame(char control);

    const QStringList &lines() const { return m_lines; }

    /// Returns the lines kept so far and forgets them.
    QStringList takeLines();

private:
    void record(const QString &line);

    Sink m_sink;
    QStringList m_lines;
};
