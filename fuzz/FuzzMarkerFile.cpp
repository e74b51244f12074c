#include <cstdint>
#include <cstdlib>

#include "timeline/MarkerFile.h"

// Any bytes hold markers; what was read is written and read back the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    McuMarkerMap markers;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const bool isWhole = vesk::MarkersFromBytes(bytes, markers);
    if (isWhole && (size < 4 || markers.size() > (size - 4) / 12)) std::abort();
    const std::string written = vesk::MarkersToBytes(markers);
    McuMarkerMap again;
    if (!vesk::MarkersFromBytes(written, again) || again != markers) std::abort();
    if (vesk::MarkersToBytes(again) != written) std::abort();
    return 0;
}
