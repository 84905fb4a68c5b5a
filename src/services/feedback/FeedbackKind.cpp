#include "services/feedback/FeedbackKind.h"

namespace tovrin {

std::string_view label(FeedbackKind kind) {
    return kind == FeedbackKind::featureRequest ? "Feature request" : "Feedback";
}

std::string_view formType(FeedbackKind kind) {
    return kind == FeedbackKind::featureRequest ? "feature" : "feedback";
}

} // namespace tovrin
