#include "engine/Settings.h"

#include "engine/EngineLog.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSet>

#include <algorithm>
#include <filesystem>

namespace
{

const QString versionKey = QStringLiteral("ZR.ver");

// A file's second name, where the file system has such a thing; else a copy, if there is room. Goes with the
// object.
class SecondName
{
    Q_DISABLE_COPY_MOVE(SecondName)

public:
    explicit SecondName(const QString &file)
        : m_file(QFileInfo::exists(file) ? QFileInfo(file).canonicalFilePath().toStdU16String()
                                         : file.toStdU16String())
        , m_second(m_file)
    {
        std::error_code error;
        m_second += ".veltrix-" + QByteArray::number(QRandomGenerator::global()->generate64(), 16)
                                      .rightJustified(16, '0')
                                      .toStdString();
        m_existed = std::filesystem::exists(m_file, error);
        if (!m_existed || !std::filesystem::is_regular_file(m_file, error)) {
            return;
        }
        std::filesystem::create_hard_link(m_file, m_second, error);
        if (error) {
            std::filesystem::copy_file(m_file, m_second, error);
        }
        if (error) {
            std::filesystem::remove(m_second, error); // a part of it
        }
    }

    ~SecondName()
    {
        std::error_code error;
        std::filesystem::remove(m_second, error);
    }

    // Has it take the file's place again. Where there was no file there is none then; where there could be no
    // second one, the file is left alone.
    void putBack() const
    {
        std::error_code error;
        if (!m_existed) {
            std::filesystem::remove(m_file, error);
        } else if (std::filesystem::exists(m_second, error)) {
            std::filesystem::rename(m_second, m_file, error);
        }
    }

private:
    std::filesystem::path m_file;
    std::filesystem::path m_second;
    bool m_existed = false;
};

} // namespace

Settings::Settings(const QString &organisation, const QString &application)
    : QSettings(organisation, application)
    , m_store(fileName(), format())
{
}

Settings::Settings(const QString &file)
    : QSettings(file, QSettings::IniFormat)
    , m_store(fileName(), format())
{
}

// Only a path that is no text makes it throw, and the toolkit gives none.
// NOLINTNEXTLINE(bugprone-exception-escape)
Settings::~Settings()
{
    write([this] { sync(); }, false);
}

bool Settings::write()
{
    write([this] { sync(); });
    return m_written;
}

// The base class writes with an event to itself.
bool Settings::event(QEvent *event)
{
    if (event->type() != QEvent::UpdateRequest) {
        return QSettings::event(event);
    }
    write([this, event] { QSettings::event(event); });
    return true;
}

// The toolkit has a new file take the old one's place even when the disk did not take its content, and says
// nothing. So the old file keeps a second name until the new one has been looked at. What is lost is set once
// more, without the event that follows: a full disk stays full, and only the next value, if there is to be an
// @p again, is a reason to try.
void Settings::write(const std::function<void()> &toolkitsWay, bool again)
{
    const SecondName old(fileName());
    m_store.sync();
    QVariantMap lost;
    if (!isWhole()) {
        const QStringList keys = m_store.allKeys();
        for (const QString &key : keys) {
            lost.insert(key, m_store.value(key));
        }
        old.putBack();
    }
    toolkitsWay(); // finds all done; an empty file it reads, and forgets its values
    const bool written = lost.isEmpty() && isWritable();
    if (again) {
        for (auto value = lost.cbegin(); value != lost.cend(); ++value) {
            m_store.setValue(value.key(), value.value());
        }
        QCoreApplication::removePostedEvents(&m_store);
    }
    if (written == m_written) {
        return;
    }
    m_written = written;
    if (!written) {
        qCWarning(lcEngine).noquote() << "The settings cannot be written:" << fileName();
    }
    Q_EMIT writtenChanged(written);
}

bool Settings::isWritable() const
{
    if (status() == QSettings::NoError) {
        return true;
    }
    // A status once bad stays so. Another look at the same store has one of its own, and tries again.
    QSettings again(fileName(), format());
    again.sync();
    return again.status() == QSettings::NoError;
}

bool Settings::isWhole() const
{
    QFile file(fileName());
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return true; // the system keeps the store elsewhere, or there is nothing in it
    }
    const QByteArray content = file.readAll();
    const QList<QByteArray> lines = content.split('\n');
    const QStringList stored = m_store.allKeys();
    QSet<QString> keys;
    for (const QString &key : stored) {
        keys.insert(key.startsWith(QLatin1Char('/')) ? key.mid(1) : key); // of a section without a name
    }
    const auto values = std::count_if(lines.begin(), lines.end(), [](const QByteArray &line) {
        return line.contains('=') && !line.startsWith('[');
    });
    return values == keys.size() && (content.isEmpty() || content.endsWith('\n'));
}

bool Settings::isOlder(const QSettings &store, const QString &version)
{
    return store.value(versionKey).toString() < version;
}

void Settings::setUsedBy(const QString &version)
{
    setValue(versionKey, version);
}
