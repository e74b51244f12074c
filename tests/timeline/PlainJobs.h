#pragma once

#include <string>

class CDC;
class CMcuView;

// Jobs, marks, events and curves drawn record by record, in order, without looking for what can be
// seen. Each draws what the view's operation of the same name draws.
namespace vesk::plain {

void DrawJobList(CMcuView&, CDC*, int height, int left, int y);
void DrawJob(CMcuView&, CDC*, const std::string& name, int left, int y);
void DrawHWJob(CMcuView&, CDC*, const std::string& name, int left, int y, int first, int last);
void DrawSourceMark(CMcuView&, CDC*, const std::string& name, int left, int y);
void DrawSourceMarkList(CMcuView&, CDC*, int left, int y);
// Writes the values at the cursor, too.
void DrawExtraInfo(CMcuView&, CDC*, int left);

}  // namespace vesk::plain
