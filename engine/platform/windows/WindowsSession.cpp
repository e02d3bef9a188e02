#include "engine/platform/Session.h"
#include "engine/platform/windows/win32/Win32Scaling.h"
#include "engine/platform/windows/win32/Win32Terminal.h"
#include "engine/platform/windows/win32/Win32Users.h"

#include <QByteArray>

void Session::print(const QString &text, bool toError)
{
    Win32Terminal::print(text.toStdWString(), toError);
}

void Session::fitToScreens(int windowWidth, int windowHeight)
{
    constexpr char factors[] = "QT_SCREEN_SCALE_FACTORS";
    if (qEnvironmentVariableIsSet(factors) || qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) {
        return;
    }
    const std::string capped =
        Win32Scaling::cappedFactors(Win32Scaling::screens(), windowWidth, windowHeight);
    if (!capped.empty()) {
        qputenv(factors, QByteArray::fromStdString(capped));
    }
}

QString Session::userMark()
{
    return QString::fromStdWString(Win32Users::currentUser());
}

void Session::letOthersComeToFront()
{
    Win32Users::letOthersComeToFront();
}

void Session::bringToFront(quintptr window)
{
    Win32Users::bringToFront(reinterpret_cast<HWND>(window));
}
