#include <cstdint>
#include <cstdlib>

#include "database/JsonTargetLoader.h"

// A description is taken, or refused with a reason.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    vesk::TargetDatabase database;
    std::string error;
    const bool loaded = vesk::ParseTargetJson(text, database, error);
    if (loaded != error.empty()) std::abort();
    return 0;
}
