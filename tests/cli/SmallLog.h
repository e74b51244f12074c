#pragma once

#include "tests/support/LogBuilder.h"

// A log with one of everything, counted in QBit; its first record has time 1.
inline LogBuilder SmallLog() {
    LogBuilder log;
    log.WithHeader(1).ReturnsToTask().Extra(vesk::HeaderItem::Counters({"EMI", "EMI"})).Frame(7);
    log.Values({5, 50}).Task("MAIN", 100).Enter("fun", 110);
    log.Values({6, 4000000000}).Irq(3, 150).Return(163).Leave("fun", 170).Mark("m,k", 180);
    return log.HwOn("dma", 190).HwOff("dma", 195).Frame(8).Task("IDLE", 203).Task("a\xE9\"\n", 260);
}
