#pragma once

#include "engine/platform/FocusedProgram.h"
#include "ui/ComboMenuBar.h"

class ProgramMappings;
class ProgramSwitch;
class QLabel;

/// For which programs the mapping on the page acts: for all, or for the one that had the focus last. A quiet
/// line whose menu changes that.
class ProgramChoice : public ComboMenuBar
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ProgramChoice)

public:
    static constexpr QSize size{240, 20};

    /// The other two must outlive this object.
    ProgramChoice(const ProgramSwitch &programs, const ProgramMappings &mappings, QWidget *parent);
    ~ProgramChoice() override;

Q_SIGNALS:
    /// The user wants @p program to have a mapping of its own.
    void onlyFor(const FocusedProgram::Program &program);

    /// The user wants the mapping for all programs where the one of @p program acts.
    void forAllInsteadOf(const QString &program);

public Q_SLOTS:
    void dislayMenu() override;

protected:
    void carryOut(const QAction &chosen) override;

private:
    void showWhose();
    void placeInTheMiddle();

    const ProgramSwitch &m_programs;
    const ProgramMappings &m_mappings;
    QLabel *m_text;
    QLabel *m_arrow = nullptr;
    QAction *m_forAll;
    QAction *m_onlyFor;
    FocusedProgram::Program m_offered; // when the menu was opened
};
