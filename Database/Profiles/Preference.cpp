#include "Database/Profiles/Preference.h"

Preference::Preference(const PreferenceFields& fields) : fields_(fields) { BindColumns(); }

Preference::Preference(const Preference& other) : SQLRecord(other), fields_(other.fields_) { BindColumns(); }

void Preference::SetProfileId(uint32_t profileId) {
  fields_.profileId = profileId;
  SetState(ChangeState::Changed);
}

void Preference::SetValue(int32_t value) {
  fields_.state = value;
  SetState(ChangeState::Changed);
}

void Preference::BindColumns() {
  Bind(L"PreferenceId", ColumnKind::Integer32, &fields_.preferenceId);
  Bind(L"ProfileId", ColumnKind::Integer32, &fields_.profileId);
  Bind(L"State", ColumnKind::Integer32, &fields_.state);
  Bind(L"Visible", ColumnKind::Boolean, &fields_.visible);
  Bind(L"IPSecRequired", ColumnKind::Boolean, &fields_.ipsecRequired);
}
