#pragma once

#include <QNetworkAccessManager>

/// The toolkit's manager with an answer of our own for what the program asks: GET over HTTP or HTTPS. See
/// HttpReply for what it bounds and what it leaves out. GUI thread only.
class HttpManager : public QNetworkAccessManager
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HttpManager)

public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *outgoingData) override;
};
