#pragma once

#include <array>
#include <cstdint>
#include <string>

/// A certificate that is in the personal store of the current user while this object lives.
class SavedCertificate {
 public:
  SavedCertificate();
  ~SavedCertificate();
  SavedCertificate(const SavedCertificate&) = delete;
  SavedCertificate& operator=(const SavedCertificate&) = delete;

  /// Its MD5 hash.
  const std::array<uint8_t, 16>& Hash() const { return hash_; }

  /// The same as hexadecimal digits.
  std::wstring HashDigits() const;

 private:
  std::array<uint8_t, 16> hash_{};
};
