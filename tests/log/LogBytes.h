#pragma once

#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "log/McuJobList.h"
#include "log/StreamFile.h"

// Bytes of logs for tests that go below LogBuilder, and lists told in short lines.

namespace vesk {

inline std::string Words(std::initializer_list<std::uint32_t> words) {
    std::string bytes;
    for (const std::uint32_t word : words)
        for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(word >> shift);
    return bytes;
}

// A stream over bytes in memory, which must outlive it.
inline StreamOwner StreamOver(std::string& bytes) {
    return StreamOwner(fmemopen(bytes.data(), bytes.size(), "rb"));
}

// One item of a header; a value is filled up to 8 bytes.
inline std::string Item(std::uint32_t type, std::uint32_t size, std::string value = "") {
    value.resize(8);
    return Words({type, size}) + value;
}

// One entry of an init block.
inline std::string Init(std::uint32_t tag, const std::string& data) {
    return Words({tag, static_cast<std::uint32_t>(data.size())}) + data;
}

// A header whose sizes may be false.
struct RawHeader {
    std::string m_Identifier = "VESK_BIN";
    std::uint32_t m_Format = 1;
    std::uint32_t m_JobSize = 12;
    std::string m_Items{};
    std::string m_Init{};
    std::string m_Origin{};  // first frame number and count, where they are computed
    std::optional<std::uint32_t> m_ItemBytes{};  // claimed
    std::optional<std::uint32_t> m_InitBytes{};
    std::uint32_t m_TooMuch = 0;  // in the sum of the sizes

    std::string Bytes() const {
        const auto fixed = static_cast<std::uint32_t>(8 + m_Origin.size());
        const std::uint32_t items = m_ItemBytes.value_or(m_Items.size());
        const std::uint32_t init = m_InitBytes.value_or(m_Init.size());
        return m_Identifier +
               Words({16 + fixed + items + init + m_TooMuch, fixed, items, init, m_Format}) +
               m_Origin + Words({m_JobSize}) + m_Items + m_Init;
    }
};

// "NAME START-END", and the flags behind a slash if there are any.
inline std::string Told(const McuJob& job) {
    std::string text =
        job.m_Name + " " + std::to_string(job.m_StartTime) + "-" + std::to_string(job.m_EndTime);
    return job.m_Flags == 0 ? text : text + " /" + std::to_string(job.m_Flags);
}

// "TIME NAME: VALUE ...", values as unsigned numbers.
inline std::string Told(const ExtraInfoRecord& sample) {
    std::string text = std::to_string(sample.m_Time) + " " + sample.m_Name + ":";
    for (const int value : sample.m_Values)
        text.append(" ").append(std::to_string(static_cast<std::uint32_t>(value)));
    return text;
}

template <class Element>
std::vector<std::string> Told(const std::vector<Element>& elements) {
    std::vector<std::string> lines;
    for (const Element& element : elements) lines.push_back(Told(element));
    return lines;
}

inline std::vector<std::string> Told(const std::map<std::string, std::vector<McuJob>>& jobs) {
    std::vector<std::string> lines;
    for (const auto& [name, ofName] : jobs)
        for (const McuJob& job : ofName) lines.push_back(Told(job));
    return lines;
}

inline std::vector<std::string> Told(const std::vector<CString>& names) {
    std::vector<std::string> texts;
    for (const CString& name : names) texts.push_back(name.Str());
    return texts;
}

}  // namespace vesk
