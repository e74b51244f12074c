#pragma once

// How the timeline shows a log.
enum OUTLOOKTYPE {
    OUTLOOK_PURE = 0,      // all jobs on one strip, with their names
    OUTLOOK_RELATIVE = 1,  // one lane per task, interrupt, function, mark and hardware event
};

// What the x axis counts.
enum TIMEUNITTYPE {
    TIMEUNIT_CLOCK = 0,  // QBit
    TIMEUNIT_TIME = 1,   // execution time
    TIMEUNIT_COUNT = 2,  // the target's counter
};
