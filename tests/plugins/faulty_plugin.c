/* A plug-in with one value, the first word of its item, and with the one fault that the build
 * asks for. Without a fault it serves all logs. */
#include <string.h>

#include "plugins/vesk_plugin.h"

#ifndef LACKS_INIT_CONFIG
bool Init_Config(uint32_t length, const void* data) {
    (void)length;
    (void)data;
#ifdef REFUSES
    return false;
#else
    return true;
#endif
}
#endif

#ifndef LACKS_GET_INFONUM
const vesk_value_table* Get_InfoNum(void) {
    static const vesk_value value = {"Word", 0, 1};
#ifdef NO_TABLE
    (void)value;
    return NULL;
#else
    static const vesk_value_table table = {
#ifdef ABSURD_COUNT
        UINT32_MAX, &value
#elif defined NO_ENTRIES
        1, NULL
#else
        1, &value
#endif
    };
    (void)value;
    return &table;
#endif
}
#endif

#ifndef LACKS_PARSING_INFO
const uint32_t* Parsing_Info(const void* data, uint32_t duration) {
    static uint32_t word;
    memcpy(&word, data, sizeof word);
    (void)duration;
#ifdef NO_VALUES
    return NULL;
#else
    return &word;
#endif
}
#endif

#ifndef LACKS_KALDO
bool Parsing_Header_KALDO(const vesk_header_item* items, uint32_t count) {
    return items && count > 0;
}

const uint32_t* Parsing_Info_KALDO(const void* previous, const void* current, uint32_t duration) {
    static uint32_t is_last;
    (void)previous;
    (void)duration;
    is_last = !current;
    return &is_last;
}
#endif
