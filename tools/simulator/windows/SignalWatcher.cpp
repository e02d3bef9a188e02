#include "tools/simulator/SignalWatcher.h"

#include <atomic>
#include <csignal>
#include <windows.h>

namespace simulator
{

namespace
{

std::atomic<SignalWatcher *> watcher{nullptr};

BOOL WINAPI onConsoleEvent(DWORD event)
{
    SignalWatcher *const target = watcher;
    if (target == nullptr) {
        return FALSE;
    }
    const int number = event == CTRL_C_EVENT ? SIGINT : SIGTERM;
    QMetaObject::invokeMethod(
        target, [target, number] { Q_EMIT target->raised(number); }, Qt::QueuedConnection);
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        Sleep(INFINITE); // the system ends the process as soon as it has the answer
    }
    return TRUE;
}

} // namespace

SignalWatcher::SignalWatcher(QObject *parent)
    : QObject(parent)
{
    watcher = this;
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

SignalWatcher::~SignalWatcher()
{
    SetConsoleCtrlHandler(onConsoleEvent, FALSE);
    watcher = nullptr;
}

} // namespace simulator
