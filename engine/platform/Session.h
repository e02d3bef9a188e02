#pragma once

#include <QString>
#include <QtGlobal>

/// What one start of the program needs of the system before it knows whether it goes on running. Needs no
/// Platform, and but for bringToFront() no application object.
namespace Session
{

/// Prints to standard output or error, wherever those lead; for a program that has none, to the console that
/// it was started from.
void print(const QString &text, bool toError);

/// Prepares the toolkit for a window of this size (at 100 %): where the user's scale factor would make it
/// larger than a screen, it gets the largest factor with which it fits. To be called before the application
/// object exists. What the user has set for the toolkit himself wins.
/// @return the environment variable that was set for this, null for none: once the application object exists
/// it is to go, as the programs that are started from here have windows of other sizes
const char *fitToScreens(int windowWidth, int windowHeight);

/// Where the user's file mask lets everybody write what he makes, the program and what it starts have the
/// usual one (022) instead. To be called before anything is made.
void keepOthersFromWriting();

/// Whether a shared block or its lock of the number that the system makes of @p keyFile is another user's: he
/// could read and write the one and keep the other. False where such things belong to no user.
bool isAnothers(const QString &keyFile);

/// What tells this user from others in a name that all users of the machine share. Empty where such names are
/// kept in a folder of the user's own.
QString userMark();

/// Lets the copy of the program that runs already come to the front in the place of this one, where the
/// system asks for such a leave.
void letOthersComeToFront();

/// Brings a window to the front with the keyboard where raising it alone leaves it behind others: on Windows,
/// and only after the leave above. Elsewhere nothing happens.
void bringToFront(quintptr window);

} // namespace Session
