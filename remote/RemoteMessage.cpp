#include "remote/RemoteMessage.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace
{

const QString commandKey = QStringLiteral("command");
const QString argumentsKey = QStringLiteral("arguments");
const QString jsonKey = QStringLiteral("json");
const QString statusKey = QStringLiteral("status");
const QString textKey = QStringLiteral("text");

constexpr int highestStatus = 255;

QByteArray line(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<QJsonObject> object(const QByteArray &line)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        return std::nullopt;
    }
    return document.object();
}

bool isCommand(const QString &text)
{
    return !text.isEmpty() && text.size() <= RemoteMessage::maximumCommand &&
           std::all_of(text.begin(), text.end(), [](QChar c) {
               return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) || c == QLatin1Char('-');
           });
}

QString say(const char *text)
{
    return QCoreApplication::translate("RemoteMessage", text);
}

} // namespace

QByteArray RemoteMessage::write(const RemoteRequest &request)
{
    return line({{commandKey, request.command},
                 {argumentsKey, QJsonArray::fromStringList(request.arguments)},
                 {jsonKey, request.json}});
}

QByteArray RemoteMessage::write(const RemoteAnswer &answer)
{
    const QByteArray written = line({{statusKey, answer.status}, {textKey, answer.text}});
    return written.size() <= maximumAnswer
               ? written
               : write(RemoteAnswer{1, say(QT_TRANSLATE_NOOP("RemoteMessage", "The answer is too long."))});
}

std::optional<RemoteRequest> RemoteMessage::readRequest(const QByteArray &line, QString *fault)
{
    const auto refused = [fault](const char *text) {
        *fault = say(text);
        return std::nullopt;
    };
    if (line.size() > maximumRequest) {
        return refused(QT_TRANSLATE_NOOP("RemoteMessage", "The request is too long."));
    }
    const auto content = object(line);
    if (!content) {
        return refused(QT_TRANSLATE_NOOP("RemoteMessage", "The request is no JSON object."));
    }
    RemoteRequest request;
    request.command = content->value(commandKey).toString();
    request.json = content->value(jsonKey).toBool();
    if (!isCommand(request.command)) {
        return refused(QT_TRANSLATE_NOOP("RemoteMessage", "The request names no command."));
    }
    const QJsonArray arguments = content->value(argumentsKey).toArray();
    if (arguments.size() > maximumArguments) {
        return refused(QT_TRANSLATE_NOOP("RemoteMessage", "The request has too many arguments."));
    }
    for (const QJsonValue &argument : arguments) {
        if (!argument.isString() || argument.toString().contains(QChar(QChar::Null))) {
            return refused(
                QT_TRANSLATE_NOOP("RemoteMessage", "The request has an argument that is no text."));
        }
        request.arguments.append(argument.toString());
    }
    return request;
}

std::optional<RemoteAnswer> RemoteMessage::readAnswer(const QByteArray &line)
{
    const auto content = line.size() <= maximumAnswer ? object(line) : std::nullopt;
    if (!content || !content->value(statusKey).isDouble() || !content->value(textKey).isString()) {
        return std::nullopt;
    }
    const int status = content->value(statusKey).toInt(-1);
    if (status < 0 || status > highestStatus) {
        return std::nullopt;
    }
    return RemoteAnswer{status, content->value(textKey).toString()};
}
