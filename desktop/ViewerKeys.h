#pragma once

namespace vesk {

// A key of the viewer's own, beside those of the library's tables, and what it does.
struct ViewerKey {
    const char* m_Key;  // as the toolkit writes it
    const char* m_Does;
};

inline constexpr ViewerKey kPrintKey{"Ctrl+P", "Print"};
inline constexpr ViewerKey kCloseKey{"Ctrl+W", "Close the log"};
inline constexpr ViewerKey kExitKey{"Ctrl+Q", "Exit"};
inline constexpr ViewerKey kSearchKey{"Ctrl+Shift+F", "Search results, shown or hidden"};
inline constexpr ViewerKey kMarkersKey{"Ctrl+Shift+M", "Markers, shown or hidden"};

inline constexpr const ViewerKey* kViewerKeys[] = {&kPrintKey, &kCloseKey, &kExitKey, &kSearchKey,
                                                   &kMarkersKey};

}  // namespace vesk
