// Carries out one thing that writes files, for the campaign power-cut, and says what came of it.
//
//   file_actions FOLDER ACTION    FOLDER holds data/, seeds/, and config/; the file operations of the action
//   itself
//                                 are counted or disturbed by file_faults, what comes before is not; between
//                                 the two the command FILE_ACTIONS_THEN is run, if there is one
//   file_actions FOLDER start     what a start of the program does to the files, and what it finds
//   file_actions FOLDER loop SEED one action after the other, for ever

#include "app/DataDirectory.h"
#include "app/Leftovers.h"
#include "engine/Settings.h"
#include "engine/platform/linux/XdgAutostartEntry.h"
#include "mapping/FileHistory.h"
#include "mapping/LibraryKeeper.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingSession.h"
#include "mapping/ProgramMappings.h"

#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

#include <cstdlib>
#include <dlfcn.h>
#include <functional>
#include <map>
#include <random>

namespace
{

void say(const QString &line)
{
    QTextStream(stdout) << line << Qt::endl;
}

void armFaults()
{
    if (void *arm = dlsym(RTLD_DEFAULT, "file_faults_arm"); arm != nullptr) {
        reinterpret_cast<void (*)()>(arm)();
    }
    if (const QByteArray command = qgetenv("FILE_ACTIONS_THEN"); !command.isEmpty()) {
        if (std::system(command.constData()) < 0) {
            say(QStringLiteral("no shell"));
        }
    }
}

shortCut key(qint32 code)
{
    shortCut action;
    action.key1 = code;
    action.key2 = -1;
    action.key3 = -1;
    return action;
}

// A user's files, and the program's parts that write them.
class Desk
{
public:
    explicit Desk(const QString &folder)
        : m_folder(folder)
        , m_session(MappingFiles(path("data"), path("seeds")))
        , m_programs(m_session)
    {
    }

    QString path(const char *name) const { return m_folder + QLatin1Char('/') + QLatin1String(name); }
    MappingSession &session() { return m_session; }
    ProgramMappings &programs() { return m_programs; }

    // What main() does before the first window.
    void start()
    {
        DataDirectory::prepare(path("data"), path("seeds"));
        Leftovers::clearBesideSettings(path("config/settings.conf"));
        const MappingFiles &files = m_session.files();
        for (const QString &file : {files.library(), files.custom(), files.workingCopy(), files.programs(),
                                    path("config/settings.conf")}) {
            MappingFile::removeUnfinished(file);
        }
        load();
    }

    void load()
    {
        m_session.load([this] { m_session.use(*m_session.defaultMapping()); }, [] { return ActionTable(); });
        m_programs.load();
    }

    // What the page would show.
    QString shown() const
    {
        QStringList names;
        for (const ZRButtonMap *map : m_session.custom()) {
            names << map->name;
        }
        return QStringLiteral("own %1; library %2; button 3 %3; %4")
            .arg(names.join(QLatin1Char(',')))
            .arg(m_session.library().size())
            .arg(m_session.action(3, Layer::Normal).key1)
            .arg(m_session.isKept() ? QLatin1String("kept") : QLatin1String("not kept"));
    }

private:
    const QString m_folder;
    MappingSession m_session;
    ProgramMappings m_programs;
};

struct Action {
    std::function<void(Desk &)> before; // undisturbed
    std::function<FileResult(Desk &)> run;
};

FileResult asResult(bool done)
{
    return done ? FileResult::done() : FileResult::failed(QStringLiteral("it is not stored"));
}

FileResult restoreNewest(Desk &desk)
{
    const QVector<FileHistory::Version> versions = FileHistory::versions(desk.session().files().custom());
    return versions.isEmpty() ? FileResult::failed(QStringLiteral("no version"))
                              : desk.session().restore(versions.constFirst().path);
}

const std::map<QString, Action> &actions()
{
    const auto nothing = [](Desk &) {};
    const auto load = [](Desk &desk) { desk.load(); };
    const auto assign = [](Desk &desk) {
        desk.load();
        desk.session().assign(3, Layer::Normal, key(0x51));
    };
    static const std::map<QString, Action> all{
        {QStringLiteral("prepare"),
         {nothing,
          [](Desk &desk) {
              DataDirectory::prepare(desk.path("data"), desk.path("seeds"));
              return FileResult::done();
          }}},
        {QStringLiteral("keep"), {assign, [](Desk &desk) { return desk.session().keep(); }}},
        {QStringLiteral("save"),
         {assign, [](Desk &desk) { return desk.session().saveAs(QStringLiteral("New")); }}},
        {QStringLiteral("remove"),
         {load, [](Desk &desk) { return desk.session().remove(QStringLiteral("Two")); }}},
        {QStringLiteral("take-back"),
         {[](Desk &desk) {
              desk.load();
              desk.session().remove(QStringLiteral("Two"));
          },
          [](Desk &desk) { return desk.session().takeBack(); }}},
        {QStringLiteral("restore"),
         {[](Desk &desk) {
              desk.load();
              desk.session().remove(QStringLiteral("Two"));
          },
          restoreNewest}},
        {QStringLiteral("program"),
         {load,
          [](Desk &desk) { return desk.programs().give(QStringLiteral("gimp"), QStringLiteral("GIMP")); }}},
        {QStringLiteral("library"),
         {nothing,
          [](Desk &desk) {
              const QString library = desk.session().files().library();
              LibraryKeeper::restore(library, desk.session().files().seedLibrary());
              return LibraryKeeper::keep(library, 1);
          }}},
        {QStringLiteral("settings"),
         {nothing,
          [](Desk &desk) {
              Settings settings(desk.path("config/settings.conf"));
              settings.setValue(QStringLiteral("Extra.one"), 1);
              return asResult(settings.write());
          }}},
        {QStringLiteral("log-on"),
         {nothing,
          [](Desk &desk) {
              XdgAutostartEntry entry(desk.path("config/autostart"));
              entry.write(QStringLiteral("/usr/bin/veltrix"));
              return asResult(entry.exists());
          }}},
        {QStringLiteral("no-log-on"),
         {[](Desk &desk) {
              XdgAutostartEntry(desk.path("config/autostart")).write(QStringLiteral("/usr/bin/veltrix"));
          },
          [](Desk &desk) {
              XdgAutostartEntry entry(desk.path("config/autostart"));
              entry.remove();
              return asResult(!entry.exists());
          }}},
    };
    return all;
}

// Says before each step what it leads to, and after it that it has.
[[noreturn]] void loop(Desk &desk, unsigned seed)
{
    std::mt19937 numbers(seed);
    desk.start();
    MappingSession &session = desk.session();
    for (int step = 0;; ++step) {
        if (session.custom().size() > 8) {
            say(QStringLiteral("removes ") + session.custom().constFirst()->name);
            session.remove(session.custom().constFirst()->name);
        } else if (numbers() % 2 == 0) {
            session.assign(3, Layer::Normal, key(static_cast<qint32>(0x41 + numbers() % 26)));
            say(QStringLiteral("keeps ") + QString::number(session.action(3, Layer::Normal).key1));
            session.keep();
        } else if (numbers() % 3 == 0) {
            say(QStringLiteral("takes back"));
            session.takeBack();
        } else {
            const QString name = QStringLiteral("Step%1").arg(step);
            say(QStringLiteral("saves ") + name);
            session.saveAs(name);
        }
        say(QStringLiteral("shows ") + desk.shown());
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        return 2;
    }
    Desk desk(arguments[1]);
    if (arguments[2] == QLatin1String("start")) {
        armFaults();
        desk.start();
        say(desk.shown());
        return 0;
    }
    if (arguments[2] == QLatin1String("loop") && arguments.size() == 4) {
        loop(desk, arguments[3].toUInt());
    }
    const auto action = actions().find(arguments[2]);
    if (action == actions().end()) {
        for (const auto &each : actions()) {
            say(each.first);
        }
        return 2;
    }
    action->second.before(desk);
    armFaults();
    const FileResult result = action->second.run(desk);
    say(result ? QStringLiteral("done") : QStringLiteral("failed: ") + result.reason());
    return 0;
}
