#include "platform/CClientDC.h"

// All windows share the user interface's font, by which a context without a surface measures.
CClientDC::CClientDC(CWnd*) {}
