#pragma once

#include <windows.h>

#include "LoginProperties/LoginPropertiesContext.h"

/// Shows the modal property sheet "... - Login Properties" on the calling thread, over `context->parentWindow`. The
/// sheet works on a copy of `*context`, which goes back into it only when the user confirms with OK. The records are
/// shared with that copy: after any other result the caller drops them instead of saving them, because they may carry
/// edits.
///
/// Returns what the platform's property sheet returns: 1 for OK, 0 for Cancel, -1 when the sheet cannot be created, as
/// for a mode that has no pages. Exceptions that the building of the pages raises reach the caller. Not to be entered
/// twice at once.
extern "C" INT_PTR ShowLoginProperties(LoginPropertiesContext* context);
