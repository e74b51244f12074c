#pragma once

#include <cstdint>

#include "plugins/vesk_plugin.h"

// One item of a log's header that describes extra data of the records, with the plug-in that
// interprets it if it has one. The module is released by McuJobList.
struct ExtraParsingInfo {
    std::int32_t m_Type = 0;
    std::uint32_t m_Size = 0;     // bytes in a record
    std::uint32_t m_InfoNum = 0;  // values that it yields
    bool m_Valid = false;         // false: the item is skipped, its bytes stay in the record
    std::uint32_t m_Offset = 0;   // bytes from the start of a record's extra data
    void* m_Module = nullptr;
    vesk_init_config_fn m_InitConfig = nullptr;
    vesk_get_info_num_fn m_GetInfoNum = nullptr;
    vesk_parsing_info_fn m_ParsingInfo = nullptr;
    vesk_parsing_info_kaldo_fn m_ParsingInfoKaldo = nullptr;
    vesk_parsing_header_kaldo_fn m_ParsingHeaderKaldo = nullptr;
};
