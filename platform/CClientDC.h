#pragma once

#include "platform/CDC.h"

class CWnd;

// A context for measuring text in a window's font, outside painting. Draws nothing.
class CClientDC : public CDC {
public:
    explicit CClientDC(CWnd*);
};
