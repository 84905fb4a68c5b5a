#pragma once

#include <string>
#include <utility>
#include <variant>

namespace tovrin {

// Either a value or an error, for operations whose failure the caller must handle.
template <class T, class E = std::string> class [[nodiscard]] Result {
public:
    Result(T value) : m_content(std::in_place_index<0>, std::move(value)) {}
    static Result failure(E error) { return Result(std::in_place_index<1>, std::move(error)); }

    bool ok() const { return m_content.index() == 0; }
    explicit operator bool() const { return ok(); }
    const T& value() const& { return std::get<0>(m_content); }
    T&& value() && { return std::get<0>(std::move(m_content)); }
    const E& error() const { return std::get<1>(m_content); }

private:
    template <std::size_t I, class V>
    Result(std::in_place_index_t<I> tag, V&& v) : m_content(tag, std::forward<V>(v)) {}
    std::variant<T, E> m_content;
};

template <class E> class [[nodiscard]] Result<void, E> {
public:
    Result() = default;
    static Result failure(E error) {
        Result r;
        r.m_error = std::move(error);
        r.m_ok = false;
        return r;
    }

    bool ok() const { return m_ok; }
    explicit operator bool() const { return m_ok; }
    const E& error() const { return m_error; }

private:
    bool m_ok = true;
    E m_error{};
};

} // namespace tovrin
