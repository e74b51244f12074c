#pragma once

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"
#include "timeline/TextExport.h"

namespace vesk {

// Which of the text files it is, as a positional argument.
void OfferTextExport(CLI::App&, TextExport*& what);

// vesk export: the log as one of the viewer's text files.
ExitCode RunExport(TextExport& what, const Options&, Terminal&);

}  // namespace vesk
