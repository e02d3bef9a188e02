#pragma once

#include "engine/Settings.h"
#include "ui/ActionMenus.h"
#include "ui/ComboMenu.h"
#include "ui/MidiMenu.h"
#include "ui/ShortcutKey.h"

#include <QFile>
#include <QMap>
#include <QSettings>
#include <QTemporaryDir>
#include <QWidget>

#include <memory>

/// An action menu on a page, with a settings file of its own.
class MenuRig
{
    Q_DISABLE_COPY_MOVE(MenuRig)

public:
    /// Makes the menu of @p control. With @p prepare, the settings file is filled before.
    explicit MenuRig(int control = 3, bool device = true, const QMap<QString, QVariant> &prepared = {})
    {
        for (auto it = prepared.begin(); it != prepared.end(); ++it) {
            m_settings.setValue(it.key(), it.value());
        }
        if (Settings::isOlder(m_settings, QStringLiteral("1.10"))) { // as the page does
            ActionMenus::upgrade(m_settings);
        }
        m_page.resize(900, 650);
        m_menu = new ComboMenu(control, device ? &m_link : nullptr, &m_page, m_settings);
        m_menu->move(88, 239);
        QObject::connect(m_menu, &ComboMenu::assignmentChanged, m_menu,
                         [this](const QMap<Layer, shortCut> &layers) {
                             for (auto it = layers.begin(); it != layers.end(); ++it) {
                                 m_assignments.append(QStringLiteral("%1: %2 %3 %4 %5")
                                                          .arg(Layers::number(it.key()))
                                                          .arg(it->key1)
                                                          .arg(it->key2)
                                                          .arg(it->key3)
                                                          .arg(it->label));
                             }
                         });
        m_page.show();
    }

    QWidget &page() { return m_page; }
    ComboMenu &menu() { return *m_menu; }
    Settings &settings() { return m_settings; }
    ShortcutKey &shortcutKey() { return *m_page.findChild<ShortcutKey *>(); }
    MidiMenu &midiMenu() { return *m_page.findChild<MidiMenu *>(); }

    /// What was reported, each as "layer: key1 key2 key3 label".
    QStringList assignments() const { return m_assignments; }
    void takeAssignments() { m_assignments.clear(); }

    /// What the settings file on the disk says.
    QVariant stored(const QString &key)
    {
        const std::unique_ptr<QSettings> file = settingsFile();
        return file->value(key);
    }

    /// All of it whose keys begin with @p prefix, without the prefix.
    QMap<QString, QString> storedUnder(const QString &prefix)
    {
        const std::unique_ptr<QSettings> file = settingsFile();
        QMap<QString, QString> found;
        const QStringList keys = file->allKeys();
        for (const QString &key : keys) {
            if (key.startsWith(prefix)) {
                found.insert(key.mid(prefix.size()), file->value(key).toString());
            }
        }
        return found;
    }

private:
    // A copy, read from nothing but the file: an open store would be shared within the program.
    std::unique_ptr<QSettings> settingsFile()
    {
        m_settings.sync();
        const QString copy = m_folder.filePath(QStringLiteral("copy%1.ini").arg(++m_copies));
        QFile::copy(m_settings.fileName(), copy);
        return std::make_unique<QSettings>(copy, QSettings::IniFormat);
    }

    QTemporaryDir m_folder;
    Settings m_settings{m_folder.filePath(QStringLiteral("settings.ini"))};
    int m_copies = 0;
    QObject m_link;
    QWidget m_page;
    ComboMenu *m_menu = nullptr;
    QStringList m_assignments;
};
