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

  /// Its SHA-1 hash.
  const std::array<uint8_t, 20>& Sha1Hash() const { return sha1Hash_; }

  /// The same as Windows shows it: in pairs of digits, with blanks between them.
  std::wstring Sha1HashDigits() const;

 private:
  std::array<uint8_t, 16> hash_{};
  std::array<uint8_t, 20> sha1Hash_{};
};
