// A whole log: the first byte chooses the target, the others are the file.

#include "fuzz/FuzzTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const vesk::MemoryFile file(data + 1, size - 1);
    McuJobList list;
    vesk::Prepare(list, vesk::TargetFor(data[0]));
    std::string error;
    list.ReadFile(file.Path(), error);
    return 0;
}
