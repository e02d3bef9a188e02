#include "engine/platform/Session.h"

#include <cstdio>

void Session::print(const QString &text, bool toError)
{
    std::fputs(text.toLocal8Bit().constData(), toError ? stderr : stdout);
}

void Session::fitToScreens(int, int)
{
    // The toolkit rounds what it takes from the screen's dots per inch, which are seldom exact here: the
    // usual 100 would otherwise blur everything at 104 %.
}

QString Session::userMark()
{
    return {}; // names are kept in the user's runtime directory
}

void Session::letOthersComeToFront() {}

void Session::bringToFront(quintptr) {}
