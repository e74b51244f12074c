#pragma once

#include <string>
#include <string_view>

#include "host/McuMarkerMap.h"

namespace vesk {

// Markers as a file; docs/viewer-files.md describes it. Nothing in a file tells that it holds
// markers, so any bytes can be read: records are taken as long as they are whole.

// The greatest number of records that is read: far more than anybody sets, and little enough for
// any machine.
constexpr std::int32_t kMostMarkersRead = 1 << 16;

std::string MarkersToBytes(const McuMarkerMap&);

// Fills the map with the records; of a key that comes twice the first counts. False: the bytes are
// not exactly as many records as they say.
bool MarkersFromBytes(std::string_view bytes, McuMarkerMap&);

// False: the file cannot be read, the text says why, and the markers stay. True can come with a
// text that says in what way the file is damaged or foreign.
bool ReadMarkerFile(const std::string& path, McuMarkerMap&, std::string& error);

// Writes beside the file and renames. False: the text says what went wrong.
bool WriteMarkerFile(const std::string& path, const McuMarkerMap&, std::string& error);

}  // namespace vesk
