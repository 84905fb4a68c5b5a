#pragma once

#include "core/Lifetime.h"
#include "core/MainLoop.h"
#include "core/Property.h"
#include "core/Signal.h"
#include "focus/SessionFocusing.h"
#include "sessions/AgentSession.h"
#include "sessions/AggregateStatus.h"
#include "sessions/SessionStore.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// The themed section headings. A heading is drawn from its pool; the fallback stands while the
// section is empty.
namespace TrayPhrases {
inline constexpr std::string_view waitingFallback = "Calling for aid";
inline constexpr std::string_view workingFallback = "At work";
inline constexpr std::string_view restingFallback = "Resting";

inline constexpr std::array<std::string_view, 14> waiting{
    "Sounding the horn",   "Lighting the beacon",  "The beacons are lit", "Awaiting your word",
    "Awaiting the muster", "Calling for the king", "Crying out for aid",  "Summoning the Rohirrim",
    "Stayed for counsel",  "Horns in the deep",    "Watchfires burning",  "The Riders are called",
    "Beset and calling",   "Help is summoned",
};

inline constexpr std::array<std::string_view, 15> working{
    "Riding into battle",     "Fighting trolls",      "Storming the gates",
    "Marching to war",        "Hewing orcs",          "Loosing arrows",
    "Holding the wall",       "Forging in the deeps", "Scaling the dark tower",
    "Breaking the siege",     "Charging the field",   "Crossing the mountains",
    "Standing at the bridge", "Lighting the beacons", "Wielding the flame",
};

inline constexpr std::array<std::string_view, 14> resting{
    "Resting by the fire",      "Drinking at the inn",   "Smoking pipe-weed",     "Feasting in the hall",
    "Singing old songs",        "Sharpening blades",     "Tending the hearth",    "Counting the spoils",
    "Sleeping under the stars", "Telling tall tales",    "Warming by the embers", "Home in the green hills",
    "Second breakfast",         "Mending the road home",
};
} // namespace TrayPhrases

// What the menu-bar item, the menu panel and the floating chip show: the roll-up, the sessions
// in three sections in the store's order, and a heading per section. A heading is kept until the
// set of sessions in its section changes, so the store's periodic refresh does not reshuffle it.
// Views read the properties and never write them. Main loop only.
class TrayViewModel {
public:
    // Returns an index below n (n > 0), uniformly.
    using RandomIndex = std::function<std::size_t(std::size_t n)>;
    static RandomIndex systemRandom();

    // Fills the model from the store's current state before returning; later changes of the
    // store arrive through `loop`, after the store has assigned them.
    TrayViewModel(SessionStore& store, SessionFocusing& focuser, MainLoop& loop,
                  RandomIndex random = systemRandom());
    TrayViewModel(const TrayViewModel&) = delete;
    TrayViewModel& operator=(const TrayViewModel&) = delete;

    Signal<> objectWillChange;
    Property<AggregateStatus> aggregate{objectWillChange, AggregateStatus::neutral()};
    Property<std::vector<AgentSession>> waiting{objectWillChange, {}};
    Property<std::vector<AgentSession>> working{objectWillChange, {}};
    Property<std::vector<AgentSession>> idle{objectWillChange, {}};
    Property<std::string> waitingTitle{objectWillChange, std::string(TrayPhrases::waitingFallback)};
    Property<std::string> workingTitle{objectWillChange, std::string(TrayPhrases::workingFallback)};
    Property<std::string> restingTitle{objectWillChange, std::string(TrayPhrases::restingFallback)};
    // One line per remote host out of reach, under the list.
    Property<std::vector<std::string>> hostNotices{objectWillChange, {}};

    // Chooses between the session list and the empty state.
    bool hasSessions() const;

    // Rows dismiss through the store and raise windows through the focuser.
    SessionStore& store() const { return m_store; }
    SessionFocusing& focuser() const { return m_focuser; }

private:
    // The phrase drawn for one set of sessions, keyed by the sorted session ids.
    struct SectionLine {
        std::string signature;
        std::string line;
    };

    void bind();
    void apply(const std::vector<AgentSession>& sessions, const AggregateStatus& rollUp);
    std::string rolledTitle(const std::vector<AgentSession>& list, std::optional<SectionLine>& cache,
                            std::span<const std::string_view> pool, std::string_view fallback);

    SessionStore& m_store;
    SessionFocusing& m_focuser;
    MainLoop& m_loop;
    RandomIndex m_random;

    std::optional<SectionLine> m_waitingSection;
    std::optional<SectionLine> m_workingSection;
    std::optional<SectionLine> m_restingSection;

    // The latest values of the store, for pairing one change with the other's last value.
    std::optional<std::vector<AgentSession>> m_latestSessions;
    std::optional<AggregateStatus> m_latestAggregate;

    Subscriptions m_cancellables;
    Lifetime m_lifetime; // last: posted deliveries check it before touching the model
};

} // namespace tovrin
