#pragma once

#include <cstdint>
#include <string>

class McuJob;
struct ExtraInfoRecord;
struct PDIInfo;

namespace vesk {

// What tool tips say of a record, in lines that end with "\r\n", all but the last one. The counter
// of the record is a TQCNT or a USCNT.

// A task or interrupt. The loss that the job stands for and the sample that begins with it, if
// there are such.
std::string JobTipText(const McuJob&, bool isTqcnt, const PDIInfo* loss,
                       const ExtraInfoRecord* sample);

// Appends that of a function's segment or call, with its effective end.
void AppendCustomTip(std::string& text, const McuJob&, std::uint64_t end, bool isTqcnt);

std::string SourceMarkTipText(const McuJob&, bool isTqcnt);

}  // namespace vesk
