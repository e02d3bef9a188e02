#include "Check.h"
#include "engine/platform/windows/win32/Win32CursorScheme.h"
#include "engine/platform/windows/win32/Win32RunKey.h"

namespace
{

const wchar_t cursors[] = L"Control Panel\\Cursors";
const wchar_t run[] = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
const wchar_t transparent[] = L"C:\\Program Files\\100% Veltrix\\transp.cur";

DWORD typeOf(HKEY root, const wchar_t *key, const wchar_t *name)
{
    DWORD type = REG_NONE;
    CHECK_EQUAL(RegGetValueW(root, key, name, RRF_RT_ANY | RRF_NOEXPAND, &type, nullptr, nullptr),
                ERROR_SUCCESS);
    return type;
}

std::wstring arrow()
{
    return Win32RegistryText(HKEY_CURRENT_USER, cursors, L"Arrow").read().value_or(L"(none)");
}

std::wstring registered()
{
    return Win32RegistryText(HKEY_LOCAL_MACHINE, run, L"Veltrix").read().value_or(L"(none)");
}

} // namespace

TEST(hidingNamesTheTransparentArrowAsItStands)
{
    const Win32CursorScheme scheme(transparent);
    CHECK_EQUAL(scheme.setTransparent(true), ERROR_SUCCESS);
    CHECK_EQUAL(arrow(), transparent);
    CHECK_EQUAL(typeOf(HKEY_CURRENT_USER, cursors, L"Arrow"), DWORD(REG_SZ));
    CHECK(scheme.isTransparent());
}

TEST(showingNamesTheSystemsArrowWithItsVariable)
{
    const Win32CursorScheme scheme(transparent);
    scheme.setTransparent(true);
    CHECK_EQUAL(scheme.setTransparent(false), ERROR_SUCCESS);
    CHECK_EQUAL(arrow(), L"%SystemRoot%\\cursors\\aero_arrow.cur");
    CHECK_EQUAL(typeOf(HKEY_CURRENT_USER, cursors, L"Arrow"), DWORD(REG_EXPAND_SZ));
    CHECK(!scheme.isTransparent());
}

TEST(arrowLeftTransparentByACrashIsPutBackAtTheNextStart)
{
    Win32CursorScheme(transparent).setTransparent(true);
    CHECK(Win32CursorScheme(transparent).restoreIfTransparent());
    CHECK_EQUAL(arrow(), Win32CursorScheme::systemArrow);
    CHECK(!Win32CursorScheme(transparent).restoreIfTransparent());
}

TEST(transparentArrowIsKnownInOtherSpellings)
{
    const Win32RegistryText value(HKEY_CURRENT_USER, cursors, L"Arrow");
    value.write(L"c:/program files/100% VELTRIX\\TRANSP.CUR", REG_EXPAND_SZ);
    CHECK(Win32CursorScheme(transparent).restoreIfTransparent());
    CHECK_EQUAL(arrow(), Win32CursorScheme::systemArrow);
}

TEST(arrowThatTheUserChoseStaysAtStart)
{
    const Win32RegistryText value(HKEY_CURRENT_USER, cursors, L"Arrow");
    for (const wchar_t *const chosen : {L"D:\\mine\\arrow.cur", L"D:\\other\\transp.cur", L""}) {
        value.write(chosen, REG_SZ);
        CHECK(!Win32CursorScheme(transparent).restoreIfTransparent());
        CHECK_EQUAL(arrow(), chosen);
    }
    value.remove();
    CHECK(!Win32CursorScheme(transparent).restoreIfTransparent());
    CHECK_EQUAL(arrow(), L"(none)");
}

TEST(programIsRegisteredWithQuotesAndBackslashes)
{
    const Win32RunKey key;
    CHECK_EQUAL(key.write(L"C:/Program Files/Brim \u00e4 well/veltrix.exe"), ERROR_SUCCESS);
    CHECK(key.exists());
    CHECK_EQUAL(registered(), L"\"C:\\Program Files\\Brim \u00e4 well\\veltrix.exe\"");
    CHECK_EQUAL(typeOf(HKEY_LOCAL_MACHINE, run, L"Veltrix"), DWORD(REG_SZ));
}

TEST(registeringAgainReplacesTheCommand)
{
    const Win32RunKey key;
    key.write(L"C:/old/veltrix.exe");
    CHECK_EQUAL(key.write(L"C:\\new\\veltrix.exe"), ERROR_SUCCESS);
    CHECK_EQUAL(registered(), L"\"C:\\new\\veltrix.exe\"");
}

TEST(unregisteringTwiceLeavesNoValueAndReportsNothing)
{
    const Win32RunKey key;
    key.write(L"C:/veltrix.exe");
    CHECK_EQUAL(key.remove(), ERROR_SUCCESS);
    CHECK(!key.exists());
    CHECK_EQUAL(key.remove(), ERROR_SUCCESS);
    CHECK(!key.exists());
}

TEST(registrationOfAnyTypeCounts)
{
    const DWORD number = 1;
    CHECK_EQUAL(RegSetKeyValueW(HKEY_LOCAL_MACHINE, run, L"Veltrix", REG_DWORD, &number, sizeof number),
                ERROR_SUCCESS);
    const Win32RunKey key;
    CHECK(key.exists());
    CHECK_EQUAL(registered(), L"(none)");
    CHECK_EQUAL(key.remove(), ERROR_SUCCESS);
    CHECK(!key.exists());
}

TEST(longTextIsReadWhole)
{
    const Win32RegistryText value(HKEY_CURRENT_USER, L"Software\\Veltrix test", L"long");
    const std::wstring text(1000, L'x');
    CHECK_EQUAL(value.write(text, REG_SZ), ERROR_SUCCESS);
    CHECK_EQUAL(value.read().value_or(L"(none)"), text);
    CHECK_EQUAL(RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Veltrix test"), ERROR_SUCCESS);
    CHECK(!value.exists());
    CHECK_EQUAL(value.remove(), ERROR_SUCCESS);
}

TEST(refusedWriteIsReported)
{
    const Win32RegistryText value(reinterpret_cast<HKEY>(ULONG_PTR(0x7531)), run, L"Veltrix");
    CHECK(!value.exists());
    CHECK(value.write(L"text", REG_SZ) != ERROR_SUCCESS);
    CHECK(value.remove() != ERROR_SUCCESS);
}
