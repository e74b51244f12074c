#include "host/LibraryEntry.h"

namespace vesk {

namespace {

AFX_EXTENSION_MODULE extensionModule;
// A plain pointer: nothing is to run on it when the process ends without having detached.
CDynLinkLibrary* joinedLibrary = nullptr;

}  // namespace

bool AttachLibrary(const ResourceTables& tables) {
    if (joinedLibrary) return true;
    if (!AfxInitExtensionModule(extensionModule, &tables)) return false;
    joinedLibrary = new CDynLinkLibrary(extensionModule);
    return true;
}

void DetachLibrary() {
    delete joinedLibrary;
    joinedLibrary = nullptr;
    AfxTermExtensionModule(extensionModule);
}

}  // namespace vesk
