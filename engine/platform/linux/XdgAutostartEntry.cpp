#include "engine/platform/linux/XdgAutostartEntry.h"

#include "engine/platform/PlatformLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <cerrno>
#include <unistd.h>

namespace
{

QString autostartFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QLatin1String("/autostart");
}

QByteArray contentsFor(const QString &program)
{
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Veltrix\n"
           "Comment=Keys, pointer and MIDI from the control surface\n"
           "Icon=veltrix\n"
           "Exec=" +
           XdgAutostartEntry::execValue(program).toUtf8() +
           "\n"
           "Terminal=false\n"
           "StartupNotify=false\n";
}

/// The new contents are on the disk, whole, before they take the old ones' place: commit() alone would rename
/// whatever became of its own flush.
bool replace(QSaveFile &file, const QByteArray &contents)
{
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.flush()) {
        return false;
    }
    if (::fsync(file.handle()) != 0 && errno != EINVAL) {
        file.cancelWriting();
        qCWarning(lcPlatform).noquote() << "the disk does not take it:" << qt_error_string(errno);
    }
    return file.commit();
}

/// Whether a line of the main group says that the desktop skips the entry.
bool switchesOff(const QByteArray &line)
{
    const int equals = line.indexOf('=');
    const QByteArray key = line.left(equals).trimmed();
    const QByteArray value = line.mid(equals + 1).trimmed();
    return (key == "Hidden" && value == "true") || (key == "X-GNOME-Autostart-enabled" && value == "false");
}

} // namespace

XdgAutostartEntry::XdgAutostartEntry()
    : XdgAutostartEntry(autostartFolder())
{
}

XdgAutostartEntry::XdgAutostartEntry(const QString &folder)
    : m_path(folder + QLatin1String("/veltrix.desktop"))
{
}

bool XdgAutostartEntry::exists() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    bool inMainGroup = false;
    bool hasMainGroup = false;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine(4096).trimmed();
        if (line.startsWith('[')) {
            inMainGroup = line == "[Desktop Entry]";
            hasMainGroup = hasMainGroup || inMainGroup;
        } else if (inMainGroup && line.contains('=') && switchesOff(line)) {
            return false;
        }
    }
    return hasMainGroup;
}

void XdgAutostartEntry::write(const QString &program)
{
    const QByteArray contents = contentsFor(program);
    QFile current(m_path);
    if (current.open(QIODevice::ReadOnly) && current.readAll() == contents) {
        return;
    }
    current.close();
    QSaveFile file(m_path);
    if (!QDir().mkpath(QFileInfo(m_path).path()) || !replace(file, contents)) {
        qCWarning(lcPlatform).noquote()
            << "cannot write the autostart entry" << m_path + QLatin1Char(':') << file.errorString();
    }
}

void XdgAutostartEntry::remove()
{
    QFile file(m_path);
    if (QFileInfo(m_path).isSymLink() || file.exists()) {
        if (!file.remove()) {
            qCWarning(lcPlatform).noquote()
                << "cannot remove the autostart entry" << m_path + QLatin1Char(':') << file.errorString();
        }
    }
}

QString XdgAutostartEntry::execValue(const QString &program)
{
    QString value = QStringLiteral("\"");
    for (const QChar character : program) {
        // The quoted argument escapes with one backslash, and the value around it doubles every backslash.
        if (character == QLatin1Char('\\')) {
            value += QLatin1String("\\\\\\\\");
        } else if (character == QLatin1Char('"') || character == QLatin1Char('`') ||
                   character == QLatin1Char('$')) {
            value += QLatin1String("\\\\") + character;
        } else if (character == QLatin1Char('%')) {
            value += QLatin1String("%%");
        } else if (character == QLatin1Char('\n')) {
            value += QLatin1String("\\n");
        } else if (character == QLatin1Char('\t')) {
            value += QLatin1String("\\t");
        } else if (character == QLatin1Char('\r')) {
            value += QLatin1String("\\r");
        } else {
            value += character;
        }
    }
    return value + QLatin1Char('"');
}
