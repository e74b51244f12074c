#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

#include "database/ElfTargetLoader.h"

// An ELF file is taken, or refused with a reason. tests/data/target_load_armeb.o is a good start.
// The file lives in memory only, under the name that the system gives an open descriptor.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = memfd_create("target", MFD_CLOEXEC);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size))
        std::abort();
    vesk::TargetDatabase database;
    std::string error;
    const bool loaded = vesk::LoadTargetFromElf(path, database, error);
    if (loaded != error.empty()) std::abort();
    return 0;
}
