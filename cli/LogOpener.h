#pragma once

#include <string>

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"
#include "database/TargetDatabase.h"
#include "log/McuJobList.h"
#include "log/RangeChooser.h"
#include "log/ReadReport.h"

namespace vesk {

class InputFile;

// Reads the log of a command line: chooses the target description, unpacks what is packed, shows
// progress, and lets the user interrupt.
class LogOpener {
public:
    LogOpener(const InputOptions& options, Terminal& terminal);

    // Reads the part of the log that the options choose. The result is the exit code that fits; an
    // interruption ends the program by a Stop.
    ExitCode Read();

    // The same with the range left to a chooser.
    ExitCode Read(RangeChooser* chooser);

    // Tells the user why a read went wrong, or what it warns of.
    void Explain() const;

    McuJobList& List() { return m_List; }
    const McuJobList& List() const { return m_List; }

    bool m_Ok = false;         // what the read returned
    std::string m_Error;       // the read's own text, or why there was no read
    std::string m_Note;        // ours, where a read failed without a text
    std::string m_TargetPath;  // empty: no target description

private:
    bool Prepare(InputFile&, const std::string& path);
    void ReadPrepared(const std::string& log, const std::string& header);
    bool LoadTarget();
    bool LoadDatabase(TargetDatabase&);
    ExitCode Outcome() const;

    const InputOptions& m_Options;
    Terminal& m_Terminal;
    McuJobList& m_List;
};

}  // namespace vesk
