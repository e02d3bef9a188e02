#pragma once

#include "tools/simulator/Options.h"
#include "tools/simulator/ScriptRunner.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

namespace simulator
{

class LineInput;
class VirtualDevice;

/// Plays the script file and standard input on the device and tells when there is nothing more to do.
class Simulation : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Simulation)

public:
    static constexpr int statusDone = 0;
    static constexpr int statusNoPort = 1;
    static constexpr int statusMistake = 2;

    /// @p device must outlive this object.
    Simulation(const Options &options, VirtualDevice &device, QObject *parent = nullptr);
    ~Simulation() override;

    /// Reads the whole script file; nothing has been sent when it has a mistake. Returns the status:
    /// statusDone to go on.
    int load();

    void start();

Q_SIGNALS:
    /// To be answered by ending the program with @p status. Not emitted when there is a window or it is to
    /// stay.
    void finished(int status);

private:
    void onLine(const QByteArray &line, int number);
    void advance();
    void endWhenDone();

    const Options m_options;
    VirtualDevice &m_device;
    ScriptRunner m_runner;
    std::unique_ptr<LineInput> m_input;
    QElapsedTimer m_clock;
    QTimer m_timer;
    bool m_inputEnded = true;
    bool m_ending = false;
    bool m_inputIsTerminal = false;
};

} // namespace simulator
