#include "app/LicenceCommand.h"

#include "app/frame/LicenceDialog.h"
#include "engine/platform/Session.h"

int LicenceCommand::run(const CommandCall & /*call*/)
{
    Session::print(LicenceDialog::text(), false);
    return 0;
}
