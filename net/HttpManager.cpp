#include "net/HttpManager.h"

#include "net/HttpReply.h"

QNetworkReply *HttpManager::createRequest(Operation operation, const QNetworkRequest &request,
                                          QIODevice *outgoingData)
{
    if (operation == GetOperation && HttpReply::canFetch(request.url())) {
        return new HttpReply(request, this);
    }
    return QNetworkAccessManager::createRequest(operation, request, outgoingData);
}
