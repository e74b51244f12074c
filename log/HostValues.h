#pragma once

#include <cstdint>

#include "database/TargetCapability.h"

namespace vesk {

// Values that the host hands to the reader beside the database. They stand for the whole process
// and are looked at when a read begins.
struct HostValues {
    TargetCapability m_Capability;    // all zero until the host hands one over
    std::int32_t m_TickIRQ = 0;       // IRQ code of the tick; a read may set it
    std::int32_t m_FeatureLevel = 4;  // what the host understands; below 4, two plug-ins rest
};

HostValues& CurrentHostValues();

}  // namespace vesk
