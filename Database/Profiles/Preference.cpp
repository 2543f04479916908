#include "Database/Profiles/Preference.h"

#include "Database/SQLite/MemberBinding.h"

std::span<const ColumnBinding> Preference::GetBindings() const {
  static constexpr ColumnBinding kBindings[] = {
      Bind<&Preference::fields_, &PreferenceFields::preferenceId>(L"PreferenceId"),
      Bind<&Preference::fields_, &PreferenceFields::profileId>(L"ProfileId"),
      Bind<&Preference::fields_, &PreferenceFields::state>(L"State"),
      Bind<&Preference::fields_, &PreferenceFields::visible>(L"Visible"),
      Bind<&Preference::fields_, &PreferenceFields::ipsecRequired>(L"IPSecRequired"),
  };
  return kBindings;
}

void Preference::SetProfileId(uint32_t profileId) {
  fields_.profileId = profileId;
  SetState(ChangeState::Changed);
}

void Preference::SetValue(int32_t value) {
  fields_.state = value;
  SetState(ChangeState::Changed);
}
