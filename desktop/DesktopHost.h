#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "database/TargetDatabase.h"
#include "desktop/LogFiles.h"
#include "host/WindowMap.h"
#include "log/ReadReport.h"
#include "platform/CString.h"

class CMcuView;
class McuJobList;

namespace vesk {

class LogInput;

// Plays the host to the library: hands it the target's database and capability, its tabs of
// windows and its resource id, in the order that it relies on, has logs read, and puts them into
// frames. One exists at a time; the main window stands whenever frames are to be shown.
class DesktopHost {
public:
    DesktopHost();
    ~DesktopHost();
    DesktopHost(const DesktopHost&) = delete;
    DesktopHost& operator=(const DesktopHost&) = delete;

    // Replaces the target's description by that of a file. On false the old one stays, and error
    // says why. What is open keeps the names it was read with.
    bool LoadTarget(const std::string& path, std::string& error);
    void DropTarget();
    // Whether a file is the one that was loaded, as it is now.
    bool HasLoaded(const std::string& path) const;
    const std::string& TargetPath() const { return m_TargetPath; }  // empty: none
    TargetDatabase& Target() { return *m_Database; }

    // Placements of the windows, by tab. Kept for the windows to come; asked back up to date.
    void SetTabs(const std::vector<WindowMap>&);
    const std::vector<WindowMap>& Tabs();

    // Closes the log that is open, then reads another, which the list knows by the user's name. The
    // result and the text are those of the read; List().Report() has more.
    bool Read(const LogInput&, PartToRead, ReadProgress, std::string& text);
    const McuJobList& List() const;

    // Shows the log that was read in a frame of its own. False if no frame can be made.
    bool ShowTimeline(const CString& title);

    // The view that shows the log; null if its frame does not stand.
    CMcuView* Timeline() const;
    bool ShowsTimeline() const { return Timeline() != nullptr; }

    // Closes all frames. The list stays readable until the next read.
    void CloseFrames();

private:
    void HandOver();
    void RenewList();

    std::unique_ptr<TargetDatabase> m_Database;
    std::string m_TargetPath;
    std::filesystem::file_time_type m_TargetTime;
};

}  // namespace vesk
