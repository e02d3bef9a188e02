#pragma once

#include "device/SerialProtocol.h"
#include "engine/LaunchOnStartup.h"
#include "engine/ProgramSwitch.h"
#include "engine/Settings.h"
#include "engine/platform/AutostartEntry.h"
#include "engine/platform/Desktop.h"
#include "engine/platform/recording/RecordingFocus.h"
#include "mapping/MappingSession.h"
#include "mapping/ProgramMappings.h"
#include "net/MapUpdate.h"
#include "tests/support/script/EngineRig.h"
#include "ui/DeviceZR.h"

#include <QTemporaryDir>

#include <memory>

/// An entry that only this process knows.
class MemoryAutostartEntry : public AutostartEntry
{
public:
    bool exists() const override { return !program.isNull(); }
    void write(const QString &path) override
    {
        if (!refuses) {
            program = path;
        }
    }
    void remove() override { program = QString(); }

    QString program;
    bool refuses = false; // as a full disk does
};

/// A desktop whose key events carry the codes themselves.
class PlainDesktop : public Desktop
{
public:
    int virtualKeyFromNative(quint32 nativeVirtualKey, quint32) const override
    {
        return int(nativeVirtualKey);
    }
    bool isComposited() const override { return true; }
};

/// The device page on an engine without a desktop, a device that the test plays, a data folder of its own,
/// and a web service that does not answer.
class PageRig
{
    Q_DISABLE_COPY_MOVE(PageRig)

public:
    PageRig();

    /// Puts a mapping file into the data folder, before makePage().
    void writeFile(const QString &name, const QByteArray &content);
    QByteArray readFile(const QString &name) const;

    DeviceZR *makePage(QWidget *parent, SerialProtocol *serial, ZRUpdater *updater);

    /// The page without its mapping.
    DeviceZR *buildPage(QWidget *parent, SerialProtocol *serial, ZRUpdater *updater);

    /// A link that never finds a device by itself.
    static std::unique_ptr<SerialProtocol> makeSerial();

    QTemporaryDir data;
    Settings store{data.filePath(QStringLiteral("settings.ini"))};
    EngineRig engine;
    MappingSession mappings;
    MemoryAutostartEntry autostart;
    PlainDesktop desktop;
    QString notice; ///< to be set before makePage()
    LaunchOnStartup launchOnStartup{autostart, QStringLiteral("/opt/veltrix/veltrix")};
    MapUpdate mapUpdate;
    RecordingFocus focus;
    ProgramMappings programMappings;
    ProgramSwitch programSwitch;
};
