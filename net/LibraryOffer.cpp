#include "net/LibraryOffer.h"

#include <QJsonDocument>
#include <QJsonObject>

LibraryOffer readLibraryAnswer(const QByteArray &body)
{
    const QJsonObject object = QJsonDocument::fromJson(body).object();
    const auto text = [&object](const char *key) { return object.value(QLatin1String(key)).toString(); };
    return {text("ZR_VERSION"), text("ZR_URL"), text("ZR_SIGNATURE")};
}
