#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <initializer_list>

// What the updater asks, and how its tests write down what they expect.

inline const QByteArray installerBody = "#!/bin/sh\nexit 0\n";
constexpr const char *question = "A new version of Veltrix is available. Do you want to install it?";
constexpr const char *order = "A new version of Veltrix is available. Press OK to install it";
constexpr const char *pleaseClose = "Please press OK to close Veltrix and complete the update process.";
constexpr const char *failed = "An error occurred during download.";

inline QStringList asked(const char *text, const char *button1, const char *button2 = "")
{
    return {QString::fromLatin1(text), QString::fromLatin1(button1), QString::fromLatin1(button2)};
}

inline QStringList seen(std::initializer_list<const char *> names)
{
    QStringList list;
    for (const char *name : names) {
        list.append(QString::fromLatin1(name));
    }
    return list;
}
