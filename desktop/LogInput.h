#pragma once

#include <string>

#include "desktop/LogFiles.h"
#include "log/ReadReport.h"
#include "programs/InputFile.h"

namespace vesk {

// The files of a log as the reader gets them: those that are packed are unpacked for as long as
// this object lives.
class LogInput {
public:
    explicit LogInput(const LogFiles& files) : m_Named(files) {}

    // Unpacks what is packed. False: not usable, and text says why, unless the progress gave up.
    bool Prepare(const ReadProgress&, std::string& text);

    const LogFiles& Named() const { return m_Named; }  // as the user knows them
    LogFiles Readable() const;

    // Puts the user's names into a text of the reader.
    void NameFiles(std::string& text) const;

private:
    LogFiles m_Named;
    InputFile m_Log, m_Header;
};

}  // namespace vesk
