#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct archive;

namespace vesk {

// The bytes of a file, or of standard input ("-"), with gzip, zstd or xz packing taken off. What
// is inside counts as plain bytes, whatever it looks like.
class PackedSource {
public:
    // Asked while the source has nothing to give and a signal comes; false gives up.
    using GoesOn = std::function<bool()>;

    PackedSource(const std::string& path, GoesOn goesOn);
    ~PackedSource();
    PackedSource(const PackedSource&) = delete;
    PackedSource& operator=(const PackedSource&) = delete;

    // False, and a text in m_Error, if the source cannot be read or unpacked.
    bool Open();

    // Takes the next bytes: their number, 0 at the end, below 0 as for Open.
    std::ptrdiff_t Read(char* bytes, std::size_t size);

    // Whether there was a packing to take off.
    bool IsPacked() const;

    std::string m_Error;

private:
    bool Fail();
    static std::ptrdiff_t ReadBlock(archive*, void* source, const void** bytes);

    std::unique_ptr<archive, int (*)(archive*)> m_Archive;
    int m_Descriptor;
    GoesOn m_GoesOn;
    bool m_IsEmpty = false;
    std::vector<char> m_Block;
};

}  // namespace vesk
