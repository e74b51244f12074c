// A header from one file and records from another, cut into units first: the first byte chooses
// the target, the second and third say how long the header file is.

#include <algorithm>

#include "fuzz/FuzzTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const std::size_t wanted = std::size_t{data[1]} << 8 | data[2];
    const std::size_t headerSize = std::min(wanted, size - 3);
    const vesk::MemoryFile header(data + 3, headerSize);
    const vesk::MemoryFile raw(data + 3 + headerSize, size - 3 - headerSize);
    McuJobList list;
    vesk::Prepare(list, vesk::TargetFor(data[0]));
    std::string error;

    vesk::UnitLister lister(1);
    list.SetRangeChooser(&lister);
    list.ReadFileWithAnotherHeader(header.Path(), raw.Path(), error);

    vesk::UnitChooser chooser(1, 0);
    list.SetRangeChooser(lister.m_Units.empty() ? nullptr : &chooser);
    list.ReadFileWithAnotherHeader(header.Path(), raw.Path(), error);
    return 0;
}
