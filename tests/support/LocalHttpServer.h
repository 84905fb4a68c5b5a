#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace tovrin::test {

struct ServedRequest {
    QByteArray method;
    QByteArray path;
    std::map<QByteArray, QByteArray> headers; // names in lower case
    QByteArray body;
};

inline QByteArray httpReply(int status, const QByteArray& contentType, const QByteArray& body) {
    return "HTTP/1.1 " + QByteArray::number(status) + " Whatever\r\nContent-Type: " + contentType +
           "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

// A tiny HTTP/1.1 server on 127.0.0.1 that answers each path with a canned reply, or never, or by
// dropping the connection. It runs on the test's own event loop.
class LocalHttpServer {
public:
    static inline const QByteArray never = "never";
    static inline const QByteArray drop = "drop";

    LocalHttpServer() {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost, 0));
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] {
            while (QTcpSocket* socket = m_server.nextPendingConnection())
                QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { read(socket); });
        });
    }

    std::string base() const { return "http://127.0.0.1:" + std::to_string(m_server.serverPort()); }
    void route(const QByteArray& path, QByteArray reply) { m_routes[path] = std::move(reply); }
    const std::vector<ServedRequest>& received() const { return m_received; }

private:
    void read(QTcpSocket* socket) {
        QByteArray& buffer = m_buffers[socket];
        buffer += socket->readAll();
        const auto end = buffer.indexOf("\r\n\r\n");
        if (end < 0) return;
        ServedRequest request;
        const auto lines = buffer.left(end).split('\n');
        const auto first = lines[0].trimmed().split(' ');
        request.method = first.value(0);
        request.path = first.value(1);
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const auto colon = lines[i].indexOf(':');
            if (colon > 0)
                request.headers[lines[i].left(colon).toLower()] = lines[i].mid(colon + 1).trimmed();
        }
        const auto length =
            request.headers.contains("content-length") ? request.headers["content-length"].toInt() : 0;
        if (buffer.size() < end + 4 + length) return;
        request.body = buffer.mid(end + 4, length);
        m_buffers.erase(socket);
        m_received.push_back(request);

        const auto it = m_routes.find(request.path);
        const QByteArray reply = it == m_routes.end() ? httpReply(404, "text/plain", "no route") : it->second;
        if (reply == never) return;
        if (reply == drop) {
            socket->abort();
            return;
        }
        socket->write(reply);
        socket->disconnectFromHost();
    }

    QTcpServer m_server;
    std::map<QByteArray, QByteArray> m_routes;
    std::map<QTcpSocket*, QByteArray> m_buffers;
    std::vector<ServedRequest> m_received;
};

} // namespace tovrin::test
