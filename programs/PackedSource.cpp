#include "programs/PackedSource.h"

#include <archive.h>
#include <archive_entry.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace vesk {

PackedSource::PackedSource(const std::string& path, GoesOn goesOn)
    : m_Archive(archive_read_new(), archive_read_free),
      m_Descriptor(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)),
      m_GoesOn(std::move(goesOn)),
      m_Block(std::size_t{1} << 18) {
    archive* const reader = m_Archive.get();
    archive_read_support_filter_gzip(reader);
    archive_read_support_filter_zstd(reader);
    archive_read_support_filter_xz(reader);
    archive_read_support_format_raw(reader);
    archive_read_support_format_empty(reader);
}

PackedSource::~PackedSource() {
    if (m_Descriptor > STDERR_FILENO) close(m_Descriptor);
}

bool PackedSource::Open() {
    archive* const reader = m_Archive.get();
    archive_entry* entry = nullptr;
    if (archive_read_open(reader, this, nullptr, ReadBlock, nullptr) != ARCHIVE_OK) return Fail();
    const int found = archive_read_next_header(reader, &entry);
    m_IsEmpty = found == ARCHIVE_EOF;
    return found == ARCHIVE_OK || m_IsEmpty || Fail();
}

std::ptrdiff_t PackedSource::Read(char* bytes, std::size_t size) {
    if (m_IsEmpty) return 0;
    const la_ssize_t taken = archive_read_data(m_Archive.get(), bytes, size);
    if (taken < 0) Fail();
    return taken;
}

bool PackedSource::IsPacked() const {
    return archive_filter_code(m_Archive.get(), 0) != ARCHIVE_FILTER_NONE;
}

bool PackedSource::Fail() {
    const char* const text = archive_error_string(m_Archive.get());
    m_Error = text ? text : "unknown error";
    return false;
}

// Called by the archive library. A wish to stop must get through while a pipe has nothing to give.
std::ptrdiff_t PackedSource::ReadBlock(archive* reader, void* source, const void** bytes) {
    PackedSource& self = *static_cast<PackedSource*>(source);
    *bytes = self.m_Block.data();
    ssize_t size = -1;
    do {
        size = read(self.m_Descriptor, self.m_Block.data(), self.m_Block.size());
    } while (size < 0 && errno == EINTR && self.m_GoesOn());
    if (size < 0) archive_set_error(reader, errno, "%s", std::strerror(errno));
    return size < 0 ? ARCHIVE_FATAL : size;
}

}  // namespace vesk
