#pragma once

class CDC;
class CMcuView;

namespace vesk {

// The axes and frame lines as they are told: every job in its turn, every step one by one. Slow and
// plain, to compare with. They read the view's public fields and the shared job list.
void PlainFrameNo(const CMcuView&, CDC*);
void PlainCountAxis(const CMcuView&, CDC*);
void PlainClockAxis(const CMcuView&, CDC*);
void PlainTimeAxis(const CMcuView&, CDC*);

}  // namespace vesk
