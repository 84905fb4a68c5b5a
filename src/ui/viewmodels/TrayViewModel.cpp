#include "ui/viewmodels/TrayViewModel.h"

#include "ui/viewmodels/PanelContent.h"
#include "ui/viewmodels/SessionSections.h"

#include <algorithm>
#include <memory>
#include <random>
#include <utility>

namespace tovrin {

TrayViewModel::RandomIndex TrayViewModel::systemRandom() {
    auto engine = std::make_shared<std::mt19937>(std::random_device{}());
    return [engine](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(*engine); };
}

TrayViewModel::TrayViewModel(SessionStore& store, SessionFocusing& focuser, MainLoop& loop,
                             RandomIndex random)
    : m_store(store), m_focuser(focuser), m_loop(loop), m_random(std::move(random)) {
    bind();
}

bool TrayViewModel::hasSessions() const {
    return !waiting().empty() || !working().empty() || !idle().empty();
}

void TrayViewModel::bind() {
    // The store hands a new value to observers before storing it, so the model reads the pair
    // on a later turn of the loop, by value, and only while it still exists.
    const auto deliver = [this] {
        if (!m_latestSessions || !m_latestAggregate) return;
        m_loop.post(m_lifetime.guard(
            [this, sessions = *m_latestSessions, rollUp = *m_latestAggregate] { apply(sessions, rollUp); }));
    };
    m_cancellables.add(m_store.sessions.observe([this, deliver](const std::vector<AgentSession>& value) {
        m_latestSessions = value;
        deliver();
    }));
    m_cancellables.add(m_store.aggregate.observe([this, deliver](const AggregateStatus& value) {
        m_latestAggregate = value;
        deliver();
    }));

    // The first display does not wait for the loop.
    apply(m_store.sessions(), m_store.aggregate());
}

void TrayViewModel::apply(const std::vector<AgentSession>& sessions, const AggregateStatus& rollUp) {
    aggregate.set(rollUp);
    auto sections = SessionSections::of(sessions);
    waiting.set(std::move(sections.waiting));
    working.set(std::move(sections.working));
    idle.set(std::move(sections.idle));
    waitingTitle.set(
        rolledTitle(waiting(), m_waitingSection, TrayPhrases::waiting, TrayPhrases::waitingFallback));
    workingTitle.set(
        rolledTitle(working(), m_workingSection, TrayPhrases::working, TrayPhrases::workingFallback));
    restingTitle.set(
        rolledTitle(idle(), m_restingSection, TrayPhrases::resting, TrayPhrases::restingFallback));
    std::vector<std::string> notices;
    for (const auto& away : m_store.unreachableHosts())
        notices.push_back(PanelContent::unreachableHostNotice(away));
    if (notices != hostNotices()) hostNotices.set(std::move(notices));
}

std::string TrayViewModel::rolledTitle(const std::vector<AgentSession>& list,
                                       std::optional<SectionLine>& cache,
                                       std::span<const std::string_view> pool, std::string_view fallback) {
    if (list.empty()) {
        // Forgotten, so that the section draws afresh when it fills again.
        cache.reset();
        return std::string(fallback);
    }

    // Sorted ids: the heading follows the set of sessions, not their order or their fields.
    std::vector<std::string> keys;
    keys.reserve(list.size());
    for (const auto& s : list)
        keys.push_back(s.id());
    std::ranges::sort(keys);
    std::string signature;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i > 0) signature += ',';
        signature += keys[i];
    }

    if (cache && cache->signature == signature) return cache->line;

    const std::size_t index = m_random(pool.size()) % pool.size();
    cache = SectionLine{std::move(signature), std::string(pool[index])};
    return cache->line;
}

} // namespace tovrin
