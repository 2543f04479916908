#include "tests/ui/TestContext.h"

namespace {

void AddProfile(LoginPropertiesContext& context, uint32_t id, const std::wstring& name, uint32_t parent) {
  auto profile = std::make_shared<Profile>(id);
  profile->SetName(name);
  profile->Columns().linkProfile = parent;
  context.profiles.emplace(id, std::move(profile));
}

}  // namespace

LoginPropertiesContext MakeContext(SheetMode mode) {
  LoginPropertiesContext context;
  context.mode = mode;
  AddProfile(context, kRoot, L"Default", 0);
  AddProfile(context, kWork, L"Work", kRoot);
  AddProfile(context, kWork2, L"Work 2", kRoot);
  AddProfile(context, kHidden, L"Hidden", kRoot);
  AddProfile(context, kHome, L"Home", kRoot);
  AddProfile(context, kNameless, L"", kRoot);
  context.profiles[kHidden]->SetHidden(true);
  context.currentProfile = context.profiles[kWork];
  return context;
}
