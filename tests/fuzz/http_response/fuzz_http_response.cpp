// Feeds the reader of HTTP answers arbitrary bytes, once in one piece and once byte by byte: both must come
// to the same head, body and end.

#include "net/HttpResponse.h"

#include <cstdint>
#include <cstdlib>

namespace
{

struct Outcome {
    Outcome(const QByteArray &bytes, int pieceSize)
    {
        for (int at = 0; at < bytes.size() && taken; at += pieceSize) {
            taken = response.take(bytes.mid(at, pieceSize), body);
        }
        whole = taken && response.close();
    }

    bool operator==(const Outcome &other) const
    {
        return taken == other.taken && whole == other.whole && body == other.body &&
               response.status() == other.response.status() &&
               response.headers() == other.response.headers() &&
               response.length() == other.response.length() && response.error() == other.response.error();
    }

    HttpResponse response;
    QByteArray body;
    bool taken = true;
    bool whole = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const Outcome atOnce(bytes, bytes.size() + 1);
    if (!(atOnce == Outcome(bytes, 1)) || atOnce.body.size() > bytes.size()) {
        std::abort();
    }
    return 0;
}
