#pragma once

#include "services/feedback/FeedbackSubmitting.h"

#include <vector>

namespace tovrin::test {

// Keeps every draft and finishes the posts, oldest first, only when the test says.
class FakeFeedbackSubmitter final : public FeedbackSubmitting {
public:
    void submit(const FeedbackDraft& draft, Completion completion) override {
        drafts.push_back(draft);
        m_pending.push_back(std::move(completion));
    }
    void finish(Result<void, FeedbackSubmissionError> result) {
        auto completion = std::move(m_pending.at(0));
        m_pending.erase(m_pending.begin());
        completion(std::move(result));
    }

    std::vector<FeedbackDraft> drafts;

private:
    std::vector<Completion> m_pending;
};

} // namespace tovrin::test
