#pragma once

#include "tools/simulator/DevicePort.h"
#include "tools/simulator/PublishedLink.h"

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace simulator
{

/// A cable made of a pseudo-terminal: the program opens the slave, through the published link, as its serial
/// port.
class PtyPort final : public QObject, public DevicePort
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PtyPort)

public:
    /// @p link must have been claimed and must outlive this object.
    explicit PtyPort(PublishedLink &link, QObject *parent = nullptr);
    ~PtyPort() override;

    bool plug() override;
    void unplug() override;
    bool isPlugged() const override { return m_master >= 0; }
    bool isOpened() const override { return m_openings > 0; }
    void send(const QByteArray &bytes) override;
    bool isDelivered() const override;
    QString errorString() const override { return m_error; }

    /// The slave's path; empty while unplugged.
    QString slavePath() const { return m_slavePath; }

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

private:
    bool makeTerminal();
    void watchOpenings();
    void onDirectoryEvents();
    void setOpenings(int openings);
    void readFromProgram();
    void writePending();
    bool fail(const char *what);

    PublishedLink &m_link;
    QString m_slavePath;
    QString m_error;
    QByteArray m_pending;
    std::unique_ptr<QSocketNotifier> m_readNotifier;
    std::unique_ptr<QSocketNotifier> m_writeNotifier;
    std::unique_ptr<QSocketNotifier> m_openNotifier;
    int m_master = -1;
    int m_slave = -1;
    int m_inotify = -1;
    int m_openings = 0;
    int m_lost = 0; // bytes, since the program stopped reading
    bool m_published = false;
};

} // namespace simulator
