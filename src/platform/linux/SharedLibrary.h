#pragma once

#include <optional>

namespace tovrin {

// A library loaded at run time, the first time a feature needs it, so that a process which never
// uses the feature neither maps nor relocates it. It stays loaded for the rest of the process.
class SharedLibrary {
public:
    // By soname ("libfoo.so.1"), as the dynamic linker finds it, or by path; nothing when it
    // isn't there or can't be loaded.
    static std::optional<SharedLibrary> load(const char* soname);

    // Points `function` at the exported symbol; false when the library lacks it.
    template <typename Function> bool resolve(const char* name, Function*& function) const {
        function = reinterpret_cast<Function*>(symbol(name));
        return function != nullptr;
    }

private:
    explicit SharedLibrary(void* handle) : m_handle(handle) {}
    void* symbol(const char* name) const;

    void* m_handle;
};

} // namespace tovrin
