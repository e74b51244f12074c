/* A worked example of a parsing plug-in.
 *
 * The target adds one 8-byte item to every record, two little-endian counters of its cache:
 *
 *     bytes 0 to 3   hits since the record before
 *     bytes 4 to 7   misses since the record before
 *
 * From these the plug-in yields two values per interval, the share of hits in percent and the
 * misses per period. A period is one millisecond, unless the log's header says otherwise: its
 * data for this item, if there are any, are the period's length in QBit, 4 bytes.
 *
 * The library serves plain logs (Parsing_Info) and logs that travel in packets (the two functions
 * ending in _KALDO); a plug-in for only one kind leaves the others out. docs/plugins.md tells when
 * each function is called.
 */
#include <string.h>

#include "plugins/vesk_plugin.h"

enum { ITEM_SIZE = 8, QBITS_PER_MS = 1083 };

static uint32_t period = QBITS_PER_MS;
static uint32_t item_offset; /* of our item in a whole record; only packet logs need it */

/* Bytes of a log may lie at any address and are little-endian, whatever this machine is. */
static uint32_t read_u32(const void* data) {
    const uint8_t* bytes = data;
    return bytes[0] | (uint32_t)bytes[1] << 8 | (uint32_t)bytes[2] << 16 | (uint32_t)bytes[3] << 24;
}

/* Data come from a file: check their length and what they say before use. */
bool Init_Config(uint32_t length, const void* data) {
    if (length != 4 || read_u32(data) == 0) return false;
    period = read_u32(data);
    return true;
}

const vesk_value_table* Get_InfoNum(void) {
    /* Names have 8 characters and no terminator if they fill them. The range is only where a
     * curve's axis starts: it widens by what the log holds. */
    static const vesk_value values[] = {
        {"Hits %", 0, 100},
        {"Misses", 0, 1},
    };
    static const vesk_value_table table = {sizeof values / sizeof values[0], values};
    return &table;
}

/* As many values as Get_InfoNum announced. They stay here until the next call: the reader has
 * copied them by then. */
const uint32_t* Parsing_Info(const void* data, uint32_t duration) {
    static uint32_t values[2];
    const uint64_t hits = read_u32(data);
    const uint64_t misses = read_u32((const uint8_t*)data + 4);
    /* An idle cache and an empty interval are no reason to divide by zero. */
    values[0] = hits + misses ? (uint32_t)(hits * 100 / (hits + misses)) : 0;
    values[1] = duration ? (uint32_t)(misses * period / duration) : 0;
    return values;
}

/* In a packet log the plug-in gets whole records. Items lie one behind the other, so our place is
 * the sum of the sizes that stand before us. */
bool Parsing_Header_KALDO(const vesk_header_item* items, uint32_t count) {
    uint32_t offset = 0;
    for (uint32_t i = 0; i < count; ++i) {
        const bool is_ours = memcmp(items[i].value, "EXAMPLE", sizeof items[i].value) == 0;
        if (is_ours && items[i].size == ITEM_SIZE) {
            item_offset = offset;
            return true;
        }
        offset += items[i].size;
    }
    return false;
}

/* The counters of an interval lie in the record that opens it, so the record that ends it, null
 * for the last interval of a log, is not needed here. */
const uint32_t* Parsing_Info_KALDO(const void* previous, const void* current, uint32_t duration) {
    (void)current;
    return Parsing_Info((const uint8_t*)previous + item_offset, duration);
}
