#pragma once

#include <QByteArray>
#include <QRect>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QVector>

#include <memory>

struct wl_client;
struct wl_display;
struct wl_global;
struct wl_resource;

/// A Wayland compositor without a screen, as far as a client without a window sees one: a seat with a
/// keyboard, and outputs. It listens on a socket of its own and lives on the test's event loop.
class TestCompositor
{
    Q_DISABLE_COPY_MOVE(TestCompositor)

public:
    enum Option { Everything, WithoutLogicalOutputs, WithoutKeyboard };

    /// @p socket is the path that clients connect to.
    TestCompositor(const QByteArray &socket, const QByteArray &keymap, const QVector<QRect> &outputs,
                   Option option = Everything);
    ~TestCompositor();

    /// Sends another keymap to whoever has bound the keyboard.
    void setKeymap(const QByteArray &keymap);

    void addOutput(const QRect &geometry);
    void removeLastOutput();

    /// Gives the seat a keyboard, or takes it away.
    void setHasKeyboard(bool has);

    int keyboardsBound() const { return m_keyboards.size(); }

    // Called by the library.
    struct Output {
        TestCompositor *compositor;
        QRect geometry;
        wl_global *global;
    };
    void bindSeat(wl_client *client, quint32 version, quint32 id);
    void bindKeyboard(wl_client *client, wl_resource *seat, quint32 id);
    void forget(wl_resource *resource);
    void bindOutput(wl_client *client, quint32 version, quint32 id, Output &output);
    void bindManager(wl_client *client, quint32 version, quint32 id);

private:
    void sendKeymap(wl_resource *keyboard);
    void flush();

    wl_display *m_display;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_keymap;
    bool m_hasKeyboard;
    QVector<wl_resource *> m_seats;
    QVector<wl_resource *> m_keyboards;
    std::vector<std::unique_ptr<Output>> m_outputs;
};
