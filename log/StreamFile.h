#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

namespace vesk {

// File access with 64-bit positions, in bytes from the start of the file.
std::int64_t TellPosition(std::FILE*);  // -1 where the stream has no position
bool SeekTo(std::FILE*, std::int64_t position);
std::int64_t EndPosition(std::FILE*);  // leaves the stream at its end

// Reads exactly size bytes; false, with the rest of the target untouched, at the end of the file.
bool ReadBytes(std::FILE*, void* target, std::size_t size);
bool ReadWord32(std::FILE*, std::uint32_t& value);

// A stream that is closed unless it is handed on by release().
struct StreamCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using StreamOwner = std::unique_ptr<std::FILE, StreamCloser>;

}  // namespace vesk
