#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tovrin::test {

// Sets an environment variable for the life of the object, then puts back what was there.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const std::string& value) : m_name(name) {
        if (const char* old = std::getenv(name)) m_old = old;
        ::setenv(name, value.c_str(), 1);
    }
    ~ScopedEnv() {
        if (m_old)
            ::setenv(m_name.c_str(), m_old->c_str(), 1);
        else
            ::unsetenv(m_name.c_str());
    }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    std::string m_name;
    std::optional<std::string> m_old;
};

} // namespace tovrin::test
