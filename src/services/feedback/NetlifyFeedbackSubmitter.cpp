#include "services/feedback/NetlifyFeedbackSubmitter.h"

#include "core/BuildInfo.h"
#include "core/Utf8.h"
#include "services/feedback/UnicodeCategories.h"
#include "ui/viewmodels/AboutContent.h"

#include <array>
#include <optional>
#include <utility>

namespace tovrin {
namespace {

using SubmitResult = Result<void, FeedbackSubmissionError>;

bool passesUnescaped(char32_t c) {
    return UnicodeCategories::isLetterMarkOrNumber(c) || c == '-' || c == '.' || c == '_';
}

// Letters, marks and numbers of any script, "-", "." and "_" stand as their UTF-8 bytes, a blank as "+",
// every other character as its percent-encoded UTF-8 bytes. Text that isn't UTF-8 can't be encoded.
std::optional<std::string> formEncoded(std::string_view text) {
    static constexpr char hex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t start = pos;
        const char32_t c = Utf8::next(text, pos);
        const std::string_view bytes = text.substr(start, pos - start);
        if (c == Utf8::replacement && bytes != "\xEF\xBF\xBD") return std::nullopt;
        if (c == ' ') {
            out += '+';
        } else if (passesUnescaped(c)) {
            out += bytes;
        } else {
            for (const char byte : bytes) {
                const auto b = static_cast<unsigned char>(byte);
                out += '%';
                out += hex[b >> 4];
                out += hex[b & 0x0F];
            }
        }
    }
    return out;
}

} // namespace

NetlifyFeedbackSubmitter::NetlifyFeedbackSubmitter(HttpClient& session, std::string endpoint,
                                                   std::string formName, std::string appVersion)
    : m_session(session), m_endpoint(std::move(endpoint)), m_formName(std::move(formName)),
      m_appVersion(std::move(appVersion)) {}

std::string NetlifyFeedbackSubmitter::bundleVersion() {
    return AboutContent::versionAndBuild(BuildInfo::version, BuildInfo::buildNumber, "?", "?");
}

std::string NetlifyFeedbackSubmitter::encodedBody(const FeedbackDraft& draft, std::string_view formName,
                                                  std::string_view appVersion) {
    const std::array<std::pair<std::string_view, std::string_view>, 6> fields{{
        {"form-name", formName},
        {"type", formType(draft.kind)},
        {"message", draft.message},
        {"email", Utf8::trim(draft.email, Utf8::isWhitespace)},
        {"source", "linux-app"},
        {"appVersion", appVersion},
    }};
    std::string body;
    for (const auto& [name, value] : fields) {
        if (!body.empty()) body += '&';
        body += formEncoded(name).value_or("");
        body += '=';
        body += formEncoded(value).value_or("");
    }
    return body;
}

std::string NetlifyFeedbackSubmitter::submitURL(std::string_view configuredEndpoint,
                                                std::string_view website) {
    if (!configuredEndpoint.empty()) return std::string(configuredEndpoint);
    const std::string host = AboutContent::websiteName(website);
    return host.empty() ? std::string() : "https://" + host + "/";
}

void NetlifyFeedbackSubmitter::submit(const FeedbackDraft& draft, Completion completion) {
    HttpRequest request{.method = "POST",
                        .url = m_endpoint,
                        .headers = {{"Content-Type", std::string(contentType)}},
                        .body = encodedBody(draft, m_formName, m_appVersion),
                        .timeout = requestTimeout};
    m_session.send(std::move(request), [completion = std::move(completion)](HttpResult result) {
        if (!result)
            return completion(
                SubmitResult::failure(FeedbackSubmissionError::transport(result.error().description())));
        const std::optional<int> status = result.value().status;
        if (!status) return completion(SubmitResult::failure(FeedbackSubmissionError::noResponse()));
        if (*status < 200 || *status > 299)
            return completion(SubmitResult::failure(FeedbackSubmissionError::server(*status)));
        completion(SubmitResult());
    });
}

} // namespace tovrin
