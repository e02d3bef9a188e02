// Feeds both ends of the remote control arbitrary lines. What is taken for a request stays within its bounds
// and comes back the same when it is written and read again.

#include "remote/RemoteMessage.h"

#include <cstdint>
#include <cstdlib>

namespace
{

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

QByteArray withoutEnd(QByteArray line)
{
    require(line.endsWith('\n') && line.count('\n') == 1);
    line.chop(1);
    return line;
}

void checkRequest(const QByteArray &line)
{
    QString fault;
    const auto request = RemoteMessage::readRequest(line, &fault);
    require(request.has_value() == fault.isEmpty());
    if (!request) {
        return;
    }
    require(!request->command.isEmpty() && request->command.size() <= RemoteMessage::maximumCommand);
    require(request->arguments.size() <= RemoteMessage::maximumArguments);
    const auto again = RemoteMessage::readRequest(withoutEnd(RemoteMessage::write(*request)), &fault);
    require(again && again->command == request->command && again->arguments == request->arguments &&
            again->json == request->json);
}

void checkAnswer(const QByteArray &line)
{
    const auto answer = RemoteMessage::readAnswer(line);
    if (!answer) {
        return;
    }
    const auto again = RemoteMessage::readAnswer(withoutEnd(RemoteMessage::write(*answer)));
    require(again && again->status == answer->status && again->text == answer->text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const QByteArray line(reinterpret_cast<const char *>(data), static_cast<int>(size));
    checkRequest(line);
    checkAnswer(line);
    return 0;
}
