#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "platform/Text.h"

namespace {

constexpr int kNamedIrqs = 128;

// An enumerator's name as it is shown: without what all of them begin and end with.
std::string ShownIrqName(std::string name) {
    const std::string prefix = "Enum_";
    const std::string suffix = "_CODE";
    if (name.starts_with(prefix)) name.erase(0, prefix.size());
    if (name.ends_with(suffix)) name.erase(name.size() - suffix.size());
    return name;
}

}  // namespace

void McuJobList::GetIRQName(std::map<int, std::string>& names, std::string& tickName) {
    names.clear();
    for (int i = 0; i < kNamedIrqs; ++i)
        names[i] = vesk::FormatText("IRQ0x%02x", static_cast<unsigned>(i));
    const vesk::LiveHostValues host = vesk::CurrentHostValues();
    const EnumContent* codes =
        m_DBReady && m_GetEnumContent ? m_GetEnumContent("Irq_Code_Def_Enum") : nullptr;
    if (codes) {
        int end = 0;
        codes->GetValue("Enum_IRQ_Code_End", end);
        std::string name;
        for (int i = 0; i < end && i < kNamedIrqs; ++i)
            if (codes->GetName(i, name)) names[i] = ShownIrqName(name);
        if (!host.m_Capability.LogsMicroseconds())
            codes->GetValue("Enum_IRQ_CTIRQ1_CODE", host.m_TickIRQ);
    }
    const auto tick = names.find(host.m_TickIRQ);
    if (tick != names.end()) tickName = tick->second;
}

void McuJobList::GetTaskName(std::map<int, std::string>& names) {
    names.clear();
    const EnumContent* tasks = m_GetEnumContent ? m_GetEnumContent("module_type") : nullptr;
    if (!tasks) return;
    for (const auto& [name, value] : tasks->Entries()) names.emplace(value, name);
}
