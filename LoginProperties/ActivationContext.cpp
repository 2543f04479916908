#include "LoginProperties/ActivationContext.h"

// The linker's name for the start of this module, which is also its module handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

ActivationContext::ActivationContext() {
  ACTCTXW description{};
  description.cbSize = sizeof(description);
  description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  description.hModule = reinterpret_cast<HMODULE>(&__ImageBase);
  description.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
  context_ = CreateActCtxW(&description);
  active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_) != FALSE;
}

ActivationContext::~ActivationContext() {
  if (active_) DeactivateActCtx(0, cookie_);
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}
