#pragma once

#include "tests/support/page/PageRig.h"
#include "ui/ComboMenu.h"

#include <QWidget>

#include <memory>

/// The device page in a window of its size, with a device that the test plays.
class PageInWindow
{
protected:
    /// The page comes with makePage(), after what is to lie in its folder.
    void begin()
    {
        m_rig = std::make_unique<PageRig>();
        m_serial = PageRig::makeSerial();
        m_window = std::make_unique<QWidget>();
        m_window->resize(900, 650);
    }
    void end()
    {
        m_window.reset();
        m_serial.reset();
        m_rig.reset();
    }
    void makePage()
    {
        m_page = m_rig->makePage(m_window.get(), m_serial.get(), nullptr);
        m_page->resize(900, 650);
        m_window->show();
    }
    void press(int button)
    {
        Q_EMIT m_serial->onButtonpress(button, true);
        Q_EMIT m_serial->onButtonpress(button, false);
    }
    ComboMenu *menu(int control) const
    {
        for (ComboMenu *each : m_page->findChildren<ComboMenu *>()) {
            if (each->id() == control) {
                return each;
            }
        }
        return nullptr;
    }

    std::unique_ptr<PageRig> m_rig;
    std::unique_ptr<SerialProtocol> m_serial;
    std::unique_ptr<QWidget> m_window;
    DeviceZR *m_page = nullptr;
};
