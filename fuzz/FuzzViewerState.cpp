#include <QByteArray>
#include <cstdint>
#include <cstdlib>

#include "desktop/StateJson.h"
#include "desktop/UserState.h"

// The viewer's memory is refused, or what is kept of it comes back unchanged.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    vesk::UserState state;
    if (!vesk::StateFromJson(text, state)) return 0;
    const QByteArray kept = vesk::StateToJson(state);
    vesk::UserState again;
    if (!vesk::StateFromJson(kept, again) || vesk::StateToJson(again) != kept) std::abort();
    return 0;
}
