#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "log/StreamFile.h"
#include "timeline/FilterFile.h"

namespace {

bool ReadFrom(std::string bytes, vesk::FilterFile& file, std::string& error) {
    bytes += '\0';  // a stream over memory has to have some
    const vesk::StreamOwner stream(
        fmemopen(bytes.data(), std::max<std::size_t>(bytes.size() - 1, 1), "rb"));
    return file.Read(stream.get(), error);
}

}  // namespace

// Any bytes are refused with a text, or what is taken of them comes back the same from a file that
// is written with it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    vesk::FilterFile file;
    std::string error;
    if (!ReadFrom(bytes, file, error)) {
        if (error.empty() || !file.m_Sections[0].empty()) std::abort();
        return 0;
    }
    const std::string written = file.Bytes();
    if (written.size() > size + 20) std::abort();  // version and counts may be missing
    vesk::FilterFile again;
    if (!ReadFrom(written, again, error) || again.m_CutOff) std::abort();
    if (again.m_Sections != file.m_Sections || again.Bytes() != written) std::abort();
    return 0;
}
