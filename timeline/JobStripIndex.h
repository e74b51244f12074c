#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "log/McuJob.h"
#include "timeline/NameColumn.h"
#include "timeline/RecordOrder.h"

namespace vesk {

class AxisIndex;

// What painting wants to know of one sequence of records under several names: jobs, function
// segments or source marks. Built in one pass; about 1.7 bytes a record.
class JobStripIndex {
public:
    // The records are borrowed. Their labels are built in the same pass where they are asked for.
    explicit JobStripIndex(const std::vector<McuJob>& records, AxisIndex* labels = nullptr);

    const std::vector<McuJob>& Records() const { return m_Records; }
    const NameColumn& Names() const { return m_Names; }
    bool IsAscending() const { return m_Order.IsAscending(); }
    bool FollowEachOther() const { return m_Order.FollowEachOther(); }

    // --- One view ------------------------------------------------------------------------------

    // Turns to records [first, last) as one span shows them. Costs what the columns cost, and
    // nothing while the span stays the same: all lanes ask for it. Whether it was another one.
    bool Show(const TimeScale&, int first, int last);

    // Records at the front that belong to no column and are to be looked at one by one.
    int Leading() const { return m_Leading; }
    const std::vector<RecordColumn>& Columns() const { return m_Columns; }
    // Whether a record of the column has the name, its last record left out. The first question
    // about a view finds the names of all columns.
    bool HasBeforeLast(std::size_t column, int name) const {
        if (m_Sets.empty()) CollectNames();
        const auto bit = static_cast<std::size_t>(name);
        return (m_Sets[column * m_Names.Words() + bit / 64] >> bit % 64 & 1) != 0;
    }

    // Name of the last record of the column.
    int LastName(std::size_t column) const { return m_LastNames[column]; }

private:
    void FindLastNames();
    void CollectNames() const;

    const std::vector<McuJob>& m_Records;
    RecordOrder m_Order;
    NameColumn m_Names;
    TimeScale m_Scale;
    int m_First = 0;
    int m_Last = 0;
    int m_Leading = 0;
    std::vector<RecordColumn> m_Columns;
    mutable std::vector<std::uint64_t> m_Sets;  // one per column, or none yet
    std::vector<int> m_LastNames;
};

}  // namespace vesk
