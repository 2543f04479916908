#include "NetUtilities/Module/ActivationContext.h"

#include "NetUtilities/Module/OwnModule.h"

ActivationContext::ActivationContext() {
  ACTCTXW description{};
  description.cbSize = sizeof(description);
  description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  description.hModule = OwnModule();
  description.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
  context_ = CreateActCtxW(&description);
  active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_) != FALSE;
}

ActivationContext::~ActivationContext() {
  if (active_) DeactivateActCtx(0, cookie_);
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}
