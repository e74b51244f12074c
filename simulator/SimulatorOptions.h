#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vesk {

enum class SimulatedForm {
    kVersion1,
    kVersion2,
    kVersion3,
    kHeaderless,
    kPackets,
};

// What a simulated target does and which log it writes of it.
struct SimulatorOptions {
    SimulatedForm m_Form = SimulatedForm::kVersion3;
    bool m_IsMicroseconds = false;  // USCNT counts; else TQCNT. Packets are always microseconds
    bool m_ComputesFrames = false;  // the records carry no frame number
    std::uint64_t m_Seed = 1;
    std::uint64_t m_Records = 10000;
    std::uint32_t m_Tasks = 8;        // the idle task included
    std::uint32_t m_ExtraValues = 0;  // counters per record; any bring a ratio item with them
    bool m_Functions = true;
    bool m_Marks = true;
    bool m_Hardware = true;
    bool m_Losses = false;  // packets only

    static constexpr std::uint32_t kMaxTasks = 64;
    static constexpr std::uint32_t kMaxExtraValues = 32;

    bool CountsMicroseconds() const {
        return m_IsMicroseconds || m_Form == SimulatedForm::kPackets;
    }

    // A text for the user that says what cannot be simulated; empty if all is well.
    std::string Problem() const;
};

// Forms by the names "v1", "v2", "v3", "headerless" and "packets".
std::optional<SimulatedForm> FormByName(std::string_view name);

// True for "uscnt", false for "tqcnt".
std::optional<bool> MicrosecondsByName(std::string_view clock);

}  // namespace vesk
