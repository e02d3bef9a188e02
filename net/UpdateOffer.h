#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What the web service offers: a version of the program that is newer than the running one.
struct UpdateOffer {
    enum class Priority { Low, Mid, High, Mandatory };

    QString version;
    QString url;
    QString signature;
    Priority priority = Priority::Low;
};

/// What the web service said of the program's version.
struct UpdateAnswer {
    bool newer = false;               ///< than the running version
    std::optional<UpdateOffer> offer; ///< if it is newer, and its priority is one
};

/// Reads the answer @p body for a program of @p version. What is no answer says nothing newer. A program that
/// does not know its own version takes nothing for newer.
UpdateAnswer readUpdateAnswer(const QByteArray &body, const QString &version);
