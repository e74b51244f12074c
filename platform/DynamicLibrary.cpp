#include "platform/DynamicLibrary.h"

#include <dlfcn.h>

#include <filesystem>

namespace vesk {

void* LoadDynamicLibrary(const std::string& path) {
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* FindSymbol(void* library, const char* name) {
    return dlsym(library, name);
}

void FreeDynamicLibrary(void* library) {
    if (library) dlclose(library);
}

std::string ExecutablePath() {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : path.string();
}

}  // namespace vesk
