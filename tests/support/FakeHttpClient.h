#pragma once

#include "core/HttpClient.h"

#include <deque>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tovrin::test {

// Keeps every request and answers only when told to, oldest first, as a server would later.
class FakeHttpClient final : public HttpClient {
public:
    void send(HttpRequest request, Completion completion) override {
        m_requests.push_back(request);
        m_pending.push_back(std::move(completion));
    }

    const std::vector<HttpRequest>& requests() const { return m_requests; }
    std::size_t pendingCount() const { return m_pending.size(); }

    void answer(HttpResult result) {
        if (m_pending.empty()) throw std::logic_error("no request is waiting for an answer");
        auto completion = std::move(m_pending.front());
        m_pending.pop_front();
        completion(std::move(result));
    }
    void respond(int status, std::string body) { answer(HttpResponse{status, std::move(body)}); }
    void fail(TransportError::Kind kind, std::string text = {}) {
        answer(HttpResult::failure({kind, std::move(text)}));
    }

private:
    std::vector<HttpRequest> m_requests;
    std::deque<Completion> m_pending;
};

} // namespace tovrin::test
