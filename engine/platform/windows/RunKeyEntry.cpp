#include "engine/platform/windows/RunKeyEntry.h"

#include "engine/platform/PlatformLog.h"

namespace
{

void logFailure(LSTATUS status)
{
    if (status != ERROR_SUCCESS) {
        qCWarning(lcPlatform, "the start at log-on was not changed: error %ld", status);
    }
}

} // namespace

bool RunKeyEntry::exists() const
{
    return m_key.exists();
}

void RunKeyEntry::write(const QString &program)
{
    logFailure(m_key.write(program.toStdWString()));
}

void RunKeyEntry::remove()
{
    logFailure(m_key.remove());
}
