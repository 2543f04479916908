#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Database/ConfigXmlProcessing.h"
#include "Database/Profiles/Profile.h"
#include "Database/SQLite/SQLite.h"

/// Where the client looks for the certificates of its users.
enum class CertificateSource : uint32_t {
  None = 0,
  LocalStore = 1,
  SmartCardOnly = 2,
};

/// The table of login profiles in the user's settings database: reads profiles, and takes what a configuration says of
/// them. Used by one thread.
class Profiles : public ConfigXmlProcessing {
 public:
  /// Fills a profile with the values in force: where it stores none itself, those that it inherits, and the defaults
  /// where nobody stores any. False when the database fails, which has been logged. True with the defaults and id 0 for
  /// a profile that is not stored. The links of the stored profiles must come to an end (SQLite::GetHierarchicalList).
  /// Throws as SQLiteDatabase::Open.
  bool LoadProfileById(uint32_t id, Profile& profile);

  /// "Default" and "UseDigitalCertificates", and the columns of a profile.
  const std::vector<ValidName>& GetValidNames() override;

  /// Takes "Default" with a word for true or false, and "UseDigitalCertificates" with the name of a CertificateSource;
  /// case matters. Any other value of the latter is refused without a message.
  bool SetTableValue(std::wstring_view name, std::wstring& value, std::wstring& message) override;

  // What the configuration said.
  bool IsDefault() const { return isDefault_; }
  bool AreCertificatesSet() const { return certificatesSet_; }
  CertificateSource GetCertificateSource() const { return certificateSource_; }

 private:
  bool SetCertificateSource(std::wstring_view value);

  SQLite sqlite_;
  bool isDefault_ = false;
  bool certificatesSet_ = false;
  CertificateSource certificateSource_ = CertificateSource::None;
};
