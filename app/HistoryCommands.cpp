#include "app/HistoryCommands.h"

#include "app/DataDirectory.h"
#include "app/SettingsPlace.h"
#include "app/SingleApplication.h"
#include "app/StartLock.h"
#include "app/frame/AppInfo.h"
#include "engine/Settings.h"
#include "engine/platform/Session.h"
#include "mapping/FileHistory.h"
#include "mapping/ListInWords.h"
#include "mapping/MappingDocument.h"
#include "mapping/MappingFile.h"
#include "mapping/VersionRestore.h"
#include "remote/RemoteClient.h"
#include "ui/MappingInUse.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QFileInfo>

#include <algorithm>

namespace
{

QString say(const char *text)
{
    return QCoreApplication::translate("HistoryCommands", text);
}

// A terminal obeys some characters.
QString printable(QString text)
{
    const auto odd = [](QChar character) { return !character.isPrint(); };
    text.truncate(60);
    std::replace_if(text.begin(), text.end(), odd, QLatin1Char('?'));
    return text;
}

QString contentInWords(const QString &path)
{
    const MappingFile::ReadResult file = MappingFile::read(path);
    QDomDocument document;
    QString reason = file.reason;
    if (file.status != MappingFile::Status::Read ||
        MappingDocument::parse(file.bytes, &document, &reason) != MappingDocument::Outcome::Parsed) {
        return say(QT_TRANSLATE_NOOP("HistoryCommands", "damaged: %1"))
            .arg(FileResult::failed(reason).inWords());
    }
    const QDomNodeList mappings = document.elementsByTagName(QStringLiteral("MAPPING"));
    QStringList names;
    for (int i = 0; i < std::min(mappings.size(), ListInWords::most); ++i) {
        const QDomElement mapping = mappings.at(i).toElement();
        names << printable(
            mapping.attribute(QStringLiteral("title"), mapping.attribute(QStringLiteral("software"))));
    }
    if (mappings.size() > ListInWords::most) {
        names << QString(QChar(0x2026));
    }
    return QStringLiteral("%1: %2").arg(mappings.size()).arg(names.join(QLatin1String(", ")));
}

// While no copy of the program runs.
FileResult restoreHere(const QString &version, const MappingFiles &files)
{
    FileResult result = VersionRestore::restore(version, files);
    if (result && VersionRestore::fileOf(version, files) == files.workingCopy()) {
        const SettingsPlace place{QLatin1String(AppInfo::organisationName),
                                  QLatin1String(AppInfo::applicationName)};
        Settings(QLatin1String(AppInfo::organisationName), QLatin1String(AppInfo::applicationName))
            .remove(QLatin1String(MappingInUse::noteKey)); // the name was of what is replaced
    }
    return result;
}

} // namespace

int HistoryCommands::list(const CommandCall & /*call*/)
{
    const MappingFiles files(DataDirectory::path());
    const QVector<FileHistory::Version> versions = FileHistory::versions(files.custom()) +
                                                   FileHistory::versions(files.workingCopy()) +
                                                   FileHistory::versions(files.programs());
    if (versions.isEmpty()) {
        return Commands::answer(
            0, say(QT_TRANSLATE_NOOP("HistoryCommands", "There are no earlier versions yet.")));
    }
    QStringList lines;
    for (const FileHistory::Version &version : versions) {
        lines << QStringLiteral("%1  %2  %3")
                     .arg(version.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                          QFileInfo(version.path).fileName(), contentInWords(version.path));
    }
    lines.sort(); // by time
    std::reverse(lines.begin(), lines.end());
    return Commands::answer(0, lines.join(QLatin1Char('\n')));
}

int HistoryCommands::restore(const CommandCall &call)
{
    const MappingFiles files(DataDirectory::path());
    const QString version =
        QFileInfo(VersionRestore::find(call.values.constFirst(), files)).absoluteFilePath();
    // The running copy holds what the files held, and would write that again. None begins to run meanwhile.
    const StartLock lock(SingleApplication::guardKey());
    RemoteAnswer answer =
        RemoteClient::ask({QStringLiteral("restore"), {version}, false}, Session::userMark());
    if (answer.status == RemoteClient::notRunning) {
        answer = answerTo(version, restoreHere(version, files));
    }
    return Commands::answer(answer.status, answer.text);
}

RemoteAnswer HistoryCommands::answerTo(const QString &version, const FileResult &result)
{
    if (!result) {
        return {1, say(QT_TRANSLATE_NOOP("HistoryCommands", "%1 was not brought back: %2."))
                       .arg(version, result.inWords())};
    }
    return {0, say(QT_TRANSLATE_NOOP("HistoryCommands",
                                     "%1 is back. What was there before is in the history now."))
                   .arg(QFileInfo(version).fileName())};
}
