#include "Check.h"
#include "engine/platform/windows/win32/Win32Users.h"

TEST(theUserHasAnIdentifier)
{
    const std::wstring user = Win32Users::currentUser();
    CHECK(user.compare(0, 4, L"S-1-") == 0);
    CHECK_EQUAL(Win32Users::currentUser(), user);
}
