#pragma once

#include "mapping/FileResult.h"
#include "mapping/MappingFiles.h"
#include "mapping/ProgramsFile.h"
#include "mapping/ZRButtonMap.h"

#include <QCoreApplication>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// The mappings of a file that comes from somewhere else.
///
/// Where XmlMappingReader forgives, this does not: what that would leave out or take for 0 without a word is
/// a fault here, and a file with a fault brings nothing.
///
/// They join the user's own, or where each acts for one program only, as in the file of those, the programs'.
class ImportedMappings
{
    Q_DECLARE_TR_FUNCTIONS(ImportedMappings)

public:
    /// What became of an import.
    struct Outcome {
        /// Of the mappings that are the user's now, or of the programs that have one now; empty when nothing
        /// was imported.
        QStringList names;
        QString sentence; ///< that says so, or what is wrong and where
        bool forPrograms = false;
    };

    /// Of a file that is imported, which keeps the program from everything else while it is done: about a
    /// second with so many.
    static constexpr int mostMappings = 500;

    /// Adds the mappings of the file at @p path to those in @p files, all or none; but a program that has one
    /// there keeps it, and that is said. One that is switched off there gives way to one that acts, and goes
    /// to the file's history.
    static Outcome import(const QString &path, const MappingFiles &files);

    /// Reads the file at @p path, within the reader's bounds.
    explicit ImportedMappings(const QString &path, int most = mostMappings);

    /// What is wrong, in the user's language, with line and place where it has one; empty if nothing is.
    const QString &fault() const { return m_fault; }

    /// All fields of all mappings, those of the knob too. What could be read, if there is a fault.
    const std::vector<std::unique_ptr<ZRButtonMap>> &maps() const { return m_maps; }

    /// Whether each of them acts for one program only.
    bool isForPrograms() const { return !m_programs.empty(); }

    /// Gives a mapping whose name one of the user's in @p files has, or one before it, a number behind its
    /// name, and returns all names.
    QStringList chooseNames(const MappingFiles &files);

    /// Adds them to the user's or the programs', all or none.
    FileResult addTo(const MappingFiles &files);

    /// What addTo() has returned, in words. Without @p programsAct, those of programs wait for a session that
    /// tells which program is in front, and that is said.
    Outcome outcome(const FileResult &result, bool programsAct = true) const;

private:
    // @p name, or if @p taken has it, the first of "NAME (2)", "NAME (3)" and so on that it has not, from
    // *@p number on, which is the one to go on with then; 0 at first.
    static QString freeName(const QString &name, const QSet<QString> &taken, int *number);

    FileResult addToPrograms(const QString &path);
    QString programsInWords(bool act) const;

    QString m_path;
    QString m_fault;
    std::vector<std::unique_ptr<ZRButtonMap>> m_maps;
    std::vector<ProgramsFile::Entry> m_programs;
    QStringList m_added;    // programs
    QStringList m_replaced; // those of them that had one, which was switched off
    QStringList m_keepTheirs;
};
