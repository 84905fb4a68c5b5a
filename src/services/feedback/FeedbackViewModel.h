#pragma once

#include "core/Property.h"
#include "core/Signal.h"
#include "services/feedback/FeedbackDraft.h"
#include "services/feedback/FeedbackSubmitting.h"
#include "services/telemetry/AnalyticsReporting.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

// The words of the feedback window.
namespace FeedbackText {
inline constexpr std::string_view windowTitle = "Tovrin Feedback";
inline constexpr std::string_view heading = "SEND FEEDBACK";
inline constexpr std::string_view intro =
    "Tell me what works, what doesn't, or what you'd like Tovrin to watch next.";
inline constexpr std::string_view kindPicker = "Kind of message";
inline constexpr std::string_view messageField = "Message";
inline constexpr std::string_view messagePlaceholder = "What's on your mind?";
inline constexpr std::string_view emailField = "Email";
inline constexpr std::string_view emailPlaceholder = "Email — optional, so I can reply";
inline constexpr std::string_view cancel = "Cancel";
inline constexpr std::string_view send = "Send";
inline constexpr std::string_view sending = "Sending…";
inline constexpr std::string_view thanks = "Thank you";
inline constexpr std::string_view onItsWay = "Your message is on its way. I read every one.";
inline constexpr std::string_view done = "Done";
} // namespace FeedbackText

// The feedback window's model: the draft as typed, and one post at a time. It lives as long as the
// application, so what was typed outlives the window until the next opening resets it. Main loop only.
class FeedbackViewModel {
public:
    static constexpr std::string_view submittedSignal = "Feedback.submitted";

    struct State {
        enum class Kind { editing, submitting, sent, failed };
        Kind kind = Kind::editing;
        std::string message; // what failed, for `failed` only

        static State of(Kind kind) { return {kind, {}}; }
        static State failed(std::string message) { return {Kind::failed, std::move(message)}; }
        bool operator==(const State&) const = default;
    };

    FeedbackViewModel(FeedbackSubmitting& submitter, AnalyticsReporting& analytics);
    FeedbackViewModel(const FeedbackViewModel&) = delete;
    FeedbackViewModel& operator=(const FeedbackViewModel&) = delete;

    Signal<> objectWillChange;
    Property<FeedbackKind> kind;
    Property<std::string> message;
    Property<std::string> email;
    Property<State> state;

    // Posts the draft unless the message is blank or a post has already started or gone through.
    void submit();
    // Every opening of the window starts from an empty form.
    void reset();

    bool showsSent() const { return state().kind == State::Kind::sent; }
    bool sending() const { return state().kind == State::Kind::submitting; }
    bool sendEnabled() const;
    std::string_view sendLabel() const;
    // What went wrong with the last post, while the form says so.
    std::optional<std::string> failure() const;

private:
    bool messageIsBlank() const;

    FeedbackSubmitting& m_submitter;
    AnalyticsReporting& m_analytics;
    // Counts resets, so that a post still in flight when the form was reset leaves the new one alone.
    std::uint64_t m_generation = 0;
    std::shared_ptr<const char> m_alive = std::make_shared<const char>('\0');
};

} // namespace tovrin
