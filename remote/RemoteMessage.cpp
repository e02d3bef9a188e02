#include "remote/RemoteMessage.h"

#include <QCoreApplication>
#include <QList>

#include <algorithm>

namespace
{

const QByteArray plainWord = QByteArrayLiteral("plain");
const QByteArray jsonWord = QByteArrayLiteral("json");

constexpr int highestStatus = 255;

QByteArray word(const QString &text)
{
    return text.toUtf8().toPercentEncoding();
}

std::optional<QString> textOf(const QByteArray &word)
{
    const QByteArray bytes = QByteArray::fromPercentEncoding(word);
    const QString text = QString::fromUtf8(bytes);
    return text.toUtf8() == bytes && !text.contains(QChar(QChar::Null)) ? std::optional(text) : std::nullopt;
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
    QList<QByteArray> words{word(request.command), request.json ? jsonWord : plainWord};
    for (const QString &argument : request.arguments) {
        words.append(word(argument));
    }
    return words.join(' ') + '\n';
}

QByteArray RemoteMessage::write(const RemoteAnswer &answer)
{
    const QByteArray line = QByteArray::number(answer.status) + ' ' + word(answer.text) + '\n';
    return line.size() <= maximumAnswer + 1
               ? line
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
    const QList<QByteArray> words = line.split(' ');
    RemoteRequest request;
    request.command = textOf(words.constFirst()).value_or(QString());
    if (!isCommand(request.command) || words.size() < 2 || (words[1] != plainWord && words[1] != jsonWord)) {
        return refused(QT_TRANSLATE_NOOP("RemoteMessage", "The request names no command."));
    }
    request.json = words[1] == jsonWord;
    if (words.size() > 2 + maximumArguments) {
        return refused(QT_TRANSLATE_NOOP("RemoteMessage", "The request has too many arguments."));
    }
    const QList<QByteArray> arguments = words.mid(2);
    for (const QByteArray &each : arguments) {
        const auto argument = textOf(each);
        if (!argument) {
            return refused(
                QT_TRANSLATE_NOOP("RemoteMessage", "The request has an argument that is no text."));
        }
        request.arguments.append(*argument);
    }
    return request;
}

std::optional<RemoteAnswer> RemoteMessage::readAnswer(const QByteArray &line)
{
    const QList<QByteArray> words = line.size() <= maximumAnswer ? line.split(' ') : QList<QByteArray>();
    bool isNumber = false;
    const int status = words.value(0).toInt(&isNumber);
    const auto text = textOf(words.value(1));
    if (words.size() != 2 || !isNumber || status < 0 || status > highestStatus || !text) {
        return std::nullopt;
    }
    return RemoteAnswer{status, *text};
}
