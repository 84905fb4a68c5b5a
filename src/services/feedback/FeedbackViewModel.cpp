#include "services/feedback/FeedbackViewModel.h"

#include "core/Utf8.h"

namespace tovrin {

FeedbackViewModel::FeedbackViewModel(FeedbackSubmitting& submitter, AnalyticsReporting& analytics)
    : kind(objectWillChange, FeedbackKind::feedback), message(objectWillChange, {}),
      email(objectWillChange, {}), state(objectWillChange, State{}), m_submitter(submitter),
      m_analytics(analytics) {}

bool FeedbackViewModel::messageIsBlank() const {
    return Utf8::trim(message(), Utf8::isWhitespace).empty();
}

void FeedbackViewModel::submit() {
    if (!sendEnabled()) return;
    state.set(State::of(State::Kind::submitting));
    // The draft goes out untrimmed: the blank check is the only use of the trimmed text.
    const FeedbackDraft draft{kind(), message(), email()};
    m_submitter.submit(draft, [this, alive = std::weak_ptr<const char>(m_alive),
                               generation = m_generation](Result<void, FeedbackSubmissionError> result) {
        if (!alive.lock()) return;
        if (result) m_analytics.track(submittedSignal);
        if (generation != m_generation) return;
        state.set(result ? State::of(State::Kind::sent) : State::failed(result.error().description()));
    });
}

void FeedbackViewModel::reset() {
    ++m_generation;
    kind.set(FeedbackKind::feedback);
    message.set({});
    email.set({});
    state.set(State{});
}

bool FeedbackViewModel::sendEnabled() const {
    return !messageIsBlank() && !sending() && !showsSent();
}

std::string_view FeedbackViewModel::sendLabel() const {
    return sending() ? FeedbackText::sending : FeedbackText::send;
}

std::optional<std::string> FeedbackViewModel::failure() const {
    if (state().kind != State::Kind::failed) return std::nullopt;
    return state().message;
}

} // namespace tovrin
