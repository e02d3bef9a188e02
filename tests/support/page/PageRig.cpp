#include "tests/support/page/PageRig.h"

#include "device/PortFinder.h"
#include "device/PortLister.h"

#include <QFile>
#include <QTest>

namespace
{

class NoPorts : public PortLister
{
public:
    QVector<PortDescription> availablePorts() override { return {}; }
    std::optional<qint64> changeStamp() override { return 1; }
};

} // namespace

PageRig::PageRig()
    : mappings(data.path())
    // No network: there is no such file.
    , mapUpdate(mappings.files().library(), &store, QStringLiteral("file:///nonexistent/"))
    , programMappings(mappings)
    , programSwitch(focus, *engine.dispatcher, programMappings)
{
    engine.dispatcher->follow(mappings);
}

void PageRig::writeFile(const QString &name, const QByteArray &content)
{
    QFile file(data.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray PageRig::readFile(const QString &name) const
{
    QFile file(data.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

DeviceZR *PageRig::makePage(QWidget *parent, SerialProtocol *serial, ZRUpdater *updater)
{
    DeviceZR *page = buildPage(parent, serial, updater);
    page->load();
    return page;
}

DeviceZR *PageRig::buildPage(QWidget *parent, SerialProtocol *serial, ZRUpdater *updater)
{
    return new DeviceZR(parent, serial,
                        {&mappings, engine.dispatcher.get(), &store, &engine.settings, &launchOnStartup,
                         &mapUpdate, updater, &desktop, QStringLiteral("Not Available"), notice,
                         &programMappings, &programSwitch});
}

std::unique_ptr<SerialProtocol> PageRig::makeSerial()
{
    return std::make_unique<SerialProtocol>(std::make_unique<PortFinder>(std::make_unique<NoPorts>()));
}
