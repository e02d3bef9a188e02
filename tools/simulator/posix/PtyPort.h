#pragma once

#include "tools/simulator/Cable.h"
#include "tools/simulator/posix/PublishedLink.h"

#include <memory>

class QSocketNotifier;

namespace simulator
{

/// A cable made of a pseudo-terminal: the program opens the slave, through the published link, as its serial
/// port.
class PtyPort final : public Cable
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PtyPort)

public:
    /// The device is published as @p link once that has been claimed.
    explicit PtyPort(const QString &link);
    ~PtyPort() override;

    bool plug() override;
    void unplug() override;
    bool isPlugged() const override { return m_master >= 0; }
    bool isOpened() const override { return m_openings > 0; }
    void send(const QByteArray &bytes) override;
    bool isDelivered() const override;
    QString errorString() const override { return m_error; }
    QString address() const override { return m_link.path(); }
    bool claim() override;

    /// The slave's path; empty while unplugged.
    QString slavePath() const { return m_slavePath; }

private:
    bool makeTerminal();
    void watchOpenings();
    void onDirectoryEvents();
    void setOpenings(int openings);
    void readFromProgram();
    void writePending();
    bool fail(const char *what);

    PublishedLink m_link;
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
