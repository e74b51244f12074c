#include "cli/OutputBuffer.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "cli/ExitCode.h"
#include "cli/Interrupt.h"

namespace vesk {

OutputBuffer::OutputBuffer(int descriptor, std::string name)
    : m_Descriptor(descriptor),
      m_Name(std::move(name)),
      m_Bytes(std::make_unique_for_overwrite<char[]>(kSize)) {}

void OutputBuffer::PutInParts(std::string_view text) {
    while (!text.empty()) {
        if (m_Used == kSize) Flush();
        const std::string_view part = text.substr(0, kSize - m_Used);
        Put(part);
        text.remove_prefix(part.size());
    }
}

void OutputBuffer::Flush() {
    std::size_t done = 0;
    while (done < m_Used) {
        StopIfInterrupted();
        const ssize_t written = write(m_Descriptor, m_Bytes.get() + done, m_Used - done);
        if (written >= 0)
            done += static_cast<std::size_t>(written);
        else if (errno == EPIPE)
            throw Stop(ExitCode::kCannotWrite, "");
        else if (errno != EINTR)
            throw Stop(ExitCode::kCannotWrite,
                       "cannot write " + m_Name + ": " + std::strerror(errno));
    }
    m_Used = 0;
}

}  // namespace vesk
