#include "app/TravelCommands.h"

#include "app/DataDirectory.h"
#include "app/SingleApplication.h"
#include "app/StartLock.h"
#include "engine/platform/Session.h"
#include "mapping/ImportedMappings.h"
#include "mapping/MappingExport.h"
#include "remote/RemoteClient.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace
{

// As a start of the program leaves them.
MappingFiles preparedFiles()
{
    const QString data = DataDirectory::path();
    const QString seeds = QCoreApplication::applicationDirPath();
    DataDirectory::prepare(data, seeds);
    return MappingFiles(data, seeds);
}

QString say(const char *text)
{
    return QCoreApplication::translate("TravelCommands", text);
}

} // namespace

int TravelCommands::importFile(const CommandCall &call)
{
    const QString path = QFileInfo(call.values.constFirst()).absoluteFilePath();
    // No copy begins to run, and to read the files, meanwhile.
    const StartLock lock(SingleApplication::guardKey());
    const RemoteAnswer answer =
        RemoteClient::ask({QStringLiteral("import"), {path}, false}, Session::userMark());
    if (answer.status != RemoteClient::notRunning) {
        return Commands::answer(answer.status, answer.text);
    }
    const ImportedMappings::Outcome outcome = ImportedMappings::import(path, preparedFiles());
    return Commands::answer(outcome.names.isEmpty() ? 1 : 0, outcome.sentence);
}

int TravelCommands::exportMapping(const CommandCall &call)
{
    const QString &name = call.values.at(0);
    const QString path = QFileInfo(call.values.at(1)).absoluteFilePath(); // the current folder changes
    const auto map = MappingExport::find(name, preparedFiles());
    if (!map) {
        return Commands::answer(
            1, say(QT_TRANSLATE_NOOP("TravelCommands", "There is no mapping \u201c%1\u201d.")).arg(name));
    }
    if (QFileInfo::exists(path) || QFileInfo(path).isSymLink()) {
        return Commands::answer(
            1,
            say(QT_TRANSLATE_NOOP("TravelCommands", "\u201c%1\u201d was not exported: %2 is there already."))
                .arg(name, path));
    }
    const FileResult result = MappingExport::write(*map, path);
    return result ? 0
                  : Commands::answer(
                        1, say(QT_TRANSLATE_NOOP("TravelCommands", "\u201c%1\u201d was not exported: %2."))
                               .arg(name, result.inWords()));
}
