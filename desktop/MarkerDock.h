#pragma once

#include <QDockWidget>
#include <cstdint>
#include <utility>
#include <vector>

#include "timeline/TimelineTypes.h"

namespace vesk {

class DesktopHost;
class RowList;

// The list of the log's markers in the order of their times. A click jumps to a marker and selects
// it in the view, Delete removes it.
class MarkerDock : public QDockWidget {
public:
    // A marker file may hold any number of markers; no more are listed.
    static constexpr std::size_t kMost = 10000;

    MarkerDock(const DesktopHost&, QWidget* parent);

    // Shows what goes with the host's timeline now. Cheap when nothing has changed, so call it
    // often.
    void Follow();

    RowList& Rows() { return *m_Rows; }

private:
    using Marker = std::pair<std::int32_t, std::uint64_t>;  // number, time

    std::vector<Marker> MarkersNow() const;
    void Show(std::vector<Marker>);
    void JumpTo(int row);
    void Remove(int row);
    QString TextOf(int row, int column) const;
    QString TimeText(std::uint64_t time) const;

    const DesktopHost& m_Host;
    RowList* m_Rows;
    std::vector<Marker> m_Known;   // by number, as the document has them
    std::vector<Marker> m_ByTime;  // as they are listed
    TIMEUNITTYPE m_Unit = TIMEUNIT_COUNT;
    std::int32_t m_Selected = -1;  // in the view
};

}  // namespace vesk
