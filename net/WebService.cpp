#include "net/WebService.h"

#include "net/NetLog.h"

#include <QNetworkReply>
#include <QTimer>
#include <QUrlQuery>

namespace
{

constexpr char limitProperty[] = "veltrixLimit";

bool isWebAddress(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

void giveUp(QNetworkReply *reply, WebService::Limit limit, const char *reason)
{
    if (reply->isFinished()) {
        return;
    }
    reply->setProperty(limitProperty, static_cast<int>(limit));
    qCWarning(lcNet).noquote() << "The answer of" << reply->url().host() << reason;
    reply->abort();
}

} // namespace

QString WebService::baseUrl()
{
    QString address = QStringLiteral(VELTRIX_API_URL);
    const QString wanted = qEnvironmentVariable("VELTRIX_API_URL");
    if (!wanted.isEmpty()) {
        if (isWebAddress(QUrl(wanted))) {
            address = wanted;
        } else {
            qCWarning(lcNet).noquote() << "VELTRIX_API_URL is not a web address:" << wanted;
        }
    }
    return address.endsWith(QLatin1Char('/')) ? address : address + QLatin1Char('/');
}

QUrl WebService::query(const QString &base, const QString &call)
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("call"), call);
    QUrl url(base, QUrl::TolerantMode);
    url.setQuery(query.toString(QUrl::FullyEncoded));
    return url;
}

void WebService::limit(QNetworkReply *reply, int deadline)
{
    reply->setReadBufferSize(maximumAnswerSize + 1);
    const auto check = [reply] {
        if (reply->bytesAvailable() > maximumAnswerSize) {
            giveUp(reply, Limit::Size, "is too long");
        }
    };
    QObject::connect(reply, &QNetworkReply::readyRead, reply, check);
    // It goes with the reply: QTimer::singleShot() would wake the program a minute after each answer.
    auto *end = new QTimer(reply);
    end->setSingleShot(true);
    QObject::connect(end, &QTimer::timeout, reply,
                     [reply] { giveUp(reply, Limit::Deadline, "does not come to an end"); });
    end->start(deadline);
}

QByteArray WebService::body(QNetworkReply *reply)
{
    if (limitOf(reply) != Limit::None || reply->bytesAvailable() > maximumAnswerSize) {
        return {};
    }
    return reply->readAll();
}

WebService::Limit WebService::limitOf(const QNetworkReply *reply)
{
    return static_cast<Limit>(reply->property(limitProperty).toInt());
}
