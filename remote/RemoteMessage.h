#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// What a running copy is asked for.
struct RemoteRequest {
    QString command;       ///< small letters and hyphens
    QStringList arguments; ///< without the character NUL
    bool json = false;     ///< the answer is for a program
};

/// What it says to that.
struct RemoteAnswer {
    int status = 0; ///< the exit status of who asked, 0 to 255
    QString
        text; ///< for standard output with the status 0, else for standard error; without the last line end
};

/// How requests and answers travel: each is one line of words with a blank between, which are UTF-8 in
/// percent encoding. One request and one answer a connection.
///
/// | request | COMMAND plain ARGUMENT... or COMMAND json ARGUMENT... |
/// | answer  | STATUS TEXT                                            |
namespace RemoteMessage
{

constexpr int maximumRequest = 64 * 1024;      ///< bytes, without the line end
constexpr int maximumAnswer = 4 * 1024 * 1024; ///< bytes, without the line end
constexpr int maximumArguments = 4;
constexpr int maximumCommand = 32; ///< characters

/// Both with their line end. An answer that would be too long says so instead.
QByteArray write(const RemoteRequest &request);
QByteArray write(const RemoteAnswer &answer);

/// Of one line, without its end. Nothing when it is none, in which case @p fault, in the user's language,
/// says why.
std::optional<RemoteRequest> readRequest(const QByteArray &line, QString *fault);
std::optional<RemoteAnswer> readAnswer(const QByteArray &line);

} // namespace RemoteMessage
