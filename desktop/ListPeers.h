#pragma once

#include <memory>

#include "desktop/ControlPeer.h"
#include "platform/CDialog.h"

namespace vesk {

// The widget and its peer for a list box, drawn by the toolkit or by its owner, or a list control.
std::unique_ptr<ControlPeer> MakeListPeer(const CDialog::Control&, QWidget& parent,
                                          ControlPeer::Acted acted);

}  // namespace vesk
