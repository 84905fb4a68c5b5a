#pragma once

#include "core/Result.h"
#include "services/feedback/FeedbackDraft.h"
#include "services/feedback/FeedbackSubmissionError.h"

#include <functional>

namespace tovrin {

// Sends one draft to the maker. No retry and no copy is kept: the post goes through or fails.
class FeedbackSubmitting {
public:
    using Completion = std::function<void(Result<void, FeedbackSubmissionError>)>;

    virtual ~FeedbackSubmitting() = default;
    // Starts the post and returns at once; the completion comes later on the main loop, once.
    virtual void submit(const FeedbackDraft& draft, Completion completion) = 0;
};

} // namespace tovrin
