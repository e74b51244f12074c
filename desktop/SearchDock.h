#pragma once

#include <QDockWidget>
#include <cstdint>
#include <future>
#include <memory>
#include <string>

#include "timeline/SearchResults.h"

class CMcuView;

namespace vesk {

class DesktopHost;
class RowList;

// The list of all that the view's current search finds. A click jumps there; the row nearest the
// cursor line is the current one. Results are made beside the window's own work, once per search
// and log, and only while the list can be seen.
class SearchDock : public QDockWidget {
public:
    SearchDock(const DesktopHost&, QWidget* parent);
    ~SearchDock() override;

    // Shows what goes with the host's timeline now. Cheap when nothing has changed, so call it
    // often.
    void Follow();
    // To be called before the host's list changes.
    void Forget();

    bool IsSearching() const { return m_Coming.valid(); }
    RowList& Rows() { return *m_Rows; }

private:
    struct Search {
        SearchTarget m_Target = SearchTarget::kJobs;
        std::string m_Text;
        friend bool operator==(const Search&, const Search&) = default;
    };
    using Results = std::unique_ptr<const SearchResults>;

    static Search SearchOf(const CMcuView&);
    void Begin(const Search&);
    void Take(Results);
    void Tell(const QString& what);
    void ShowNearest(std::uint64_t time);
    QString TextOf(int row, int column) const;

    const DesktopHost& m_Host;
    RowList* m_Rows;
    bool m_IsKnown = false;  // m_Search is what the results are of, or will be
    Search m_Search;
    Results m_Results;
    std::future<Results> m_Coming;
    std::uint64_t m_Cursor = 0;  // that the current row is nearest to
};

}  // namespace vesk
