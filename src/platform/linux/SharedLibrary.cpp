#include "platform/linux/SharedLibrary.h"

#include <dlfcn.h>

namespace tovrin {

std::optional<SharedLibrary> SharedLibrary::load(const char* soname) {
    void* handle = ::dlopen(soname, RTLD_NOW | RTLD_LOCAL);
    if (!handle) return std::nullopt;
    return SharedLibrary(handle);
}

void* SharedLibrary::symbol(const char* name) const {
    return ::dlsym(m_handle, name);
}

} // namespace tovrin
