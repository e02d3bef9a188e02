#include "engine/platform/windows/WindowsPointerAppearance.h"

#include "engine/platform/PlatformLog.h"
#include "engine/platform/windows/WindowsCrashRelease.h"

#include <QDir>
#include <QFileInfo>

WindowsPointerAppearance::WindowsPointerAppearance(const QString &transparentArrow)
    : m_scheme(QDir::toNativeSeparators(transparentArrow).toStdWString())
{
    if (!QFileInfo::exists(transparentArrow)) {
        qCWarning(lcPlatform).noquote()
            << "the pointer cannot be hidden, a file is missing:" << transparentArrow;
    }
    if (m_scheme.restoreIfTransparent()) {
        qCInfo(lcPlatform, "the pointer had been left transparent, the system's arrow was put back");
    }
}

void WindowsPointerAppearance::setHidden(bool hidden)
{
    Win32HeldInput &held = WindowsCrashRelease::heldInput();
    if (hidden) {
        held.setArrowHidden(true);
    }
    const LSTATUS status = m_scheme.setTransparent(hidden);
    if (!hidden) {
        held.setArrowHidden(false);
    }
    if (status != ERROR_SUCCESS) {
        qCWarning(lcPlatform, "the pointer scheme was not changed: error %ld", status);
    }
}

void WindowsPointerAppearance::restore()
{
    setHidden(false);
}
