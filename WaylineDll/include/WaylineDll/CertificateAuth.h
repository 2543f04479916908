#pragma once

#include <cstdint>

#include "WaylineDll/Api.h"

/// Looks certificates up in the current user's personal certificate store of Windows.
class WAYLINE_CLASS CertificateAuth {
 public:
  CertificateAuth();

  /// Whether a certificate with this MD5 hash is stored. `length` is in bytes; the hash stays the caller's.
  bool HasSavedCertificate(const uint8_t* hash, uint32_t length);
};
