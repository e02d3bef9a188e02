#include "app/SettingsPlace.h"

#include "app/AppLog.h"
#include "app/DataDirectory.h"
#include "mapping/BrokenFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

#include <filesystem>
#include <tuple>

namespace
{

constexpr int hexadecimal = 16;
constexpr int octal = 8;

int digitOf(char c, int base)
{
    const int digit = c >= '0' && c <= '9'   ? c - '0'
                      : c >= 'a' && c <= 'f' ? c - 'a' + 10
                      : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                             : base;
    return digit < base ? digit : -1;
}

// @p content as the toolkit takes its values, more or less: escape sequences stand for characters, and
// neither quotes nor what is escaped without a need are seen.
QByteArray withoutEscapes(const QByteArray &content)
{
    QByteArray plain;
    plain.reserve(content.size());
    for (int i = 0; i < content.size(); ++i) {
        if (content.at(i) == '"') {
            continue;
        }
        if (content.at(i) != '\\') {
            plain.append(content.at(i));
            continue;
        }
        const char escaped = ++i < content.size() ? content.at(i) : '\0';
        const int base = escaped == 'x' ? hexadecimal : octal;
        int at = escaped == 'x' ? i + 1 : i;
        ushort code = 0; // as the toolkit's, whose higher digits go
        bool isNumber = false;
        for (; at < content.size() && digitOf(content.at(at), base) >= 0; ++at) {
            code = static_cast<ushort>(code * base + digitOf(content.at(at), base));
            isNumber = true;
        }
        if (isNumber) {
            plain.append(static_cast<char>(code)); // what is cut off only makes the check stricter
            i = at - 1;
        }
    }
    return plain;
}

// Whether the toolkit makes something of all of @p file.
bool isWhole(const QString &file)
{
    const QSettings settings(file, QSettings::NativeFormat);
    std::ignore = settings.allKeys(); // sections are looked at when they are needed
    return settings.status() != QSettings::FormatError;
}

} // namespace

SettingsPlace::SettingsPlace(const QString &organisation, const QString &application)
    : m_file(QStringLiteral("%1/%2/%3.conf")
                 .arg(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation), organisation,
                      application))
{
    const QFileInfo there(m_file);
    QDir().mkpath(there.path());
    DataDirectory::closeToOthers(there.path());
    if (!there.exists()) {
        std::error_code error;
        std::ignore = std::filesystem::status(m_file.toStdU16String(), error);
        if (error == std::errc::too_many_symbolic_link_levels) {
            keepNothing(
                QStringLiteral("a link that leads in a circle")); // the toolkit would replace a part of it
        }
        return;
    }
    if (there.isFile()) {
        check();
    } else {
        keepNothing(QStringLiteral("no regular file"));
    }
}

void SettingsPlace::keepNothing(const QString &reason)
{
    qCWarning(lcApp).noquote() << "settings are not kept:" << m_file << "is" << reason;
    m_instead = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_instead->path());
}

void SettingsPlace::check()
{
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) {
        return; // the toolkit cannot read it either
    }
    const QByteArray content = file.read(maximumSize + 1);
    file.close();
    if (content.size() > maximumSize) {
        setAside(QStringLiteral("larger than %1 bytes").arg(maximumSize));
    } else if (holdsObjects(content)) {
        setAside(QStringLiteral("not of this program's making"));
    } else if (!isWhole(m_file)) {
        qCWarning(lcApp).noquote() << "settings: parts of" << m_file << "are no settings";
        if (!BrokenFile::copyAside(m_file, content)) {
            keepNothing(QStringLiteral("no file of settings, and cannot be copied"));
        }
    }
}

void SettingsPlace::setAside(const QString &reason)
{
    constexpr int mostCopies = 100;
    for (int number = 1; number <= mostCopies; ++number) {
        const QString aside = BrokenFile::copyName(m_file, number);
        if (QFile::rename(m_file, aside)) { // not where there is one already
            qCWarning(lcApp).noquote()
                << "settings begin anew:" << m_file << "is" << reason << "and was set aside as" << aside;
            return;
        }
    }
    keepNothing(reason);
}

bool SettingsPlace::holdsObjects(const QByteArray &content)
{
    const QByteArray plain = withoutEscapes(content);
    return plain.contains("@Variant(") || plain.contains("@DateTime(");
}
