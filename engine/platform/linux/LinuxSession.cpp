#include "engine/platform/Session.h"

#include <cstdio>

void Session::print(const QString &text, bool toError)
{
    std::fputs(text.toLocal8Bit().constData(), toError ? stderr : stdout);
}

void Session::fitToScreens(int, int)
{
    // The desktop's factor is a whole number here, chosen with the screen in mind.
}

QString Session::userMark()
{
    return {}; // names are kept in the user's runtime directory
}

void Session::letOthersComeToFront() {}

void Session::bringToFront(quintptr) {}
