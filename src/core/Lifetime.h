#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace tovrin {

// Lets callbacks that may outlive their owner (posted tasks, other threads) do nothing once
// the owner is gone. The owner keeps a Lifetime as a member; it dies with the owner.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;

    template <class F> std::function<void()> guard(F fn) const {
        return [weak = std::weak_ptr<const char>(m_token), fn = std::move(fn)]() mutable {
            if (weak.lock()) fn();
        };
    }

private:
    std::shared_ptr<const char> m_token = std::make_shared<const char>('\0');
};

} // namespace tovrin
