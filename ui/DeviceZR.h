#pragma once

#include "app/frame/ZRBaseWindow.h"
#include "engine/KnobPointer.h"
#include "mapping/XmlMappingReader.h"
#include "mapping/XmlMappingWriter.h"
#include "mapping/ZRButtonMap.h"

#include <QString>

#include <memory>

class ActionMenus;
class ClickableLabel;
class ComboMapping;
class Desktop;
class DeviceIndicators;
class DevicePicture;
class EventDispatcher;
class KnobSettings;
class LaunchOnStartup;
class MapNotices;
class MapUpdate;
class QCheckBox;
class QNetworkReply;
class QSlider;
class SerialProtocol;
class Settings;

/// The device's page: what each control does in each layer, and the mapping in use.
///
/// Shows what the engine says and hands on what the user chooses; decides nothing itself. An action that is
/// chosen in any way acts from the next event on; only a captured shortcut writes the working copy,
/// deliberately.
class DeviceZR : public ZRBaseWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DeviceZR)

public:
    /// What the page works with. Everything must outlive it.
    struct Parts {
        EventDispatcher *dispatcher;
        Settings *settings;
        KnobSettings *knobSettings;
        LaunchOnStartup *launchOnStartup;
        MapUpdate *mapUpdate;
        ZRUpdater *updater;     ///< may be null
        const Desktop *desktop; ///< may be null, for its dialogs
        QString dataDirectory;
        QString midiPortName;
    };

    /// @p serial must outlive the page. Reads the mapping files.
    DeviceZR(QWidget *parent, SerialProtocol *serial, const Parts &parts);
    ~DeviceZR() override;

Q_SIGNALS:
    /// The page to show: "ZR" for this one, "GAME" for the game, an empty name when the device is gone.
    void displayControlPanel(QString name);
    void gameControl(char control);

public Q_SLOTS:
    void onDeviceConnected(const QString &deviceName);
    void restoreMouse();
    void newMap(ZRButtonMap *buttonMap); ///< @p buttonMap stays the sender's
    void replyFinished(QNetworkReply *reply);
    void dowloadFinished(bool success);
    void printCurrentView();
    void saveCurrentMap(const QString &name);
    void deleteMap(const QString &name);
    void setKnobSensitivityNormal(int val);
    void setKnobSensitivityShift1(int val);
    void onButtonpress(int button, bool pressing);
    void onKnobevent(char type);
    void onKnobevent(int count);
    void setLaunchOnStartup(bool on);
    void onUserMovingMouse();
    void reEnableZR();
    void saveCurrentMapAsDefault();
    void loadDefaultMap(ZRButtonMap *buttonMap); ///< takes @p buttonMap over

protected:
    void childEvent(QChildEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void buildPicture();
    void buildSelector();
    void buildStartupBox();
    void buildSliders();
    void connectDevice(SerialProtocol *serial);
    void connectIndicators();
    void loadMappings();
    void orderFocus();

    void takeMaps(const QList<ZRButtonMap *> &maps, bool custom, int defaultMap);
    void load(const ZRButtonMap &map);
    void useMenus();
    void useAssignment(int control, int layer, const shortCut &assignment);
    void markKept();
    void showWhatIsNotKept();
    void updateToolTips();
    QString libraryFile() const;

    Parts m_parts;

    XmlMappingReader m_reader;
    XmlMappingWriter m_writer;

    DevicePicture *m_picture = nullptr;
    ClickableLabel *m_printer = nullptr;
    ComboMapping *m_selector = nullptr;
    MapNotices *m_notices = nullptr;
    ActionMenus *m_menus = nullptr;
    DeviceIndicators *m_indicators = nullptr;
    QCheckBox *m_startup = nullptr;
    QSlider *m_normal = nullptr;
    QSlider *m_shift1 = nullptr;
    std::unique_ptr<ZRButtonMap> m_kept; // what the working copy holds, or what the page started with
};
