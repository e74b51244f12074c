#include "platform/OutputBuffer.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace vesk {

OutputBuffer::OutputBuffer(int descriptor, Watcher watcher)
    : m_Descriptor(descriptor),
      m_Watcher(std::move(watcher)),
      m_Bytes(std::make_unique_for_overwrite<char[]>(kSize)) {}

void OutputBuffer::PutInParts(std::string_view text) {
    while (!text.empty()) {
        if (m_Used == kSize) Flush();
        const std::string_view part = text.substr(0, kSize - m_Used);
        Put(part);
        text.remove_prefix(part.size());
    }
}

bool OutputBuffer::Flush() {
    if (m_Error == 0) Write();
    m_Used = 0;
    return m_Error == 0;
}

void OutputBuffer::Write() {
    std::size_t done = 0;
    while (done < m_Used && m_Error == 0) {
        if (m_Watcher) m_Watcher(0);
        const ssize_t written = write(m_Descriptor, m_Bytes.get() + done, m_Used - done);
        if (written >= 0)
            done += static_cast<std::size_t>(written);
        else if (errno != EINTR)
            m_Error = errno;
    }
    if (m_Error != 0 && m_Watcher) m_Watcher(m_Error);
}

}  // namespace vesk
