#include <MelkarCommon/platform/files/late_library.h>

#include <dlfcn.h>

namespace melkar {

LateLibrary::LateLibrary(const char* file) : m_library(dlopen(file, RTLD_NOW | RTLD_LOCAL)) {
    if (m_library == nullptr)
        m_fault = dlerror();
}

LateLibrary::Found LateLibrary::Find(const char* name) {
    if (m_library == nullptr)
        return {nullptr};
    void* address = dlsym(m_library, name);
    if (address == nullptr)
        m_fault = dlerror();
    return {address};
}

} // namespace melkar
