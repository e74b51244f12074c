#pragma once

#include <string>

namespace vesk {

// Loads a shared library by path; null if that fails. Release it with FreeDynamicLibrary.
void* LoadDynamicLibrary(const std::string& path);

// Address of an exported symbol, null if the library has none of that name.
void* FindSymbol(void* library, const char* name);

void FreeDynamicLibrary(void* library);

// Path of the running program's file; empty if the system does not tell.
std::string ExecutablePath();

// What a shared library's file name ends in on this platform, with its dot.
constexpr const char* kDynamicLibrarySuffix = ".so";

}  // namespace vesk
