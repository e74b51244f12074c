#pragma once

#include <map>
#include <memory>
#include <string>

#include "timeline/CallColumns.h"
#include "timeline/CallIndex.h"
#include "timeline/CallOrder.h"
#include "timeline/SegmentIndex.h"
#include "timeline/SliceIndex.h"

class McuJobList;

namespace vesk {

// What the timeline derives from a log's function segments and calls. Each part is built when it is
// first asked for. Borrows the job list, which must not change meanwhile.
class CustomIndex {
public:
    explicit CustomIndex(const McuJobList& list) : m_List(list) {}

    SegmentIndex& Segments();
    // Null for a function without a lane of calls.
    CallIndex* Calls(const std::string& function);
    CallOrder& Order();
    CallColumns& Columns() { return m_Columns; }  // of the view shown last
    SliceIndex& Slices(JobStripIndex& jobs);      // borrowed

private:
    const McuJobList& m_List;
    std::unique_ptr<SegmentIndex> m_Segments;
    std::map<std::string, CallIndex> m_Calls;
    std::unique_ptr<CallOrder> m_Order;
    std::unique_ptr<SliceIndex> m_Slices;
    CallColumns m_Columns;
};

}  // namespace vesk
