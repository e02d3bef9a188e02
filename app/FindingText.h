#pragma once

#include <QCoreApplication>
#include <QString>

struct DeviceFinding;

/// What a look for the device has come to, in words for the user.
class FindingText
{
    Q_DECLARE_TR_FUNCTIONS(FindingText)

public:
    /// One line: what was found, and what can be done about it.
    static QString sentence(const DeviceFinding &finding);

    /// False where nothing is wrong but that no device is plugged in.
    static bool isProblem(const DeviceFinding &finding);

    /// The heading in the guide's chapter on trouble that says more, as the chapter's page names it.
    static QString section(const DeviceFinding &finding);
};
