#include "engine/platform/Session.h"

#include <cstdio>

void Session::print(const QString &text, bool toError)
{
    std::fputs(text.toLocal8Bit().constData(), toError ? stderr : stdout);
}

QString Session::userMark()
{
    return {}; // names are kept in the user's runtime directory
}

void Session::letOthersComeToFront() {}

void Session::bringToFront(quintptr) {}
