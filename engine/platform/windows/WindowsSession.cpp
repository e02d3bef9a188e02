#include "engine/platform/Session.h"
#include "engine/platform/windows/win32/Win32Scaling.h"
#include "engine/platform/windows/win32/Win32Terminal.h"
#include "engine/platform/windows/win32/Win32Users.h"

#include <QByteArray>
#include <QGuiApplication>

void Session::print(const QString &text, bool toError)
{
    Win32Terminal::print(text.toStdWString(), toError);
}

const char *Session::fitToScreens(int windowWidth, int windowHeight)
{
    // 125 % is 125 %, and not 100 % or 200 %.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    static constexpr char factors[] = "QT_SCREEN_SCALE_FACTORS";
    if (qEnvironmentVariableIsSet(factors) || qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) {
        return nullptr;
    }
    const std::string capped =
        Win32Scaling::cappedFactors(Win32Scaling::screens(), windowWidth, windowHeight);
    if (capped.empty()) {
        return nullptr;
    }
    qputenv(factors, QByteArray::fromStdString(capped));
    return factors;
}

void Session::keepOthersFromWriting() {} // what is made inherits the rights of its folder

bool Session::isAnothers(const QString &)
{
    return false; // blocks have names, which end in the user's mark
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
