#include "LoginProperties/SheetLog.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"

namespace {

std::wstring NameOf(const SheetLog::CurrentProfile& profile) {
  return profile ? Format(L"{} '{}'", profile->GetProfileId(), profile->GetName()) : L"(none)";
}

const wchar_t* NameOf(ChangeState state) {
  switch (state) {
    case ChangeState::New:
      return L"new";
    case ChangeState::Changed:
      return L"changed";
    case ChangeState::Removed:
      return L"removed";
    case ChangeState::Renamed:
      return L"renamed";
    case ChangeState::Unchanged:
      break;
  }
  return L"unchanged";
}

bool IsChanged(const std::shared_ptr<const SQLRecord>& record) {
  return record && record->GetState() != ChangeState::Unchanged;
}

template <typename Table>
ptrdiff_t CountChanged(const Table& table) {
  return std::ranges::count_if(table, [](const auto& row) { return IsChanged(row.second); });
}

}  // namespace

namespace SheetLog {

void Opened(SheetMode mode, const ProfileTable& profiles, const CurrentProfile& current) {
  Log(LogLevel::Info, Format(L"Login properties opened: mode {}, profile {}, profiles in all: {}",
                             static_cast<uint32_t>(mode), NameOf(current), profiles.size()));
}

void Confirmed(const ProfileTable& profiles, const PreferenceTable& preferences, const AutoStartTable& autoStartItems,
               const ConfigTable& manualConfigs, const ConfigTable& autoConfigs) {
  Log(LogLevel::Info,
      Format(L"Login properties confirmed; changed: profiles {}, preferences {}, autostart items {}, proxies {}",
             CountChanged(profiles), CountChanged(preferences), CountChanged(autoStartItems),
             CountChanged(manualConfigs) + CountChanged(autoConfigs)));
  for (const auto& [id, profile] : profiles) {
    if (!IsChanged(profile)) continue;
    Log(LogLevel::Info, Format(L"Profile {} is {}", NameOf(profile), NameOf(profile->GetState())));
  }
}

void Cancelled() { Log(LogLevel::Info, L"Login properties cancelled"); }

void NotShown(SheetMode mode, size_t pages, const std::wstring& error) {
  Log(LogLevel::Error,
      Format(L"Login properties could not be shown: mode {}, pages {}", static_cast<uint32_t>(mode), pages) + error);
}

void PageShown(std::wstring_view page, const CurrentProfile& current) {
  Log(LogLevel::Detail, Format(L"Page '{}' shows profile {}", page, NameOf(current)));
}

void PageRefused(std::wstring_view page) {
  Log(LogLevel::Detail, Format(L"Page '{}' cannot be left: a value is not valid", page));
}

void ProfileSelected(const CurrentProfile& selected) {
  Log(LogLevel::Detail, Format(L"Profile {} selected", NameOf(selected)));
}

void OverrideClicked(std::wstring_view page, const CurrentProfile& current, bool overrides) {
  Log(LogLevel::Detail, overrides ? Format(L"Page '{}': profile {} overrides the defaults", page, NameOf(current))
                                  : Format(L"Page '{}': profile {} follows the defaults", page, NameOf(current)));
}

void ProfileRenamed(const CurrentProfile& current, std::wstring_view newName) {
  Log(LogLevel::Info, Format(L"Profile {} is now called '{}'", NameOf(current), newName));
}

void RemovalRefused(const CurrentProfile& current) {
  Log(LogLevel::Info, Format(L"Profile {} cannot be removed", NameOf(current)));
}

void ProfileRemoved(const CurrentProfile& current) {
  Log(LogLevel::Info, Format(L"Profile {} is to be removed", NameOf(current)));
}

void ProfileCreated(const CurrentProfile& created, uint32_t source) {
  Log(LogLevel::Info, source != 0 ? Format(L"Profile {} made, with copies from profile {}", NameOf(created), source)
                                  : Format(L"Profile {} made", NameOf(created)));
}

void NetworkConfigured(const CurrentProfile& current) {
  Log(LogLevel::Info, Format(L"User ID and network service of profile {} set up", NameOf(current)));
}

void ServersConfigured(const CurrentProfile& current) {
  Log(LogLevel::Info, Format(L"Servers of profile {} set up", NameOf(current)));
}

void ResetByPolicy(std::wstring_view page, const CurrentProfile& current) {
  Log(LogLevel::Detail, Format(L"Page '{}': policy resets profile {} to the defaults", page, NameOf(current)));
}

}  // namespace SheetLog
