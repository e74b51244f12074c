#include "simulator/SimulatorOptions.h"

namespace vesk {

std::string SimulatorOptions::Problem() const {
    if (m_Records == 0) return "A log needs at least 1 record.";
    if (m_Tasks == 0 || m_Tasks > kMaxTasks)
        return "The number of tasks must be from 1 to " + std::to_string(kMaxTasks) + ".";
    if (m_ExtraValues > kMaxExtraValues)
        return "There can be " + std::to_string(kMaxExtraValues) + " extra values at most.";
    if (m_Losses && m_Form != SimulatedForm::kPackets) return "Only packets can be lost.";
    // A loss ends with a task switch.
    if (m_Losses && m_Tasks < 2) return "Losses need at least 2 tasks.";
    return {};
}

std::optional<SimulatedForm> FormByName(std::string_view name) {
    if (name == "v1") return SimulatedForm::kVersion1;
    if (name == "v2") return SimulatedForm::kVersion2;
    if (name == "v3") return SimulatedForm::kVersion3;
    if (name == "headerless") return SimulatedForm::kHeaderless;
    if (name == "packets") return SimulatedForm::kPackets;
    return std::nullopt;
}

std::optional<bool> MicrosecondsByName(std::string_view clock) {
    if (clock == "uscnt") return true;
    if (clock == "tqcnt") return false;
    return std::nullopt;
}

}  // namespace vesk
