#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <QtGlobal>

class QNetworkReply;

/// Where the program's web service is and how much of its answers is believed. All that the program asks the
/// service goes through here.
namespace WebService
{

/// Largest answer to a query that is read; an answer is a few hundred bytes. A longer one counts as none.
constexpr qint64 maximumAnswerSize = 64LL * 1024;

/// A query that has not been answered in full after this long is given up.
constexpr int answerDeadline = 60000; ///< ms

/// The service's address, ending in "/". The environment variable VELTRIX_API_URL wins over the address that
/// was chosen when the program was built.
QString baseUrl();

/// The address of the query @p call at the service @p base.
QUrl query(const QString &base, const QString &call);

/// Keeps @p reply within maximumAnswerSize and @p deadline (ms) by aborting it. To be called at once when the
/// request has been sent.
void limit(QNetworkReply *reply, int deadline = answerDeadline);

/// The body of a finished reply that was given to limit(); empty if a limit was hit.
QByteArray body(QNetworkReply *reply);

/// A bound that an answer may break.
enum class Limit { None, Size, Deadline };

/// The limit for which @p reply was aborted.
Limit limitOf(const QNetworkReply *reply);

} // namespace WebService
