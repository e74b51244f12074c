#pragma once

#include "log/RangeChooser.h"

class CWnd;

namespace vesk {

// Has the user choose the range in CMcuSplitFileDlg. Needs the dialog's template in the resource
// chain; without it every read is given up.
class SplitDialogChooser : public RangeChooser {
public:
    explicit SplitDialogChooser(CWnd* parent = nullptr) : m_Parent(parent) {}
    RangeChoice Choose(const RangeRequest&) override;

private:
    CWnd* m_Parent;
};

}  // namespace vesk
