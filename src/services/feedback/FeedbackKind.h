#pragma once

#include <array>
#include <string_view>

namespace tovrin {

// What the user is sending, as the picker offers it, in the picker's order.
enum class FeedbackKind { feedback, featureRequest };

inline constexpr std::array<FeedbackKind, 2> allFeedbackKinds{FeedbackKind::feedback,
                                                              FeedbackKind::featureRequest};

// "Feedback", "Feature request": the picker's words.
std::string_view label(FeedbackKind kind);
// "feedback", "feature": the form's `type` field.
std::string_view formType(FeedbackKind kind);

} // namespace tovrin
