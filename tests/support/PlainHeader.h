#pragma once

#include <map>
#include <string>
#include <vector>

#include "log/HeaderInfo.h"
#include "tests/support/PlainFile.h"
#include "tests/support/PlainReader.h"

namespace vesk {

// One item of a header whose data every record carries.
struct PlainItem {
    std::uint32_t type = 0;
    std::uint32_t size = 0;     // bytes in a record
    std::uint32_t infoNum = 0;  // values
    std::uint32_t offset = 0;   // of its data
    bool valid = true;
};

// The header of a log, or the record layout of a log without one.
class PlainHeader {
public:
    PlainHeader(TargetDatabase& database, const PlainOptions& options, PlainLog& log)
        : m_Database(database), m_Options(options), m_Log(log) {}

    // File behind identifier and version. False: the log's error text says why.
    bool Read(PlainFile&, std::int32_t version);

    // Takes the layout from the database's structure; false as above.
    bool LayOutHeaderless();

    HeaderInfo m_Info;
    std::vector<PlainItem> m_Items;

private:
    bool Parse(PlainFile&, std::int32_t version);
    bool ReadFormatWord(PlainFile&);
    bool ReadComputedFrames(PlainFile&);
    EnumContent* Clock();
    bool ReadClock();
    bool ReadItems(PlainFile&, std::uint32_t itemBytes);
    bool TakeItem(std::uint32_t type, std::uint32_t size, const char* value);
    void TakePacketField(std::uint32_t type);
    void AddItem(std::uint32_t type, std::uint32_t size, const char* value);
    std::int32_t Overhead(const char* value) const;
    bool CheckPacketFields();
    void MarkItemsOutsideTheRecord();
    bool ReadInitBlock(PlainFile&, std::uint32_t initBytes);
    bool TakeInitData(std::uint32_t tag, const std::vector<char>& data);
    void NameValues();
    void NameValues(const PlainItem&, const std::string& kind, int& counter);
    bool LayOutExtraValues(const DataFormat&, int firstExtraIndex, std::int32_t& before,
                           std::int32_t& after);
    bool Fail(const std::string& text);

    TargetDatabase& m_Database;
    const PlainOptions& m_Options;
    PlainLog& m_Log;
    std::uint32_t m_Offset = 0;  // running offset of the item block
    bool m_HasContextId = false;
    bool m_HasCount = false;
    std::map<std::uint32_t, std::vector<std::string>> m_Names;  // by tag
};

}  // namespace vesk
