#pragma once

#include "tools/simulator/DevicePort.h"
#include "tools/simulator/Options.h"

#include <QObject>

#include <memory>

namespace simulator
{

/// The cable of the running simulator: a port that also tells what happens to it.
class Cable : public QObject, public DevicePort
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Cable)

public:
    Cable() = default;

    /// What the program's --port takes while the cable is in: a path, or "tcp:127.0.0.1:PORT".
    virtual QString address() const = 0;

    /// Makes sure that no other simulator has this place. Returns false, with errorString() set, when one
    /// has.
    virtual bool claim() { return true; }

Q_SIGNALS:
    void pluggedChanged(bool plugged);

    /// A program has opened the port, or the last one has closed it.
    void openedChanged(bool opened);

    /// The program wrote to the device.
    void received(const QByteArray &bytes);

    /// The program has not read for so long that what is sent is lost from now on, until it reads again.
    void overrun();

    /// The program reads again; @p count bytes were lost.
    void overrunEnded(int count);
};

/// The cable that the command line asks for, among those that this system has. Null, with @p error set, when
/// there is no place for it.
std::unique_ptr<Cable> createCable(const Options &options, QString &error);

/// Whether a window can be shown here.
bool hasDisplay();

} // namespace simulator
