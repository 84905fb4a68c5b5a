#pragma once

#include <string>
#include <utility>

namespace tovrin {

// Why a feedback post did not go through. `server` and `noResponse` carry the words shown to the
// user; `transport` carries the transport's own description, as it stands.
class FeedbackSubmissionError {
public:
    enum class Kind { server, noResponse, transport };

    FeedbackSubmissionError() = default;
    static FeedbackSubmissionError server(int status) { return {Kind::server, status, {}}; }
    static FeedbackSubmissionError noResponse() { return {Kind::noResponse, 0, {}}; }
    static FeedbackSubmissionError transport(std::string description) {
        return {Kind::transport, 0, std::move(description)};
    }

    std::string description() const;

private:
    FeedbackSubmissionError(Kind kind, int status, std::string detail)
        : m_kind(kind), m_status(status), m_detail(std::move(detail)) {}

    Kind m_kind = Kind::noResponse;
    int m_status = 0;
    std::string m_detail;
};

} // namespace tovrin
