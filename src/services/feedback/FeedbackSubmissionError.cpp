#include "services/feedback/FeedbackSubmissionError.h"

namespace tovrin {

std::string FeedbackSubmissionError::description() const {
    switch (m_kind) {
    case Kind::server:
        return "The server turned it away (status " + std::to_string(m_status) + "). Please try again.";
    case Kind::noResponse:
        return "Couldn't reach the server. Check your connection and try again.";
    case Kind::transport:
        break;
    }
    return m_detail;
}

} // namespace tovrin
