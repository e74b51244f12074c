#include "resources/VeskResources.h"

#include "resources/Tables.h"

namespace vesk {

const ResourceTables& VeskResources() {
    static const ResourceTables tables{Menus(), Accelerators(), ToolBars(), Dialogs(), Strings()};
    return tables;
}

}  // namespace vesk
