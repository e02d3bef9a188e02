#include "engine/platform/uinput/SessionKeymap.h"

#include "engine/platform/PlatformLog.h"

#include <QFile>
#include <QHash>
#include <QRegularExpression>

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon.h>

namespace
{

constexpr quint32 firstKeycode = 8; // XKB's number for the kernel's 0

/// The settings of a file of shell variables.
QHash<QByteArray, QByteArray> readVariables(const QString &path)
{
    QHash<QByteArray, QByteArray> variables;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return variables;
    }
    static const QRegularExpression assignment(
        QStringLiteral("^\\s*(XKB[A-Z]+)\\s*=\\s*([\"']?)([^\"'#]*)\\2"));
    while (!file.atEnd()) {
        const auto match = assignment.match(QString::fromUtf8(file.readLine(4096)).trimmed());
        if (match.hasMatch()) {
            variables.insert(match.captured(1).toLatin1(), match.captured(3).trimmed().toUtf8());
        }
    }
    return variables;
}

} // namespace

void SessionKeymap::Unref::operator()(xkb_context *context) const
{
    xkb_context_unref(context);
}

SessionKeymap::SessionKeymap(const QString &systemFile)
    : m_systemFile(systemFile)
{
}

SessionKeymap::~SessionKeymap() = default;

xkb_context *SessionKeymap::context()
{
    if (!m_context) {
        m_context.reset(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    }
    return m_context.get();
}

void SessionKeymap::setText(const QByteArray &text)
{
    if (text == m_text) {
        return; // compositors send it again with every keyboard that comes
    }
    auto keymap = std::make_unique<XkbKeymap>(
        xkb_keymap_new_from_buffer(context(), text.constData(), size_t(text.size()),
                                   XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap->isValid()) {
        qCWarning(lcPlatform, "the compositor's keymap cannot be read");
        return;
    }
    m_text = text;
    m_keymap = std::move(keymap);
    m_source = QStringLiteral("the compositor");
    Q_EMIT changed();
}

XkbKeymap SessionKeymap::compileDefault()
{
    // The library takes what is not given from the environment, and what is not there is "us".
    const auto compile = [this](const xkb_rule_names &names) {
        return xkb_keymap_new_from_names(context(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    };
    if (!qEnvironmentVariableIsEmpty("XKB_DEFAULT_LAYOUT")) {
        if (xkb_keymap *keymap = compile({})) {
            m_source = QStringLiteral("XKB_DEFAULT_LAYOUT");
            return XkbKeymap(keymap);
        }
    }
    const QHash<QByteArray, QByteArray> variables = readVariables(m_systemFile);
    if (!variables.value("XKBLAYOUT").isEmpty()) {
        const QByteArray layout = variables.value("XKBLAYOUT");
        const QByteArray model = variables.value("XKBMODEL", "pc105");
        const QByteArray variant = variables.value("XKBVARIANT", "");
        const QByteArray options = variables.value("XKBOPTIONS", "");
        const xkb_rule_names names{"evdev", model.constData(), layout.constData(), variant.constData(),
                                   options.constData()};
        if (xkb_keymap *keymap = compile(names)) {
            m_source = m_systemFile;
            return XkbKeymap(keymap);
        }
        qCWarning(lcPlatform).noquote() << "no keyboard layout as" << m_systemFile << "has it";
    }
    m_source = QStringLiteral("us");
    return XkbKeymap(compile({"evdev", "pc105", "us", "", ""}));
}

KeyboardMap SessionKeymap::map(bool numLock)
{
    if (!m_keymap) {
        m_keymap = std::make_unique<XkbKeymap>(compileDefault());
        qCInfo(lcPlatform).noquote() << "the compositor's keymap is not known; the one in use is from"
                                     << m_source;
    }
    const XkbKeymap::Keycodes all = XkbKeymap::Keycodes().set(); // nothing can be put on a keycode here
    KeyboardMap map = m_keymap->map({}, all);
    if (numLock) {
        map = m_keymap->map({0, map.numLockMask(), map.numLockMask()}, all);
    }
    // Most layouts put other symbols on these keys; a keyboard that has them sends them all the same.
    for (quint32 i = 0; i <= XKB_KEY_F24 - XKB_KEY_F13; ++i) {
        if (map.find(XKB_KEY_F13 + i).keycode == 0) {
            map.add(XKB_KEY_F13 + i, {quint8(firstKeycode + KEY_F13 + i), true, 0});
        }
    }
    return map;
}
