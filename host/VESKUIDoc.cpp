#include "host/VESKUIDoc.h"

#include <cmath>

#include "host/IrqName.h"
#include "host/Palettes.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"

VESKUIDoc* global_vesk_doc_ptr = nullptr;

namespace {

constexpr COLORREF kIdleColor = 0xB4B4B4;
constexpr int kIrqShades = 32;
constexpr std::size_t kFirstOfFunctions = 18;  // in the palette

// From blue for 0 to pale blue for 31. The steps are kept in single precision.
COLORREF IrqShade(int number) {
    const auto shade = static_cast<float>(number);
    const auto red = static_cast<int>(std::floor(shade * 6.25F));
    const auto green = static_cast<int>(std::floor(shade * 7.96875F));
    return RGB(red, green, 255);
}

// Enters a key into a map that is being rebuilt. A colour that the key had before stays, and so
// does what an earlier name of the same key got.
template <class Choose>
void Enter(McuColorMap& rebuilt, std::int32_t key, const McuColorMap& former, Choose choose) {
    const COLORREF color = former.Lookup(key);
    rebuilt.m_Colors.emplace(key, color != 0 ? color : choose());
}

// An interrupt without a number takes the shade of the one before it.
McuColorMap JobColors(const McuColorMap& former, const McuJobList& jobs) {
    McuColorMap colors;
    vesk::PaletteWalk palette(vesk::kNamePalette);
    int irqNumber = 0;
    for (const auto& [name, count] : jobs.m_JobNames) {
        Enter(colors, vesk::ColorKey(name), former, [&, &job = name] {
            if (vesk::IsIrqName(job)) {
                irqNumber = vesk::IrqNumber(job).value_or(irqNumber) % kIrqShades;
                return IrqShade(irqNumber);
            }
            return job == "IDLE" ? kIdleColor : palette.Next();
        });
    }
    return colors;
}

McuColorMap FunctionColors(const McuColorMap& former, const McuJobList& jobs) {
    McuColorMap colors;
    vesk::PaletteWalk palette(vesk::kNamePalette, kFirstOfFunctions);
    for (const auto& [name, total] : jobs.m_CustomNames)
        Enter(colors, vesk::ColorKey(name), former, [&] { return palette.Next(); });
    return colors;
}

McuColorMap ExtraColors(const McuColorMap& former, const McuJobList& jobs) {
    McuColorMap colors;
    vesk::PaletteWalk palette(vesk::kExtraPalette);
    for (std::int32_t i = 0; i < jobs.m_ExtraInfoNum; ++i)
        Enter(colors, i, former, [&] { return palette.Next(); });
    return colors;
}

}  // namespace

VESKUIDoc::VESKUIDoc() {
    global_vesk_doc_ptr = this;
    InitVESKColor();
}

VESKUIDoc::~VESKUIDoc() {
    global_vesk_doc_ptr = nullptr;
}

void VESKUIDoc::InitVESKColor() {
    const McuJobList* const jobs = vesk_dll_shared_data.m_pJobList;
    if (!jobs) return;
    m_JobColor = JobColors(m_JobColor, *jobs);
    m_CustomColor = FunctionColors(m_CustomColor, *jobs);
    m_ExtraColor = ExtraColors(m_ExtraColor, *jobs);
}
