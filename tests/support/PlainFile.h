#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

namespace vesk {

// A log file read field by field. Numbers are little-endian, as is every machine that tests run on.
class PlainFile {
public:
    bool Open(const std::string& path) {
        m_File.reset(std::fopen(path.c_str(), "rb"));
        return m_File != nullptr;
    }

    // Reads size bytes; false if fewer are left.
    bool Bytes(void* to, std::size_t size) {
        return size == 0 || std::fread(to, 1, size, m_File.get()) == size;
    }

    // Reads one number; what is cut off by the end of the file leaves it untouched.
    template <class Number>
    bool Field(Number& number) {
        Number read;
        if (!Bytes(&read, sizeof read)) return false;
        number = read;
        return true;
    }

    std::int64_t Position() const { return ftello(m_File.get()); }
    void GoTo(std::int64_t position) { fseeko(m_File.get(), position, SEEK_SET); }

    std::int64_t Size() {
        const std::int64_t here = Position();
        fseeko(m_File.get(), 0, SEEK_END);
        const std::int64_t size = Position();
        GoTo(here);
        return size;
    }

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> m_File;
};

}  // namespace vesk
