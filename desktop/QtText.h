#pragma once

#include <QString>
#include <string>

#include "platform/CString.h"

namespace vesk {

// Between the library's 8-bit text and the toolkit's. Bytes that are valid UTF-8 are taken as
// that, all others as Latin-1, so that no name of a log is lost or refused.
QString ToQt(const CString&);
QString ToQt(const std::string&);
CString FromQt(const QString&);  // UTF-8

// The tip of a command: what its string says behind "\n"; without that, the text itself, less the
// "&" that marks a key and the accelerator behind "\t".
QString TipOf(const CString& commandString);

}  // namespace vesk
