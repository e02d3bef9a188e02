#pragma once

#include "mapping/MappingSession.h"
#include "mapping/ProgramsFile.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <map>
#include <vector>

/// The mappings that act for one program each, beside the general one.
///
/// What is in use is the session's, whichever it is: choices and edits are about that one. A program's
/// mapping is kept by itself as soon as it changes, knob fields included, in a file of its own (see
/// ProgramsFile); what is typed in a dialog when that is done (finishEdit()), or typing rests for editRest,
/// or anything else is about to happen to the mapping. The general one and its unkept changes wait meanwhile.
/// Lives on the GUI thread.
class ProgramMappings : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ProgramMappings)

public:
    static constexpr int editRest = 1000; ///< ms

    /// Touches no file. @p session must outlive this object.
    explicit ProgramMappings(MappingSession &session, QObject *parent = nullptr);
    ~ProgramMappings() override;

    /// Reads the file, after the session has read its own. To be called once. On failure there may be fewer
    /// mappings than there were, or none; see ProgramsFile::read().
    FileResult load();

    /// Whether any program has a mapping of its own.
    bool areUsed() const;

    /// Whether @p program has one.
    bool has(const QString &program) const;

    /// The program whose mapping is in use; empty while the general one is.
    const QString &inUse() const { return m_inUse; }

    /// That program as the user knows it.
    QString titleInUse() const;

    /// Puts the mapping of @p program to use, or the general one when it has none.
    void use(const QString &program);

    /// Gives @p program, which the user knows as @p title, a mapping of its own and puts it to use: the one
    /// that it had before, else a copy of what is in use. On failure that is not on the disk, but in use all
    /// the same.
    FileResult give(const QString &program, const QString &title);

    /// Puts the general mapping to use for @p program. Its own stays in the file, for give().
    FileResult take(const QString &program);

    /// Writes what of a dialog's edit is not written yet.
    void finishEdit();

    /// Whether this session tells which program is in front, so that any but the general one can act.
    void setTold(bool told) { m_session.setProgramsAct(told); }

Q_SIGNALS:
    /// has() or inUse() may have changed; the latter after the session's replaced().
    void changed();

    /// Programs have got mappings from elsewhere, so that another one may have to be in use than is.
    void arrived();

    /// What is in use was to be kept by itself, with this result.
    void kept(const FileResult &result);

private:
    struct Own {
        QString title;
        bool acts = true;
        MappingSession::State onDisk;
        MappingSession::Aside aside; // empty while in use
    };

    Own own(const ProgramsFile::Entry &entry);
    std::vector<ProgramsFile::Entry> readFile();
    void takeAdded();
    void takeRestored();
    MappingSession::Aside aside(const MappingSession::State &state);
    MappingSession::Aside &placeOf(const QString &program);
    void exchangeFor(const QString &program);
    void keepByItself();
    FileResult write();
    FileResult writeFile();
    FileResult settle();

    MappingSession &m_session;
    const QString m_path;
    FileResult m_read = FileResult::done();
    bool m_mayWrite = true;
    bool m_unwritten = false; // the file does not hold all that is here
    std::map<QString, Own> m_own;
    MappingSession::Aside m_general; // empty while in use
    QString m_inUse;
    bool m_exchanging = false;
    bool m_promised = false; // an edit of what is in use is to be written, and counts as kept
    QTimer m_editRest;
};
