#include "tests/support/SavedCertificate.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <wincrypt.h>

#include "NetUtilities/Text/Format.h"

namespace {

// Its key lives in memory only and is gone with this function.
PCCERT_CONTEXT CreateCertificate() {
  HCRYPTPROV provider = 0;
  HCRYPTKEY key = 0;
  EXPECT_TRUE(CryptAcquireContextW(&provider, nullptr, nullptr, PROV_RSA_AES, CRYPT_VERIFYCONTEXT));
  EXPECT_TRUE(CryptGenKey(provider, AT_SIGNATURE, 1024u << 16, &key));
  BYTE name[64];
  DWORD size = sizeof name;
  EXPECT_TRUE(CertStrToNameW(X509_ASN_ENCODING, L"CN=Sample User", CERT_X500_NAME_STR, nullptr, name, &size, nullptr));
  CERT_NAME_BLOB subject{size, name};
  const PCCERT_CONTEXT certificate = CertCreateSelfSignCertificate(provider, &subject, CERT_CREATE_SELFSIGN_NO_KEY_INFO,
                                                                   nullptr, nullptr, nullptr, nullptr, nullptr);
  CryptDestroyKey(key);
  CryptReleaseContext(provider, 0);
  return certificate;
}

// What is changed is written when the store is closed.
HCERTSTORE OpenStore() {
  return CertOpenStore(CERT_STORE_PROV_SYSTEM_REGISTRY_W, 0, 0, CERT_SYSTEM_STORE_CURRENT_USER, L"MY");
}

}  // namespace

SavedCertificate::SavedCertificate() {
  const PCCERT_CONTEXT certificate = CreateCertificate();
  auto size = static_cast<DWORD>(hash_.size());
  EXPECT_TRUE(CertGetCertificateContextProperty(certificate, CERT_MD5_HASH_PROP_ID, hash_.data(), &size));
  size = static_cast<DWORD>(sha1Hash_.size());
  EXPECT_TRUE(CertGetCertificateContextProperty(certificate, CERT_SHA1_HASH_PROP_ID, sha1Hash_.data(), &size));
  const HCERTSTORE store = OpenStore();
  EXPECT_TRUE(CertAddCertificateContextToStore(store, certificate, CERT_STORE_ADD_ALWAYS, nullptr));
  CertFreeCertificateContext(certificate);
  CertCloseStore(store, 0);
}

SavedCertificate::~SavedCertificate() {
  const HCERTSTORE store = OpenStore();
  CRYPT_HASH_BLOB hash{static_cast<DWORD>(hash_.size()), hash_.data()};
  EXPECT_TRUE(CertDeleteCertificateFromStore(
      CertFindCertificateInStore(store, X509_ASN_ENCODING, 0, CERT_FIND_MD5_HASH, &hash, nullptr)));
  CertCloseStore(store, 0);
}

std::wstring SavedCertificate::HashDigits() const {
  std::wstring digits;
  for (const unsigned byte : hash_) digits += Format(L"{:02X}", byte);
  return digits;
}

std::wstring SavedCertificate::Sha1HashDigits() const {
  std::wstring digits;
  for (const unsigned byte : sha1Hash_) digits += Format(L"{}{:02x}", digits.empty() ? L"" : L" ", byte);
  return digits;
}
