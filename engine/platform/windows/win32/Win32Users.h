#pragma once

#include <string>
#include <windows.h>

/// What keeps the users of one machine apart, and a user's programs together.
namespace Win32Users
{

/// The current user's security identifier ("S-1-5-21-..."): part of names that are machine-wide. Empty when
/// the system does not tell.
std::wstring currentUser();

/// Lets every program of this desktop come to the front once, in the place of the calling one, which the user
/// has just started.
void letOthersComeToFront();

/// Brings @p window to the front and gives it the keyboard. The system only lets a program do so that the
/// user is working with or that was let before; for others the entry in the task bar blinks.
void bringToFront(HWND window);

} // namespace Win32Users
