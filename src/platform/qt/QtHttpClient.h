#pragma once

#include "core/HttpClient.h"

#include <QNetworkAccessManager>
#include <QObject>

namespace tovrin {

// HTTP(S) on Qt Network. Built on the GUI thread, whose event loop carries every answer.
// Destroying the client drops the requests in flight without answering them.
class QtHttpClient final : public HttpClient {
public:
    QtHttpClient();
    ~QtHttpClient() override;
    QtHttpClient(const QtHttpClient&) = delete;
    QtHttpClient& operator=(const QtHttpClient&) = delete;

    void send(HttpRequest request, Completion completion) override;

private:
    QNetworkAccessManager m_manager;
    // Declared after the manager, so it dies first: the connections that answer go with it,
    // and replies aborted by the manager's end reach no one.
    QObject m_context;
};

} // namespace tovrin
