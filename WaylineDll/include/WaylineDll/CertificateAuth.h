#pragma once

#include <cstdint>

#include "WaylineDll/Api.h"

/// Looks certificates up in the current user's personal certificate store of Windows.
class WAYLINE_CLASS CertificateAuth {
 public:
  CertificateAuth();

  /// Whether a certificate with this hash is stored: one of MD5 where `length`, in bytes, is 16, of SHA-1 where it is
  /// 20. The hash stays the caller's.
  bool HasSavedCertificate(const uint8_t* hash, uint32_t length);
};
