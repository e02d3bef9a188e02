#pragma once

#include "device/PortLister.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

/// Finds the port that the device is on.
///
/// A port is the device's when its serial number contains "HIDFG" (in capitals) or else its product
/// identifier is 0x9206; the first one in the system's order counts. Listing the ports is costly, so the
/// lister is asked only when something can have changed; in between the last answer holds.
class PortFinder
{
    Q_DISABLE_COPY_MOVE(PortFinder)

public:
    /// A change of the device folder is followed by this many more full looks: a port's properties and
    /// permissions are set some time after it has appeared.
    static constexpr int settlingLooks = 6;
    /// While a port that has come since the look before is without any property, every look is a full one,
    /// for this many looks (a minute of scans): what describes it is on its way, or there is nothing to
    /// describe.
    static constexpr int looksAtBarePort = 120;
    /// A full look at the latest after this many cheap ones (five minutes of scans), in case that a change
    /// left no trace in the folder.
    static constexpr int cheapLooksAtMost = 600;

    /// @p explicitPort is a path (or a port's name) that the user named as the device's port. For as long as
    /// it exists it comes before every other port. A relative path is taken from the folder that is current
    /// now. Empty: none.
    explicit PortFinder(std::unique_ptr<PortLister> lister, const QString &explicitPort = QString());

    /// The device's port, nothing while there is none. Called once per scan.
    std::optional<PortDescription> find();

    /// Makes the next find() a full look: the last answer turned out to be of no use.
    void lookAgain();

    /// All ports as the last full look has found them, the device's and others.
    const QVector<PortDescription> &ports() const { return m_ports; }

    /// The port that the user named, as he named it; empty: none.
    const QString &namedPort() const { return m_explicitName; }

private:
    bool mayHaveChanged();
    void lookOnAtBarePorts(const QVector<PortDescription> &before);
    std::optional<PortDescription> explicitPath() const;
    std::optional<PortDescription> walk() const;

    std::unique_ptr<PortLister> m_lister;
    QString m_explicitName;
    QString m_explicitPath;
    std::optional<qint64> m_stamp;
    std::optional<PortDescription> m_lastAnswer;
    int m_fullLooksDue = 1;
    int m_cheapLooks = 0;
    bool m_looked = false;
    QVector<PortDescription> m_ports;
    QHash<QString, int> m_bare; // ports that came without properties: looks left
};
