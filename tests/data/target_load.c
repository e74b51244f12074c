/* Types of a small target load. The tests compile this file with the host's compiler;
 * target_load_armeb.o was made from it for a big-endian processor, with short enumerations:
 *
 *     arm-linux-gnueabihf-gcc -mbig-endian -fshort-enums -gdwarf-4 -O1 -ffreestanding -c \
 *         -fdebug-prefix-map="$PWD"=. -o target_load_armeb.o target_load.c
 */
#include <stdint.h>

typedef struct {
    uint8_t contextID[4];
    uint32_t USCNT;
    int32_t frameNo;
    uint32_t counters[3];
} SA_LoggingNode_T;

typedef enum {
    VESK_Clock_Wrap = 134217728,
    VESK_Clock_Origin_Rate = 1083333,
    VESK_Clock_Rate = 1000000
} Trawler_VESK_Clock;

enum Level { Level_Below = -1, Level_Low = 1, Level_High = 100 };

/* Above 127: one byte where enumerations are short, and a value without a sign. */
enum Code { Code_First = 3, Code_Alias = 3, Code_Last = 200 };

struct Packed {
    uint16_t head;
    uint32_t low : 4;
    uint32_t middle : 9;
    uint32_t high : 3;
    union {
        uint32_t word;
        struct {
            uint16_t left, right;
        };
    };
    const volatile struct Packed* next;
    uint8_t tail[];
};
typedef struct Packed Packed_T;
typedef const Packed_T Alias_T;

struct Incomplete;

SA_LoggingNode_T node;
Trawler_VESK_Clock clockValue;
enum Level level;
enum Code code;
Alias_T* packed;
struct Incomplete* incomplete;
