#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <ostream>
#include <string>

namespace vesk {

// Takes bytes in file order; false if they could not be kept.
using ByteSink = std::function<bool(const char* bytes, std::size_t size)>;

// Sinks over a target of the caller's, which must outlive them.
inline ByteSink SinkTo(std::FILE* file) {
    return [file](const char* bytes, std::size_t size) {
        return std::fwrite(bytes, 1, size, file) == size;
    };
}

inline ByteSink SinkTo(std::ostream& stream) {
    return [&stream](const char* bytes, std::size_t size) {
        return static_cast<bool>(stream.write(bytes, static_cast<std::streamsize>(size)));
    };
}

inline ByteSink SinkTo(std::string& text) {
    return [&text](const char* bytes, std::size_t size) {
        text.append(bytes, size);
        return true;
    };
}

}  // namespace vesk
