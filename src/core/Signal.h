#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tovrin {

// Keeps a connection alive; destroying it disconnects. Safe to destroy after the signal.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> disconnect) : m_disconnect(std::move(disconnect)) {}
    Subscription(Subscription&& other) noexcept : m_disconnect(std::exchange(other.m_disconnect, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            m_disconnect = std::exchange(other.m_disconnect, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { reset(); }

    void reset() {
        if (auto d = std::exchange(m_disconnect, nullptr)) d();
    }

private:
    std::function<void()> m_disconnect;
};

// A list of subscribers, called in the order they connected. Single-threaded: main loop only.
// Handlers may connect or disconnect while the signal is being emitted.
template <class... Args> class Signal {
public:
    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    Subscription connect(std::function<void(Args...)> handler) {
        auto slot = std::make_shared<Slot>(Slot{std::move(handler), true});
        m_state->slots.push_back(slot);
        return Subscription(
            [weakState = std::weak_ptr<State>(m_state), weakSlot = std::weak_ptr<Slot>(slot)] {
                auto state = weakState.lock();
                auto s = weakSlot.lock();
                if (!state || !s) return;
                s->connected = false;
                std::erase(state->slots, s);
            });
    }

    void emit(const Args&... args) const {
        // A copy, so that handlers can change the list; a disconnected slot is skipped.
        const auto snapshot = m_state->slots;
        for (const auto& slot : snapshot) {
            if (slot->connected) slot->handler(args...);
        }
    }

    std::size_t subscriberCount() const { return m_state->slots.size(); }

private:
    struct Slot {
        std::function<void(Args...)> handler;
        bool connected;
    };
    struct State {
        std::vector<std::shared_ptr<Slot>> slots;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

// A collection of subscriptions that live as long as their holder.
class Subscriptions {
public:
    void add(Subscription s) { m_items.push_back(std::move(s)); }
    void clear() { m_items.clear(); }
    std::size_t size() const { return m_items.size(); }

private:
    std::vector<Subscription> m_items;
};

} // namespace tovrin
