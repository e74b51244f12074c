#pragma once

#include <functional>
#include <string>

#include "desktop/LogFiles.h"
#include "log/ReadReport.h"

namespace vesk {

class DesktopHost;
class LogInput;
struct UserState;

// The opening of logs as the user meets it: asks for files, finds the target description that
// goes with a log, has it read and shown, says what went wrong, and remembers. Borrows host and
// state.
class LogSession {
public:
    // What the session tells its surroundings.
    struct Listener {
        std::function<ReadProgress()> m_BeginRead;            // who follows the read that begins
        std::function<void()> m_EndRead;                      // the read is over
        std::function<void()> m_Changed;                      // a log, recent files, the target
        std::function<void(const std::string& text)> m_Note;  // a hint that needs no answer
        bool m_CanAsk = true;  // somebody is there to choose a file that a log needs
    };

    LogSession(DesktopHost& host, UserState& state, Listener listener);

    void AskForLog();
    void AskForLogWithHeader();
    // Takes a description for the log that is open, and reads it anew; without a log, for the
    // logs to come.
    void AskForTarget();

    // Opens a log in place of the one that is open. False if nothing came of it; the user has been
    // told why, unless it was the user who gave up.
    bool Open(const LogFiles&, PartToRead = PartToRead::kAsk);
    // The same by a target description that is chosen with it.
    bool Open(const LogFiles&, PartToRead, const std::string& target);
    bool OpenRecent(const LogFiles&);
    void Close();
    // The log's frame was closed: nothing is open.
    void FrameClosed();

    // Shows what the program and the open log are.
    void ShowInformation() const;

    bool IsOpen() const { return !m_Files.m_Log.empty(); }
    const LogFiles& Files() const { return m_Files; }

private:
    bool OpenUnguarded(const LogFiles&, PartToRead);
    bool LoadTarget(const std::string& path);
    void TakeTargetOf(const LogFiles&);
    std::string FindTarget(const LogFiles&) const;
    bool Unpack(LogInput&);
    void AskForLayout(const LogInput&);
    bool Read(const LogInput&, PartToRead);
    void Explain(const LogInput&, bool complete, std::string text) const;

    DesktopHost& m_Host;
    UserState& m_State;
    Listener m_Listener;
    LogFiles m_Files;  // of the log that is open
    bool m_IsOpening = false;
};

}  // namespace vesk
