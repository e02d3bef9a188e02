#include "engine/platform/windows/win32/Win32CursorScheme.h"

#include <algorithm>
#include <utility>

const std::wstring Win32CursorScheme::systemArrow = L"%SystemRoot%\\cursors\\aero_arrow.cur";

Win32CursorScheme::Win32CursorScheme(std::wstring transparentArrow)
    : m_transparentArrow(std::move(transparentArrow))
    , m_arrow(HKEY_CURRENT_USER, L"Control Panel\\Cursors", L"Arrow")
{
}

LSTATUS Win32CursorScheme::setTransparent(bool transparent) const
{
    // The system's arrow is stored with the type that Windows itself gives it, because it holds a variable.
    // Ours is a plain text: a "%" in the program's path must stand for itself.
    const LSTATUS status =
        transparent ? m_arrow.write(m_transparentArrow, REG_SZ) : m_arrow.write(systemArrow, REG_EXPAND_SZ);
    SystemParametersInfoW(SPI_SETCURSORS, 0, nullptr, SPIF_UPDATEINIFILE | SPIF_SENDCHANGE);
    return status;
}

bool Win32CursorScheme::isTransparent() const
{
    std::optional<std::wstring> arrow = m_arrow.read();
    if (!arrow) {
        return false;
    }
    std::replace(arrow->begin(), arrow->end(), L'/', L'\\');
    return CompareStringOrdinal(arrow->c_str(), -1, m_transparentArrow.c_str(), -1, TRUE) == CSTR_EQUAL;
}

bool Win32CursorScheme::restoreIfTransparent() const
{
    const bool ours = isTransparent();
    if (ours) {
        setTransparent(false);
    }
    return ours;
}
