#include "Database/Profiles/Profiles.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <utility>

#include "Database/Profiles/ProfileNames.h"
#include "NetUtilities/Text/StringToBool.h"

namespace {

constexpr wchar_t kDefaultName[] = L"Default";
constexpr wchar_t kCertificatesName[] = L"UseDigitalCertificates";

using SourceName = std::pair<std::wstring_view, CertificateSource>;
constexpr std::array kCertificateSources = {
    SourceName(L"None", CertificateSource::None),
    SourceName(L"LocalStore", CertificateSource::LocalStore),
    SourceName(L"SmartCardOnly", CertificateSource::SmartCardOnly),
};

}  // namespace

bool Profiles::LoadProfileById(uint32_t id, Profile& profile) {
  if (sqlite_.Open() != SQLITE_OK) return false;
  profile.Reset();
  const int32_t result = sqlite_.LoadHierarchical(kProfileTable, L"where ProfileId = @ProfileId", id, profile);
  if (result == SQLITE_DONE) return true;
  sqlite_.ReportError(result);
  return false;
}

const std::vector<ValidName>& Profiles::GetValidNames() {
  StoreValidNames({{kDefaultName, {}, ValueClass::Boolean}, {kCertificatesName, {}, ValueClass::Text}},
                  Profile(0).GetBindings());
  return StoredValidNames();
}

bool Profiles::SetTableValue(std::wstring_view name, std::wstring& value, std::wstring& message) {
  message.clear();
  if (name == kDefaultName) {
    isDefault_ = StringToBool(value);
    return true;
  }
  if (name == kCertificatesName) return SetCertificateSource(value);
  message = L"Unknown name '";
  message.append(name);
  return false;
}

bool Profiles::SetCertificateSource(std::wstring_view value) {
  const auto source = std::ranges::find(kCertificateSources, value, &SourceName::first);
  if (source == kCertificateSources.end()) return false;
  certificatesSet_ = true;
  certificateSource_ = source->second;
  return true;
}
