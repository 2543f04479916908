#include "WaylineDll/CertificateAuth.h"

#include <windows.h>

#include <wincrypt.h>

#include "NetUtilities/Module/Owner.h"

namespace {

void CloseStore(HCERTSTORE store) { CertCloseStore(store, 0); }

using Store = Owner<HCERTSTORE, CloseStore>;
using Certificate = Owner<PCCERT_CONTEXT, CertFreeCertificateContext>;

// The certificates of the current user; null when there are none.
Store OpenPersonalStore() {
  constexpr DWORD kFlags = CERT_SYSTEM_STORE_CURRENT_USER | CERT_STORE_OPEN_EXISTING_FLAG | CERT_STORE_READONLY_FLAG;
  return Store(CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, kFlags, L"MY"));
}

}  // namespace

CertificateAuth::CertificateAuth() = default;

bool CertificateAuth::HasSavedCertificate(const uint8_t* hash, uint32_t length) {
  const Store store = OpenPersonalStore();
  if (!store) return false;
  constexpr uint32_t kSha1Size = 20;
  const DWORD kind = length == kSha1Size ? CERT_FIND_SHA1_HASH : CERT_FIND_MD5_HASH;
  CRYPT_HASH_BLOB wanted{length, const_cast<uint8_t*>(hash)};
  return Certificate(CertFindCertificateInStore(store.get(), X509_ASN_ENCODING | PKCS_7_ASN_ENCODING, 0, kind, &wanted,
                                                nullptr)) != nullptr;
}
