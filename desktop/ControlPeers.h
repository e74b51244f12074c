#pragma once

#include <memory>

#include "desktop/ControlPeer.h"
#include "platform/CDialog.h"

namespace vesk {

// The widget for a dialog's control, as a child of `parent`, and its peer. The widget shows the
// control's state from the peer's first Sync on.
std::unique_ptr<ControlPeer> MakeControlPeer(const CDialog::Control&, QWidget& parent,
                                             ControlPeer::Acted acted);

}  // namespace vesk
