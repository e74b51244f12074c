#include "platform/CColorDialog.h"

#include "platform/UserInterface.h"

int CColorDialog::DoModal() {
    return vesk::CurrentUserInterface().RunColorDialog(*this);
}
