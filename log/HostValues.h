#pragma once

#include <cstdint>

#include "database/TargetCapability.h"

namespace vesk {

// Values that the host hands to the reader beside the database, as a plain record.
struct HostValues {
    TargetCapability m_Capability;    // all zero until the host hands one over
    std::int32_t m_TickIRQ = 0;       // IRQ code of the tick; a read may set it
    std::int32_t m_FeatureLevel = 4;  // what the host understands; below 4, two plug-ins rest
};

// The same values where they live. They stand for the whole process and are looked at when a read
// begins.
struct LiveHostValues {
    LiveHostValues& operator=(const HostValues&);
    operator HostValues() const { return {m_Capability, m_TickIRQ, m_FeatureLevel}; }

    TargetCapability& m_Capability;
    std::int32_t& m_TickIRQ;
    std::int32_t& m_FeatureLevel;
};

LiveHostValues CurrentHostValues();

// Lets two of the values live in objects of a host, which last until the end of the process. What
// these hold counts from here on.
void KeepHostValuesIn(std::int32_t& tickIRQ, std::int32_t& featureLevel);

}  // namespace vesk
