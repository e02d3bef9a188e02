#include "Check.h"
#include "engine/platform/windows/win32/Win32Scaling.h"

using Win32Scaling::cappedFactors;

TEST(aWindowThatFitsKeepsTheUsersFactor)
{
    CHECK_EQUAL(cappedFactors({{L"\\\\.\\DISPLAY1", 1920, 1040, 144}}, 900, 650), "");
    CHECK_EQUAL(cappedFactors({{L"\\\\.\\DISPLAY1", 900, 650, 96}}, 900, 650), "");
    CHECK_EQUAL(cappedFactors({}, 900, 650), "");
}

TEST(aWindowThatWouldNotFitGetsTheLargestFactorThatDoes)
{
    CHECK_EQUAL(cappedFactors({{L"\\\\.\\DISPLAY1", 1366, 728, 144}}, 900, 650), "\\\\.\\DISPLAY1=1.12");
    CHECK_EQUAL(cappedFactors({{L"A", 1024, 560, 96}}, 900, 650), "A=0.86");
    CHECK_EQUAL(cappedFactors({{L"A", 1080, 1880, 144}}, 900, 650), "A=1.20");
}

TEST(eachScreenHasItsOwnFactor)
{
    CHECK_EQUAL(
        cappedFactors({{L"A", 1366, 728, 192}, {L"B", 3840, 2080, 192}, {L"C", 1920, 1040, 192}}, 900, 650),
        "A=1.12;C=1.60");
}

TEST(theDesktopHasAScreenWithAResolution)
{
    const auto screens = Win32Scaling::screens();
    CHECK(!screens.empty());
    CHECK(!screens.front().name.empty());
    CHECK(screens.front().width > 0 && screens.front().height > 0);
    CHECK(screens.front().dpi >= 96);
}
