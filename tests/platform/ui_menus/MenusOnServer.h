#pragma once

#include "app/frame/AppFonts.h"
#include "engine/Settings.h"
#include "tests/support/xserver/XClient.h"
#include "tests/support/xserver/XServer.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"

#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// The device page's menus around its drawing, on an X server, and a user with a mouse and a keyboard.
class MenusOnServer
{
protected:
    explicit MenusOnServer(const XServer &server)
        : m_server(server)
    {
    }

    void beginAll()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("veltrix-test"));
        QCoreApplication::setApplicationName(QStringLiteral("menus"));
        AppFonts::load();
    }
    void begin()
    {
        m_user = std::make_unique<XClient>(m_server.display());
        m_user->moveMouse({5, 5});
        m_page = std::make_unique<QWidget>();
        m_page->setAttribute(Qt::WA_StyledBackground);
        m_page->setStyleSheet(QStringLiteral("background-color:#5342d9"));
        m_page->resize(900, 650);
        m_page->move(50, 50);
        auto *drawing = new QLabel(m_page.get());
        drawing->setGeometry(248, 258, 402, 192);
        drawing->setStyleSheet(QStringLiteral("background-image: url(:/icons/zr.png)"));
        m_menus.clear();
        for (int control = 0; control < ActionTable::controlCount; ++control) {
            auto *menu = new ComboMenu(control, &m_link, m_page.get(), m_settings);
            menu->setGeometry(control < 5 ? 88 : 650, 239 + 47 * (control % 5), 160, 41);
            m_menus.append(menu);
        }
        m_selector = new ComboMapping(m_page.get());
        m_selector->setGeometry(680, 12, 160, 51);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_page.get()));
        m_page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }
    void end() { m_page.reset(); }

    const XServer &m_server;
    std::unique_ptr<XClient> m_user;
    QTemporaryDir m_folder;
    Settings m_settings{m_folder.filePath(QStringLiteral("settings.ini"))};
    QObject m_link;
    std::unique_ptr<QWidget> m_page;
    QList<ComboMenu *> m_menus;
    ComboMapping *m_selector = nullptr;
};
