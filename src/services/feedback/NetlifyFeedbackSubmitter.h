#pragma once

#include "core/HttpClient.h"
#include "services/feedback/FeedbackSubmitting.h"

#include <string>
#include <string_view>

namespace tovrin {

// Posts feedback as a submission of a named form to the product's web site, whose host collects
// the submissions of that form. The body's format is what the host's form expects, byte for byte.
// Main loop only.
class NetlifyFeedbackSubmitter final : public FeedbackSubmitting {
public:
    static constexpr std::string_view defaultFormName = "feedback";
    static constexpr std::string_view contentType = "application/x-www-form-urlencoded; charset=utf-8";
    static constexpr Seconds requestTimeout{60};

    NetlifyFeedbackSubmitter(HttpClient& session, std::string endpoint,
                             std::string formName = std::string(defaultFormName),
                             std::string appVersion = bundleVersion());

    void submit(const FeedbackDraft& draft, Completion completion) override;

    // "<version> (<build>)" of this build, "?" standing for a part it lacks.
    static std::string bundleVersion();
    // The form's fields in the host's order, each name and value form-encoded.
    static std::string encodedBody(const FeedbackDraft& draft, std::string_view formName,
                                   std::string_view appVersion);
    // Where the form is posted: the configured endpoint, else the root of the web site over HTTPS;
    // empty when the build names neither.
    static std::string submitURL(std::string_view configuredEndpoint, std::string_view website);

private:
    HttpClient& m_session;
    std::string m_endpoint;
    std::string m_formName;
    std::string m_appVersion;
};

} // namespace tovrin
