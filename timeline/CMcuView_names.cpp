#include <algorithm>
#include <climits>

#include "host/IrqName.h"
#include "log/McuJobList.h"
#include "timeline/CMcuView.h"

namespace {

template <class Map>
void AppendKeys(const Map& map, std::list<std::string>& names) {
    for (const auto& entry : map) names.push_back(entry.first);
}

// Names without a number stand behind all that have one.
long long IrqOrder(const std::string& name) {
    const std::optional<int> number = vesk::IrqNumber(name);
    return number ? *number : LLONG_MAX;
}

}  // namespace

void CMcuView::InitRelativeList() {
    std::list<std::string> irqs, tasks, functions, marks;
    GetJobNameList(irqs, tasks, functions, marks);
    m_RelativeList.clear();
    InsertRelativeList(tasks);
    InsertRelativeList(irqs);
}

// The map's order is that of the strings, and equal numbers keep it.
void CMcuView::GetJobNameList(std::list<std::string>& irqs, std::list<std::string>& tasks,
                              std::list<std::string>& functions,
                              std::list<std::string>& marks) const {
    const McuJobList& jobs = Jobs();
    for (const auto& [name, count] : jobs.m_JobNames)
        (vesk::IsIrqName(name) ? irqs : tasks).push_back(name);
    irqs.sort([](const std::string& a, const std::string& b) { return IrqOrder(a) < IrqOrder(b); });
    tasks.sort();
    AppendKeys(jobs.m_CustomNames, functions);
    AppendKeys(jobs.m_SourceMarkNames, marks);
}

void CMcuView::InsertRelativeList(std::list<std::string>& names) {
    for (; !names.empty(); names.pop_back()) m_RelativeList.push_back(std::move(names.back()));
}
