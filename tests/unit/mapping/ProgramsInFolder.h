#pragma once

#include "MappingFixtures.h"
#include "mapping/MappingSession.h"
#include "mapping/ProgramMappings.h"
#include "mapping/ProgramsFile.h"
#include "mapping/SpecialAction.h"

#include <QTemporaryDir>

#include <memory>

inline const QString gimp = QStringLiteral("gimp");
inline const QString gimpTitle = QStringLiteral("Gimp");
inline const QString browser = QStringLiteral("firefox");
inline const QString browserTitle = QStringLiteral("Firefox");

/// What of an action no file of mappings brings back, and that of the programs does.
inline shortCut knobMidi()
{
    shortCut action = key(MIDI_KNOB_ACTION);
    action.channel = 3;
    action.knobcc = 20;
    action.m01h = true;
    return action;
}

/// The mappings of programs beside the general one, in a folder of their own.
class ProgramsInFolder
{
protected:
    FileResult begin()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        return restart();
    }
    /// Control 3 of the general one presses 1 from the beginning.
    FileResult beginWithOne()
    {
        const FileResult begun = begin();
        assign(1);
        return begun ? m_session->keep() : begun;
    }
    void end()
    {
        m_programs.reset();
        m_session.reset();
        m_directory.reset();
    }
    QString path() const { return m_session->files().programs(); }
    void assign(qint32 code, int control = 3) { m_session->assign(control, Layer::Normal, key(code)); }
    qint32 inUse(int control = 3) const { return m_session->action(control, Layer::Normal).key1; }
    /// What control 3 presses for the first program of the file.
    qint32 onDisk() const { return ProgramsFile::read(path()).entries.at(0).actions[3][Layer::Normal].key1; }
    FileResult restart()
    {
        m_programs.reset();
        m_session = std::make_unique<MappingSession>(m_directory->path());
        m_programs = std::make_unique<ProgramMappings>(*m_session);
        m_session->load([] {}, [] { return ActionTable(); });
        return m_programs->load();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<MappingSession> m_session;
    std::unique_ptr<ProgramMappings> m_programs;
};
