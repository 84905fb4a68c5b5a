#pragma once

#include "services/feedback/FeedbackKind.h"

#include <string>

namespace tovrin {

// One message as the user left it in the window: nothing trimmed, the address possibly empty.
struct FeedbackDraft {
    FeedbackKind kind = FeedbackKind::feedback;
    std::string message;
    std::string email;

    bool operator==(const FeedbackDraft&) const = default;
};

} // namespace tovrin
