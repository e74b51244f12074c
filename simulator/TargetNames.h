#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vesk {

// Names of what the simulated target runs and logs.

struct SimulatedIrq {
    std::uint32_t m_Code;
    const char* m_Enumerator;  // in the target's database; null: it has none
    const char* m_ShownName;
};

// The first is the tick. Two have no name in the database, one of them beyond the named codes.
inline constexpr std::array<SimulatedIrq, 8> kSimulatedIrqs{{
    {5, "Enum_IRQ_CTIRQ1_CODE", "IRQ_CTIRQ1"},
    {8, "Enum_IRQ_DMA_CODE", "IRQ_DMA"},
    {12, "Enum_IRQ_UART_CODE", "IRQ_UART"},
    {17, "Enum_IRQ_TIMER_CODE", "IRQ_TIMER"},
    {21, "Enum_IRQ_SIM_CODE", "IRQ_SIM"},
    {33, "Enum_IRQ_RADIO_CODE", "IRQ_RADIO"},
    {40, nullptr, "IRQ0x28"},
    {258, nullptr, "IRQ0x102"},
}};
inline constexpr std::uint32_t kSimulatedIrqEnd = 64;

inline constexpr std::array kSimulatedFunctions{"snd", "rcv", "enc", "dec", "crc", "map",
                                                "fft", "chk", "cpy", "alc", "fre", "tim"};
inline constexpr std::array kSimulatedMarks{"beg", "end", "err", "cfg", "slp", "wak"};
inline constexpr std::array kSimulatedEvents{"dma", "rfx", "dsp", "cry"};

// By priority: the idle task is 0.
inline std::string SimulatedTaskName(std::size_t task) {
    constexpr std::array names{"IDLE", "LOG", "NVRM", "UI",  "SMS",  "MM",   "CC",   "RRC",
                               "RLC",  "MAC", "SIM0", "AUD", "L1TX", "L1RX", "MAIN", "TMR"};
    return task < names.size() ? names[task] : std::string("T").append(std::to_string(task));
}

}  // namespace vesk
