#include "engine/platform/windows/WindowsFocusedProgram.h"

#include "engine/platform/PlatformLog.h"

#include <QFileInfo>

void WindowsFocusedProgram::setWatched(bool watched)
{
    if (!watched) {
        m_watch.reset();
    } else if (!m_watch) {
        m_watch = std::make_unique<Win32ForegroundWatch>(
            [this](const std::wstring &executable) { tellOf(executable); });
        if (!m_watch->isInstalled()) {
            qCWarning(lcPlatform, "the program in front is not watched: Windows refused the hook");
        }
        tellOf(Win32ForegroundWatch::current());
    }
}

void WindowsFocusedProgram::tellOf(const std::wstring &executable)
{
    const Program program =
        Program::called(QFileInfo(QString::fromStdWString(executable)).completeBaseName());
    if (!program.id.isEmpty()) {
        Q_EMIT focused(program);
    }
}
