#include "remote/RemoteClient.h"

#include "remote/RemoteLog.h"
#include "remote/RemotePlace.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QLocalSocket>

namespace
{

constexpr int connectTime = 1000; // ms

QString say(const char *text)
{
    return QCoreApplication::translate("RemoteClient", text);
}

RemoteAnswer noneRuns()
{
    return {RemoteClient::notRunning, say(QT_TRANSLATE_NOOP("RemoteClient", "Veltrix is not running."))};
}

RemoteAnswer saysNothing()
{
    return {1, say(QT_TRANSLATE_NOOP("RemoteClient", "The running Veltrix does not answer."))};
}

} // namespace

RemoteAnswer RemoteClient::ask(const RemoteRequest &request, const QString &userMark, int clientPatience)
{
    const RemotePlace place = RemotePlace::toAsk(userMark);
    if (!place.problem.isEmpty()) {
        qCWarning(lcRemote).noquote() << "nothing was asked:" << place.problem;
        return noneRuns();
    }
    QLocalSocket socket;
    if (!place.name.isEmpty()) {
        socket.connectToServer(place.name);
        socket.waitForConnected(connectTime);
    }
    if (socket.state() != QLocalSocket::ConnectedState) {
        return noneRuns();
    }
    if (!RemotePlace::isOwn(socket.socketDescriptor())) {
        qCWarning(lcRemote).noquote() << "nothing was asked:" << place.name << "is another user's";
        return noneRuns();
    }
    const QByteArray message = RemoteMessage::write(request);
    if (message.size() > RemoteMessage::maximumRequest) {
        return {2, say(QT_TRANSLATE_NOOP("RemoteClient", "The command is too long."))};
    }
    socket.write(message);
    const QDeadlineTimer deadline(clientPatience);
    QByteArray bytes;
    while (!bytes.contains('\n') && bytes.size() <= RemoteMessage::maximumAnswer) {
        if (socket.bytesAvailable() == 0 &&
            !socket.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
            break;
        }
        bytes += socket.read(RemoteMessage::maximumAnswer + 1 - bytes.size());
    }
    const int end = bytes.indexOf('\n');
    const auto answer = end < 0 ? std::nullopt : RemoteMessage::readAnswer(bytes.left(end));
    return answer ? *answer : saysNothing();
}
