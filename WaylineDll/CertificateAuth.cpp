#include "WaylineDll/CertificateAuth.h"

#include <windows.h>

#include <wincrypt.h>

#include <memory>
#include <type_traits>

namespace {

struct CloseStore {
  void operator()(HCERTSTORE store) const { CertCloseStore(store, 0); }
};
using StorePtr = std::unique_ptr<std::remove_pointer_t<HCERTSTORE>, CloseStore>;

struct FreeCertificate {
  void operator()(PCCERT_CONTEXT certificate) const { CertFreeCertificateContext(certificate); }
};
using CertificatePtr = std::unique_ptr<const CERT_CONTEXT, FreeCertificate>;

// The certificates of the current user; null when there are none.
StorePtr OpenPersonalStore() {
  constexpr DWORD kFlags = CERT_SYSTEM_STORE_CURRENT_USER | CERT_STORE_OPEN_EXISTING_FLAG | CERT_STORE_READONLY_FLAG;
  return StorePtr(CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, kFlags, L"MY"));
}

}  // namespace

CertificateAuth::CertificateAuth() = default;

bool CertificateAuth::HasSavedCertificate(const uint8_t* hash, uint32_t length) {
  const StorePtr store = OpenPersonalStore();
  if (!store) return false;
  CRYPT_HASH_BLOB wanted{length, const_cast<uint8_t*>(hash)};
  return CertificatePtr(CertFindCertificateInStore(store.get(), X509_ASN_ENCODING | PKCS_7_ASN_ENCODING, 0,
                                                   CERT_FIND_MD5_HASH, &wanted, nullptr)) != nullptr;
}
