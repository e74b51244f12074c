/* For authors of parsing plug-ins.
 *
 * A log can carry extra data whose meaning only a separate library knows. Its header names the
 * library ("base name", at most 8 characters); the reader loads BASENAME.so from the folder
 * "External" beside the program that reads the log, asks it which values it yields, and hands it
 * the bytes of each record. See docs/plugins.md and plugins/example.c.
 *
 * All functions are exported with C linkage under exactly the names below and are called on one
 * thread, within one read. Memory behind a returned pointer belongs to the plug-in; the reader
 * copies the values before its next call.
 */
#ifndef VESK_PLUGIN_H
#define VESK_PLUGIN_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#else
#include <stdbool.h>
#endif

/* One value that the plug-in yields: its display name, zero-filled and without terminator if it
 * has 8 characters, and the range that its curve starts from. */
typedef struct vesk_value {
    char name[8];
    int32_t minimum;
    int32_t maximum;
} vesk_value;

typedef struct vesk_value_table {
    uint32_t count;
    const vesk_value* values; /* count entries */
} vesk_value_table;

/* One item of the log's header, as it lies in the file. */
typedef struct vesk_header_item {
    uint32_t type;
    uint32_t size;     /* bytes in a record */
    uint8_t value[8];  /* a base name, an overhead or nothing */
} vesk_header_item;

/* "Init_Config", needed. Receives the data that the log's header holds for this item, if any;
 * it is not called when there are none. False: the item is skipped. */
typedef bool (*vesk_init_config_fn)(uint32_t length, const void* data);

/* "Get_InfoNum", needed. The table of values, valid until the library is unloaded. */
typedef const vesk_value_table* (*vesk_get_info_num_fn)(void);

/* "Parsing_Info", needed for plain logs. Receives the item's bytes in one record and the length
 * of the record's interval in QBit; returns count values. */
typedef const uint32_t* (*vesk_parsing_info_fn)(const void* data, uint32_t duration);

/* "Parsing_Info_KALDO", needed for packet logs. Receives the whole record that opens an interval,
 * the whole record that ends it (null for the last interval) and the interval's length in QBit;
 * returns count values. */
typedef const uint32_t* (*vesk_parsing_info_kaldo_fn)(const void* previous, const void* current,
                                                      uint32_t duration);

/* "Parsing_Header_KALDO", needed for packet logs. Receives all items of the log's header in file
 * order, once, after Get_InfoNum. The result is not looked at. */
typedef bool (*vesk_parsing_header_kaldo_fn)(const vesk_header_item* items, uint32_t count);

#ifdef __cplusplus
}
#endif

#endif
