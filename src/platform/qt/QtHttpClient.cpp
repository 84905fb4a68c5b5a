#include "platform/qt/QtHttpClient.h"

#include <QMetaObject>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <cmath>
#include <memory>

namespace tovrin {
namespace {

QByteArray bytes(const std::string& text) {
    return QByteArray(text.data(), static_cast<qsizetype>(text.size()));
}

// Qt's error texts often quote the whole URL, which may carry a secret (a bot token is part of
// the path). The description keeps the scheme and host only.
std::string describe(const QNetworkReply& reply, const QUrl& url) {
    QString text = reply.errorString();
    const QString host =
        url.adjusted(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::RemoveUserInfo)
            .toString();
    for (const auto format : {QUrl::FullyEncoded, QUrl::PrettyDecoded})
        text.replace(url.toString(format), host);
    const QString path = url.path(QUrl::FullyDecoded);
    if (!path.isEmpty() && path != QStringLiteral("/")) text.replace(path, QString());
    return text.toStdString();
}

TransportError::Kind kindOf(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyNotFoundError:
        return TransportError::Kind::cannotConnect;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return TransportError::Kind::timeout;
    default:
        return TransportError::Kind::other;
    }
}

} // namespace

QtHttpClient::QtHttpClient() = default;
QtHttpClient::~QtHttpClient() = default;

void QtHttpClient::send(HttpRequest request, Completion completion) {
    const QUrl url(QString::fromStdString(request.url), QUrl::StrictMode);
    if (!url.isValid() || url.isRelative()) {
        QMetaObject::invokeMethod(
            &m_context,
            [completion = std::move(completion)] {
                completion(HttpResult::failure({TransportError::Kind::other, "The URL is not valid."}));
            },
            Qt::QueuedConnection);
        return;
    }

    QNetworkRequest qrequest(url);
    for (const auto& [name, value] : request.headers)
        qrequest.setRawHeader(bytes(name), bytes(value));

    QNetworkReply* reply = nullptr;
    if (request.body)
        reply = m_manager.sendCustomRequest(qrequest, bytes(request.method), bytes(*request.body));
    else if (request.method == "GET")
        reply = m_manager.get(qrequest); // also serves the schemes that aren't HTTP
    else
        reply = m_manager.sendCustomRequest(qrequest, bytes(request.method));

    // The whole exchange must end within the timeout, whatever the server does meanwhile.
    auto timedOut = std::make_shared<bool>(false);
    auto* timer = new QTimer(reply);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, reply, [reply, timedOut] {
        *timedOut = true;
        reply->abort();
    });
    timer->start(std::chrono::milliseconds(std::llround(std::max(0.0, request.timeout.count()) * 1000)));

    QObject::connect(
        reply, &QNetworkReply::finished, &m_context,
        [reply, url, timedOut, completion = std::move(completion)] {
            reply->deleteLater();
            if (*timedOut) return completion(HttpResult::failure({TransportError::Kind::timeout, {}}));
            // Errors below the content range are the network's: the exchange broke off, even if a
            // status line came first. From there on, an HTTP status is an answer, 4xx and 5xx too.
            const auto error = reply->error();
            const bool broken = error != QNetworkReply::NoError && error < QNetworkReply::ContentAccessDenied;
            const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
            if (!broken && status.isValid())
                return completion(HttpResponse{status.toInt(), reply->readAll().toStdString()});
            if (error == QNetworkReply::NoError)
                return completion(HttpResponse{std::nullopt, reply->readAll().toStdString()});
            const auto kind = kindOf(error);
            completion(HttpResult::failure(
                {kind, kind == TransportError::Kind::other ? describe(*reply, url) : std::string()}));
        });
}

} // namespace tovrin
