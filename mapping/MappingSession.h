#pragma once

#include "mapping/FileResult.h"
#include "mapping/ImportedMappings.h"
#include "mapping/MappingFiles.h"
#include "mapping/MappingLists.h"
#include "mapping/MappingSteps.h"
#include "mapping/StepFiles.h"
#include "mapping/XmlMappingReader.h"
#include "mapping/XmlMappingWriter.h"
#include "mapping/ZRButtonMap.h"

#include <QMap>
#include <QObject>
#include <QString>

#include <functional>
#include <utility>

/// The one owner of what the device does: the mapping in use, what of it is kept for the next start, and the
/// library's and the user's mappings. Whoever shows or carries out a mapping follows its signals.
///
/// Two of its files are written, and only by keep(), keepWithLastStep(), saveAs(), remove(), importFile() and
/// restore(), and by takeBack() and redo() of such a step. What they held before goes to their history
/// (FileHistory).
/// Lives on the GUI thread.
class MappingSession : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MappingSession)

public:
    /// What a mapping is called in the working copy.
    static constexpr char workingCopyMapping[] = "current_map";

    enum class Way { Done, TakenBack, DoneAgain };
    Q_ENUM(Way)

    using State = MappingChange::State;

    /// A mapping while it lies aside: what it says and what of that is kept, its steps, and what keeps it.
    struct Aside {
        /// Keeps all fields of all entries, also across a restart.
        using Keeper = std::function<FileResult()>;

        State now;
        MappingSteps steps;
        Keeper keeper; ///< what keep() calls while it is in use; without one that writes the working copy
    };

    /// Touches none of @p files.
    explicit MappingSession(MappingFiles files, QObject *parent = nullptr);

    /// The files are in @p dataDirectory, and none came with the program.
    explicit MappingSession(const QString &dataDirectory, QObject *parent = nullptr);

    const MappingFiles &files() const { return m_files; }

    /// Reads the files and begins with the working copy. When there is none, @p selectDefault is to use() the
    /// library's default mapping, if it has one. When neither gives a mapping, what @p otherwise answers is
    /// in use; it is no mapping that replaces another, so assigned() tells of it. To be called once. A
    /// library that is none is replaced before by the last one that was read, or by the seed (see
    /// LibraryKeeper). The working copy is called @p workingCopyName: its file has no place for that.
    void load(const std::function<void()> &selectDefault, const std::function<ActionTable()> &otherwise,
              const QString &workingCopyName = QString());

    /// What each control does, all fields.
    const ActionTable &actions() const { return m_now.actions; }
    const shortCut &action(int control, Layer layer) const { return m_now.actions[control][layer]; }

    /// The mapping that was used or saved last, also across a restart (see load()); empty when nobody knows,
    /// as of an earlier version of the working copy.
    const QString &name() const { return m_now.name; }

    /// Whether the next start begins with what is in use now, as far as a file of mappings can hold it: with
    /// what reading it back would give.
    bool isKept() const;

    /// Whether @p map is what is in use, as far as a file of mappings can hold it.
    bool isInUse(const ZRButtonMap &map) const;

    /// Whether the knob's controller number and encoding of some action end with the program: no file brings
    /// them back.
    bool endsKnobFields() const;

    /// The mappings of the library, and the user's own, in the order of their files. They are this object's.
    const QList<ZRButtonMap *> &library() const { return m_lists.library(); }
    const QList<ZRButtonMap *> &custom() const { return m_lists.custom(); }

    /// The library's default mapping, null when it has none.
    const ZRButtonMap *defaultMapping() const { return m_lists.defaultMapping(); }

    /// @name What the user does. Each is one step, that takeBack() takes back.
    /// @{

    /// Changes what a control does in one or more layers. Does nothing for a control that does not exist. All
    /// that comes with the same @p edit, a number of the control's that is not 0, is one step, as long as no
    /// other has come in between: the keystrokes in a dialog, say.
    void assign(int control, const QMap<Layer, shortCut> &layers, int edit = 0);
    void assign(int control, Layer layer, const shortCut &action);

    /// Puts a copy of @p map to use. The first use, while load() runs, is a begin().
    void use(const ZRButtonMap &map);

    /// Adds what is in use to the user's mappings as @p name. Others of this name stay.
    FileResult saveAs(const QString &name);

    /// Adds the mappings of the file at @p path to the user's, or to those of programs: that is no step.
    ImportedMappings::Outcome importFile(const QString &path);

    /// Removes the first of the user's mappings that is called @p name; one without a name for an empty one.
    FileResult remove(const QString &name);

    /// Brings back the earlier version @p version of the user's mappings, of the working copy or of the
    /// programs' mappings, and what it holds is listed or in use. The latter is no step. See
    /// VersionRestore::read() for what is refused.
    FileResult restore(const QString &version);
    /// @}

    /// The last step has never been. What it wrote is as it was before, byte for byte: a failure, which
    /// leaves all as it is, when that cannot be written, and when there is none to take back. The user's
    /// mappings are not touched where somebody else has changed their file since; such a step is forgotten.
    FileResult takeBack();

    /// What was taken back last is done again, in the same way; there is nothing when another step came in
    /// between.
    FileResult redo();

    bool canTakeBack() const { return m_steps.last() != nullptr; }
    bool canRedo() const { return m_steps.next() != nullptr; }

    /// Begins with @p map: it counts as kept, and nothing can be taken back.
    void begin(const ZRButtonMap &map);

    /// Puts @p next to use, with its steps, and returns what was in use: no step, and nothing of either is
    /// lost. All operations are about @p next from now on.
    Aside exchange(Aside next);

    /// Whether what is in use is the mapping that the working copy is of.
    bool isGeneral() const { return !m_keeper; }

    /// Whether what assigned() tells of just now is part of an edit that may go on: the keystrokes in a
    /// dialog, say.
    bool isInEdit() const { return m_edit != 0; }

    /// What of what is in use counts as kept, for whoever keeps it (see exchange()) and has promised to write
    /// it soon, or could not.
    void countAsKept(const ActionTable &kept);

    /// Writes what is in use to the working copy, or to where else it is kept (see exchange()). No step.
    FileResult keep();

    /// The same as a part of the step before, so that takeBack() brings the working copy back as well.
    FileResult keepWithLastStep();

    /// The programs' mappings are held by somebody else: @p settle is to write what of them is not in their
    /// file, before another operation is about that.
    void setProgramsKeeper(Aside::Keeper settle) { m_settlePrograms = std::move(settle); }

    /// Whether mappings of programs can act in this session, which an import says otherwise.
    void setProgramsAct(bool act) { m_programsAct = act; }

    /// Reads the library again, for example when a newer one has arrived. One without any mapping leaves the
    /// list as it is.
    FileResult reloadLibrary() { return m_lists.readLibrary(); }

    /// Asks for a file with @p chooser and shows its mappings as the library's, until that is read again.
    void setFileChooser(XmlMappingReader::FileChooser chooser) { m_lists.setFileChooser(std::move(chooser)); }
    void openXml() { m_lists.openXml(); }

Q_SIGNALS:
    /// A control does something else in @p layer: action() says what.
    void assigned(int control, Layer layer);

    /// Another mapping is in use: actions() may differ in all thirty entries.
    void replaced();

    /// The user has done something, taken it back or done it again. All else has been said by then.
    void stepped(const MappingStep &step, MappingSession::Way way);

    /// The step that was to be taken back, or done again, cannot be any more: the one before it is the last.
    void stepForgotten();

    /// An operation is about the working copy's mapping: whoever has exchanged it is to put it to use.
    void generalNeeded();

    /// The file of the programs' mappings holds more of them.
    void programsAdded();

    /// It holds others.
    void programsRestored();

    /// isKept() has changed.
    void keptChanged(bool kept);

    /// endsKnobFields() has changed.
    void endsKnobFieldsChanged(bool ends);

    /// The library's list (not @p custom) or the user's is another one. The maps stay this object's. Those of
    /// the list before are deleted when control has returned to the event loop, but for those that a slot
    /// takes over with setParent().
    void listChanged(QList<ZRButtonMap *> maps, bool custom, int defaultMap);

private:
    void readWorkingCopy();
    void takeWorkingCopy(ZRButtonMap *map);
    void begin(const ActionTable &actions, const QString &name);
    void adopt(const ActionTable &actions);
    // @p write changes the file; @p take, after it succeeded, what is in use.
    FileResult change(
        const MappingStep &step, MappingChange::File file, const std::function<FileResult()> &write,
        const std::function<void()> &take = [] {});
    void done(MappingChange change);
    FileResult go(const MappingChange &change);
    void followKept();
    FileResult keepWorkingCopy(State *now);
    FileResult write(const ActionTable &actions, const QString &name, const QString &fileName, bool alone);

    const MappingFiles m_files;
    XmlMappingWriter m_writer;
    MappingLists m_lists;
    const StepFiles m_stepFiles;
    State m_now;
    bool m_begun = false;
    int m_edit = 0; // while assigned() tells of it
    bool m_saidKept = true;
    bool m_saidEndsKnobFields = false;
    MappingSteps m_steps;
    Aside::Keeper m_keeper;
    Aside::Keeper m_settlePrograms = [] { return FileResult::done(); };
    bool m_programsAct = true;
};
