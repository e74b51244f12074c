#include "desktop/MarkerDock.h"

#include <algorithm>

#include "desktop/DesktopHost.h"
#include "desktop/QtText.h"
#include "desktop/RowList.h"
#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "log/TimeText.h"
#include "platform/Text.h"
#include "timeline/CMcuView.h"

namespace vesk {

namespace {

enum Column { kNumber, kTime, kQbits, kDistance };

QString Grouped(std::uint64_t number) {
    return ToQt(GroupedNumber(number));
}

// The last job that began by then; null before the first one.
const McuJob* JobAt(const McuJobList& log, std::uint64_t time) {
    const auto after =
        std::upper_bound(log.begin(), log.end(), time,
                         [](std::uint64_t t, const McuJob& job) { return t < job.m_StartTime; });
    return after == log.begin() ? nullptr : &*(after - 1);
}

}  // namespace

MarkerDock::MarkerDock(const DesktopHost& host, QWidget* parent)
    : QDockWidget("Markers", parent), m_Host(host) {
    setObjectName("markers");
    const QString widest = "0,000,000,000";
    m_Rows = new RowList(
        {{"Marker", "0000"}, {"Time", ""}, {"QBit", widest}, {"Distance (QBit)", widest}}, this);
    setWidget(m_Rows);
    m_Rows->m_OnChosen = [this](int row) { JumpTo(row); };
    m_Rows->m_OnDelete = [this](int row) { Remove(row); };
}

void MarkerDock::Follow() {
    const CMcuView* const view = m_Host.Timeline();
    m_Rows->SetNote(view ? "No marker is set." : "No log is open.");
    if (view && !isVisible()) return;
    std::vector<Marker> now = MarkersNow();
    const TIMEUNITTYPE unit = view ? view->m_TimeUnit : m_Unit;
    if (now != m_Known || unit != m_Unit) {
        m_Unit = unit;
        Show(std::move(now));
    }
    const std::int32_t selected = view ? view->m_DragMarkerIndex : -1;
    if (selected == m_Selected) return;
    m_Selected = selected;
    const auto row = std::find_if(m_ByTime.begin(), m_ByTime.end(),
                                  [&](const Marker& marker) { return marker.first == selected; });
    if (row != m_ByTime.end()) m_Rows->SetCurrent(static_cast<int>(row - m_ByTime.begin()));
}

std::vector<MarkerDock::Marker> MarkerDock::MarkersNow() const {
    std::vector<Marker> markers;
    if (!m_Host.ShowsTimeline() || !global_vesk_doc_ptr) return markers;
    for (const auto& [number, time] : global_vesk_doc_ptr->m_Markers) {
        if (markers.size() == kMost) break;
        markers.emplace_back(number, time);
    }
    return markers;
}

void MarkerDock::Show(std::vector<Marker> markers) {
    m_Known = std::move(markers);
    m_ByTime = m_Known;
    std::stable_sort(m_ByTime.begin(), m_ByTime.end(),
                     [](const Marker& a, const Marker& b) { return a.second < b.second; });
    m_Rows->SetRows(static_cast<int>(m_ByTime.size()),
                    [this](int row, int column) { return TextOf(row, column); });
    m_Selected = -1;  // its row is looked for anew
}

void MarkerDock::JumpTo(int row) {
    CMcuView* const view = m_Host.Timeline();
    if (!view) return;
    const auto [number, time] = m_ByTime[static_cast<std::size_t>(row)];
    view->m_DragMarkerIndex = number;
    m_Selected = number;
    view->GoTo(time);
    view->InvalidateView();
}

void MarkerDock::Remove(int row) {
    CMcuView* const view = m_Host.Timeline();
    if (!view || !global_vesk_doc_ptr) return;
    const std::int32_t number = m_ByTime[static_cast<std::size_t>(row)].first;
    global_vesk_doc_ptr->m_Markers.RemoveMarker(number);
    if (view->m_DragMarkerIndex == number) view->m_DragMarkerIndex = -1;
    view->InvalidateView();
    Show(MarkersNow());
    m_Rows->SetCurrent(std::min(row, m_Rows->Count() - 1));
}

QString MarkerDock::TextOf(int row, int column) const {
    const auto at = static_cast<std::size_t>(row);
    const auto [number, time] = m_ByTime[at];
    switch (column) {
        case kNumber:
            return QString::number(number);
        case kTime:
            return TimeText(time);
        case kQbits:
            return Grouped(time);
        case kDistance:
            return at == 0 ? QString() : Grouped(time - m_ByTime[at - 1].second);
        default:
            return {};
    }
}

// As the x axis counts: a count is that of the job that ran, whose frame tells the rest.
QString MarkerDock::TimeText(std::uint64_t time) const {
    if (m_Unit == TIMEUNIT_TIME) return ToQt(MillisecondsText(time)) + " ms";
    if (m_Unit == TIMEUNIT_CLOCK) return Grouped(time) + " QBit";
    const McuJob* const job = JobAt(m_Host.List(), time);
    if (!job) return {};
    return QString("frame %1, %2").arg(job->m_TimeStamp).arg(job->m_TimeCount);
}

}  // namespace vesk
