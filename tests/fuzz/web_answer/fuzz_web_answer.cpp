// Feeds the program what a server could send for an answer, head and framing included: through the reader of
// HTTP answers to those of both queries. Whatever it is, at most a newer version comes out.

#include "net/HttpResponse.h"
#include "net/LibraryOffer.h"
#include "net/UpdateOffer.h"

#include <QUrl>
#include <QVersionNumber>

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

void checkUpdate(const QByteArray &body)
{
    const QString version = QStringLiteral("1.10");
    const UpdateAnswer answer = readUpdateAnswer(body, version);
    require(answer.newer || !answer.offer);
    require(!readUpdateAnswer(body, QString()).newer);
    if (answer.offer) {
        require(QVersionNumber::fromString(answer.offer->version) > QVersionNumber::fromString(version));
        require(!answer.offer->url.contains(QLatin1Char(';')));
        require(!answer.offer->url.contains(QLatin1String("https")));
        QUrl(answer.offer->url, QUrl::TolerantMode).toString();
    }
}

void checkLibrary(const QByteArray &body)
{
    const LibraryOffer offer = readLibraryAnswer(body);
    require(!offer.version.isEmpty() || !offer.isNewerThan(QString()));
    require(!offer.isNewerThan(offer.version)); // or it would be fetched again and again
    QUrl(offer.address, QUrl::TolerantMode).toString();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    HttpResponse response;
    QByteArray body;
    if (!response.take(bytes, body) || !response.close()) {
        body = bytes; // no framing: an answer of its own
    }
    checkUpdate(body);
    checkLibrary(body);
    return 0;
}
