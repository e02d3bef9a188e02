#pragma once

#include "engine/platform/xkb/XkbKeymap.h"

#include <QByteArray>
#include <QObject>
#include <QString>

struct xkb_context;

/// The keymap of the session: the compositor's while it is known, else what XKB_DEFAULT_RULES and its like
/// say, else the system's keyboard file, else "us". Knows no display.
class SessionKeymap : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SessionKeymap)

public:
    /// @p systemFile is where the system's keyboard is set: lines such as XKBLAYOUT="de".
    explicit SessionKeymap(const QString &systemFile = QStringLiteral("/etc/default/keyboard"));
    ~SessionKeymap() override;

    /// Takes over a keymap as compositors send it, as text. One that cannot be read is logged and changes
    /// nothing.
    void setText(const QByteArray &text);

    /// What has to be pressed for which symbol. Compiles the keymap when it is first asked for.
    KeyboardMap map(bool numLock);

    /// Where the keymap in use is from, for the log: "the compositor", "XKB_DEFAULT_LAYOUT", a file, "us".
    const QString &source() const { return m_source; }

Q_SIGNALS:
    void changed();

private:
    struct Unref {
        void operator()(xkb_context *context) const;
    };

    xkb_context *context();
    XkbKeymap compileDefault();

    const QString m_systemFile;
    std::unique_ptr<xkb_context, Unref> m_context;
    std::unique_ptr<XkbKeymap> m_keymap;
    QByteArray m_text;
    QString m_source;
};
