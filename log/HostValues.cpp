#include "log/HostValues.h"

vesk::HostValues& vesk::CurrentHostValues() {
    static HostValues values;
    return values;
}
