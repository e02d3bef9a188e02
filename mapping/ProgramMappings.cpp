#include "mapping/ProgramMappings.h"

#include "mapping/MappingLog.h"

#include <QCoreApplication>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>
#include <vector>

ProgramMappings::ProgramMappings(MappingSession &session, QObject *parent)
    : QObject(parent)
    , m_session(session)
    , m_path(session.files().programs())
{
    connect(&session, &MappingSession::assigned, this, &ProgramMappings::keepByItself);
    connect(&session, &MappingSession::replaced, this, &ProgramMappings::keepByItself);
    connect(&session, &MappingSession::stepped, this, [this](const MappingStep &step) {
        if (step.kind == MappingStep::Kind::Save) {
            keepByItself(); // it has a name now
        }
    });
    connect(&session, &MappingSession::programsAdded, this, &ProgramMappings::takeAdded);
    connect(&session, &MappingSession::programsRestored, this, &ProgramMappings::takeRestored);
    connect(&session, &MappingSession::generalNeeded, this, [this] { use(QString()); });
    session.setProgramsKeeper([this] { return settle(); });
    m_editRest.setSingleShot(true);
    m_editRest.setInterval(editRest);
    connect(&m_editRest, &QTimer::timeout, this, &ProgramMappings::finishEdit);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &ProgramMappings::finishEdit);
}

ProgramMappings::~ProgramMappings()
{
    finishEdit();
    m_session.setProgramsKeeper([] { return FileResult::done(); });
}

FileResult ProgramMappings::load()
{
    for (const ProgramsFile::Entry &entry : readFile()) {
        m_own[entry.program] = own(entry);
    }
    if (!m_own.empty()) {
        Q_EMIT changed();
    }
    return m_read;
}

std::vector<ProgramsFile::Entry> ProgramMappings::readFile()
{
    ProgramsFile::Content content = ProgramsFile::read(m_path);
    m_read = content.result;
    m_mayWrite = content.mayBeWritten;
    return std::move(content.entries);
}

ProgramMappings::Own ProgramMappings::own(const ProgramsFile::Entry &entry)
{
    const MappingSession::State state{entry.actions, entry.name, entry.actions};
    return {entry.title, entry.acts, state, aside(state)};
}

void ProgramMappings::takeAdded()
{
    for (const ProgramsFile::Entry &entry : readFile()) {
        const auto here = m_own.find(entry.program);
        if (here == m_own.end() || (entry.acts && !here->second.acts)) {
            m_own.insert_or_assign(entry.program, own(entry));
        } // else it is what is here, with its steps
    }
    Q_EMIT changed();
    Q_EMIT arrived();
}

void ProgramMappings::takeRestored()
{
    m_own.clear();
    m_unwritten = false;
    for (const ProgramsFile::Entry &entry : readFile()) {
        m_own[entry.program] = own(entry);
    }
    if (!m_inUse.isEmpty()) {
        const QScopedValueRollback<bool> exchanging(m_exchanging, true);
        if (!has(m_inUse)) {
            m_inUse.clear();
        }
        // What was in use is of what is gone.
        m_session.exchange(std::exchange(placeOf(m_inUse), MappingSession::Aside()));
    }
    Q_EMIT changed();
    Q_EMIT arrived();
}

MappingSession::Aside ProgramMappings::aside(const MappingSession::State &state)
{
    return {state, {}, [this] { return write(); }};
}

bool ProgramMappings::areUsed() const
{
    return std::any_of(m_own.begin(), m_own.end(), [](const auto &own) { return own.second.acts; });
}

bool ProgramMappings::has(const QString &program) const
{
    const auto own = m_own.find(program);
    return own != m_own.end() && own->second.acts;
}

QString ProgramMappings::titleInUse() const
{
    const auto own = m_own.find(m_inUse);
    return own == m_own.end() ? QString() : own->second.title;
}

void ProgramMappings::use(const QString &program)
{
    const QString next = has(program) ? program : QString();
    if (next != m_inUse) {
        exchangeFor(next);
        Q_EMIT changed();
    }
}

MappingSession::Aside &ProgramMappings::placeOf(const QString &program)
{
    return program.isEmpty() ? m_general : m_own.at(program).aside;
}

void ProgramMappings::exchangeFor(const QString &program)
{
    finishEdit();
    // While the session tells of the exchange, what was in use is in neither place: nothing may be written
    // then.
    const QScopedValueRollback<bool> exchanging(m_exchanging, true);
    MappingSession::Aside &place = placeOf(m_inUse);
    MappingSession::Aside next = std::exchange(placeOf(program), MappingSession::Aside());
    m_inUse = program;
    place = m_session.exchange(std::move(next));
    qCDebug(lcMapping).noquote() << "In use is the mapping for"
                                 << (program.isEmpty() ? QStringLiteral("all programs") : program);
}

FileResult ProgramMappings::give(const QString &program, const QString &title)
{
    if (program.isEmpty() || has(program)) {
        return FileResult::done();
    }
    const auto own = m_own.find(program);
    if (own == m_own.end()) {
        const ActionTable notYet;
        m_own[program] = {title, true, {}, aside({m_session.actions(), m_session.name(), notYet})};
    } else {
        own->second.acts = true;
    }
    exchangeFor(program);
    FileResult result = m_session.keep();
    Q_EMIT changed();
    return result;
}

FileResult ProgramMappings::take(const QString &program)
{
    if (!has(program)) {
        return FileResult::done();
    }
    if (program == m_inUse) {
        exchangeFor(QString());
    }
    m_own.at(program).acts = false;
    FileResult result = write();
    Q_EMIT changed();
    return result;
}

void ProgramMappings::keepByItself()
{
    if (m_exchanging || m_inUse.isEmpty()) {
        return;
    }
    const MappingSession::State &onDisk = m_own.at(m_inUse).onDisk;
    const bool changed = onDisk.actions != m_session.actions() || onDisk.name != m_session.name();
    m_unwritten = m_unwritten || changed;
    if (!changed && !m_promised) {
        return;
    }
    if (m_session.isInEdit()) {
        m_promised = true;
        m_editRest.start();
        m_session.countAsKept(m_session.actions());
    } else {
        settle();
    }
}

void ProgramMappings::finishEdit()
{
    if (m_promised) {
        settle();
    }
}

FileResult ProgramMappings::settle()
{
    if (!m_unwritten) {
        return FileResult::done();
    }
    FileResult result = m_inUse.isEmpty() ? write() : m_session.keep();
    Q_EMIT kept(result);
    return result;
}

FileResult ProgramMappings::write()
{
    m_unwritten = true;
    m_editRest.stop();
    const bool promised = std::exchange(m_promised, false);
    FileResult result = m_mayWrite ? writeFile() : m_read;
    if (!result && promised) {
        m_session.countAsKept(m_own.at(m_inUse).onDisk.actions);
    }
    return result;
}

FileResult ProgramMappings::writeFile()
{
    std::vector<ProgramsFile::Entry> entries;
    for (const auto &[program, own] : m_own) {
        const bool inUse = program == m_inUse;
        entries.push_back({program, own.title, own.acts, inUse ? m_session.name() : own.aside.now.name,
                           inUse ? m_session.actions() : own.aside.now.actions});
    }
    FileResult result = ProgramsFile::write(m_path, entries);
    if (result) {
        m_unwritten = false;
        for (const ProgramsFile::Entry &entry : entries) {
            Own &own = m_own.at(entry.program);
            own.onDisk = {entry.actions, entry.name, entry.actions};
            if (entry.program != m_inUse) {
                own.aside.now.kept = entry.actions;
            }
        }
    }
    return result;
}
