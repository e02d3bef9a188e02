#include "net/UpdateOffer.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QVersionNumber>

namespace
{

QJsonObject readObject(const QByteArray &body)
{
    QString text = QString::fromUtf8(body.constData()); // up to the first NUL
    text.remove(QRegularExpression(QStringLiteral("[\n]")));
    text.remove(QRegularExpression(QStringLiteral("[\n\t\r]")));
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

// The first of several addresses. The download deliberately always goes over plain HTTP.
QString installerAddress(const QString &addresses)
{
    QString address = addresses.section(QLatin1Char(';'), 0, 0);
    address.replace(QLatin1String("\\/"), QLatin1String("/"));
    address.replace(QLatin1String("https"), QLatin1String("http"));
    return address;
}

bool isGreater(const QString &version, const QString &than)
{
    return QVersionNumber::compare(QVersionNumber::fromString(version), QVersionNumber::fromString(than)) > 0;
}

std::optional<UpdateOffer::Priority> priorityNamed(const QString &name)
{
    using Priority = UpdateOffer::Priority;
    if (name == QLatin1String("LOW")) {
        return Priority::Low;
    }
    if (name == QLatin1String("MID")) {
        return Priority::Mid;
    }
    if (name == QLatin1String("HIGH")) {
        return Priority::High;
    }
    if (name == QLatin1String("MAN")) {
        return Priority::Mandatory;
    }
    return std::nullopt;
}

} // namespace

UpdateAnswer readUpdateAnswer(const QByteArray &body, const QString &version)
{
    const QJsonObject object = readObject(body);
    const auto text = [&object](const char *key) { return object.value(QLatin1String(key)).toString(); };
    UpdateAnswer answer;
    answer.newer = !version.isEmpty() && isGreater(text("UPDATE_VERSION"), version);
    const auto priority = priorityNamed(text("UPDATE_PRIORITY"));
    if (answer.newer && priority) {
        answer.offer = UpdateOffer{text("UPDATE_VERSION"), installerAddress(text("UPDATE_URL")),
                                   text("UPDATE_SIGNATURE"), *priority};
    }
    return answer;
}
