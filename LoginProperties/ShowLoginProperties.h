#pragma once

#include <windows.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/SheetResult.h"

/// Shows the modal property sheet "... - Login Properties" on the calling thread, over `context->parentWindow`. The
/// sheet works on a copy of `*context`, which goes back into it only when the user confirms with OK. The records are
/// shared with that copy: after any other result the caller drops them instead of saving them, because they may carry
/// edits.
///
/// Returns how the sheet ended (SheetResult.h). Exceptions that the building of the pages raises reach the caller. Not
/// to be entered twice at once.
extern "C" INT_PTR ShowLoginProperties(LoginPropertiesContext* context);
