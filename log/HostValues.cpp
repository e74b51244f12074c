#include "log/HostValues.h"

namespace vesk {

namespace {

// All of it stands before the first constructor of any static object runs.
constinit HostValues ownValues;
constinit std::int32_t* tickIRQInUse = &ownValues.m_TickIRQ;
constinit std::int32_t* featureLevelInUse = &ownValues.m_FeatureLevel;

}  // namespace

LiveHostValues& LiveHostValues::operator=(const HostValues& values) {
    m_Capability = values.m_Capability;
    m_TickIRQ = values.m_TickIRQ;
    m_FeatureLevel = values.m_FeatureLevel;
    return *this;
}

LiveHostValues CurrentHostValues() {
    return {ownValues.m_Capability, *tickIRQInUse, *featureLevelInUse};
}

void KeepHostValuesIn(std::int32_t& tickIRQ, std::int32_t& featureLevel) {
    tickIRQInUse = &tickIRQ;
    featureLevelInUse = &featureLevel;
}

}  // namespace vesk
