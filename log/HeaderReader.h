#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "log/ExtraParsingInfo.h"
#include "log/HeaderInfo.h"
#include "platform/CString.h"

class McuJobList;

namespace vesk {

// Parses the header of a log, from behind its identifier and version to the end of its init block
// (docs/log-format.md), into a HeaderInfo and the extra-value tables of a list.
class HeaderReader {
public:
    // All borrowed. Texts are appended to error.
    HeaderReader(McuJobList& list, std::FILE* stream, HeaderInfo& info, std::int32_t version,
                 std::string& error)
        : m_List(list), m_Stream(stream), m_Info(info), m_Version(version), m_Error(error) {}

    // False: the header is refused. Its plug-ins are still loaded then; the caller releases them.
    bool Read();

private:
    bool ReadSizes();
    bool ReadFormatWord();
    bool ReadClock();
    bool ReadFirstFrame();
    bool ReadJobSize();
    bool ReadItems();
    bool ReadItem(std::uint32_t& runningOffset);
    void ReadOverhead(const vesk_header_item&);
    void AddItem(const vesk_header_item&, std::uint32_t offset);
    bool LoadPlugin(ExtraParsingInfo&, const vesk_header_item&);
    bool CheckKaldoOffsets();
    void RefuseItemsOutside();
    bool ReadInitBlock();
    bool UseInitData(std::uint32_t tag, const std::vector<std::uint8_t>& data);
    void NameValues();
    void NameValues(const ExtraParsingInfo&, const char* defaultName, int& counter, int maximum,
                    int minimum);
    void NamePluginValues(ExtraParsingInfo&);

    McuJobList& m_List;
    std::FILE* m_Stream;
    HeaderInfo& m_Info;
    std::int32_t m_Version;
    std::string& m_Error;

    std::uint32_t m_ItemBytes = 0;
    std::uint32_t m_InitBytes = 0;
    std::uint32_t m_Format = 0;
    bool m_HasContextId = false;
    bool m_HasMicroseconds = false;
    std::vector<vesk_header_item> m_Items;  // packet logs: all items as they lie in the file
    std::map<std::uint32_t, std::vector<CString>> m_Names;  // init data, by item type
};

}  // namespace vesk
