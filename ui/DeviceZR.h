#pragma once

#include "app/frame/ZRBaseWindow.h"
#include "engine/KnobPointer.h"

#include <QString>

class ActionMenus;
class BoxMarks;
class ChangesOnScreen;
class ClickableLabel;
class ComboMapping;
class Desktop;
class DeviceIndicators;
class DevicePicture;
class EventDispatcher;
class FileResult;
class KnobSettings;
class LaunchOnStartup;
class MapNotices;
class MapUpdate;
class MappingFileExchange;
class MappingInUse;
class MappingSession;
class NameLine;
class ProgramMappings;
class ProgramSwitch;
class ProgramsOnPage;
class QLabel;
class QNetworkReply;
class SerialProtocol;
class SensitivitySliders;
class SentLine;
class Settings;
class StartupBox;
class ZRButtonMap;

/// The device's page: what each control does in each layer, and the mapping in use.
///
/// Shows what the session and the engine say, and hands on what the user chooses; holds and decides nothing
/// itself. An action that is chosen in any way acts from the next event on; only a captured shortcut writes
/// the working copy, deliberately.
class DeviceZR : public ZRBaseWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DeviceZR)

public:
    /// What the page works with. Everything must outlive it.
    struct Parts {
        MappingSession *mappings;
        EventDispatcher *dispatcher;
        Settings *settings;
        KnobSettings *knobSettings;
        LaunchOnStartup *launchOnStartup;
        MapUpdate *mapUpdate;
        ZRUpdater *updater;     ///< may be null
        const Desktop *desktop; ///< for its dialogs and for printing
        QString midiPortName;
        QString notice; ///< what the user should know about where keys go; empty: nothing
        ProgramMappings *programMappings = nullptr; ///< may be null, with the next: no program has its own
        ProgramSwitch *programSwitch = nullptr;
    };

    /// @p serial must outlive the page.
    DeviceZR(QWidget *parent, SerialProtocol *serial, const Parts &parts);
    ~DeviceZR() override;

    /// Loads the session. To be called once, before the event loop runs: no event of the device's must find
    /// the page without its mapping.
    void load();

    /// Imports mappings, and says what became of it.
    void importFiles(const QStringList &files);

    /// Ends the game as its chord on the device would.
    void leaveGame();

    /// Says at the bottom of the page that the program in front gets no keys from this one.
    void showRefusedInput();

Q_SIGNALS:
    /// The page to show: "ZR" for this one, "GAME" for the game, an empty name when the device is gone.
    void displayControlPanel(QString name);
    void gameControl(char control);

public Q_SLOTS:
    void onDeviceConnected(const QString &deviceName);
    void restoreMouse();
    void newMap(ZRButtonMap *buttonMap); ///< puts it to use; @p buttonMap stays the sender's
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
    void loadDefaultMap(ZRButtonMap *buttonMap); ///< begins with it; takes @p buttonMap over

protected:
    void childEvent(QChildEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void buildPicture();
    void buildSelector();
    void followMappings();
    void followMappingInUse();
    void buildBottom();
    void connectDevice(SerialProtocol *serial);
    void connectIndicators();
    void connectBoxes();
    void orderFocus();

    void showWhetherKept(const FileResult &result);
    void showWhetherStored(bool stored);
    void updateToolTips();

    Parts m_parts;

    DevicePicture *m_picture = nullptr;
    ClickableLabel *m_printer = nullptr;
    ComboMapping *m_selector = nullptr;
    MapNotices *m_notices = nullptr;
    QLabel *m_notice = nullptr;
    MappingFileExchange *m_files = nullptr;
    ProgramsOnPage *m_programs = nullptr;
    ActionMenus *m_menus = nullptr;
    DeviceIndicators *m_indicators = nullptr;
    BoxMarks *m_boxMarks = nullptr;
    MappingInUse *m_inUse = nullptr;
    NameLine *m_nameLine = nullptr;
    SentLine *m_sent = nullptr;
    StartupBox *m_startup = nullptr;
    ChangesOnScreen *m_changes = nullptr;
    SensitivitySliders *m_sliders = nullptr;
};
