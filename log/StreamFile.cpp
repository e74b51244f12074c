#include "log/StreamFile.h"

#include <sys/types.h>

#include "log/LittleEndian.h"

namespace vesk {

std::int64_t TellPosition(std::FILE* stream) {
    return ftello(stream);
}

bool SeekTo(std::FILE* stream, std::int64_t position) {
    return fseeko(stream, static_cast<off_t>(position), SEEK_SET) == 0;
}

std::int64_t EndPosition(std::FILE* stream) {
    return fseeko(stream, 0, SEEK_END) == 0 ? TellPosition(stream) : -1;
}

bool ReadBytes(std::FILE* stream, void* target, std::size_t size) {
    return std::fread(target, 1, size, stream) == size;
}

bool ReadWord32(std::FILE* stream, std::uint32_t& value) {
    std::uint8_t bytes[4];
    if (!ReadBytes(stream, bytes, sizeof bytes)) return false;
    value = Word32At(bytes);
    return true;
}

}  // namespace vesk
