#include "WaylineDll/CertificateAuth.h"

#include <gtest/gtest.h>

#include "tests/support/SavedCertificate.h"

TEST(CertificateAuth, FindsACertificateOfTheUserByItsHash) {
  std::array<uint8_t, 16> hash{};
  {
    const SavedCertificate certificate;
    hash = certificate.Hash();
    EXPECT_TRUE(CertificateAuth().HasSavedCertificate(hash.data(), hash.size()));
    ++hash.back();
    EXPECT_FALSE(CertificateAuth().HasSavedCertificate(hash.data(), hash.size()));
    --hash.back();
  }
  EXPECT_FALSE(CertificateAuth().HasSavedCertificate(hash.data(), hash.size())) << "the certificate is gone";
}

TEST(CertificateAuth, FindsItByItsSha1HashToo) {
  const SavedCertificate certificate;
  std::array<uint8_t, 20> hash = certificate.Sha1Hash();
  EXPECT_TRUE(CertificateAuth().HasSavedCertificate(hash.data(), hash.size()));
  ++hash.back();
  EXPECT_FALSE(CertificateAuth().HasSavedCertificate(hash.data(), hash.size()));
}

TEST(CertificateAuth, TakesOnlyAWholeHash) {
  const SavedCertificate certificate;
  const auto sha1Hash = certificate.Sha1Hash();
  EXPECT_FALSE(CertificateAuth().HasSavedCertificate(sha1Hash.data(), sha1Hash.size() - 1));
  const auto hash = certificate.Hash();
  EXPECT_FALSE(CertificateAuth().HasSavedCertificate(hash.data(), hash.size() - 1));
  EXPECT_FALSE(CertificateAuth().HasSavedCertificate(hash.data(), 0));
}

TEST(CertificateAuth, NoCertificateHasAHashOfZeros) {
  const SavedCertificate certificate;
  const std::array<uint8_t, 16> zeros{};
  EXPECT_FALSE(CertificateAuth().HasSavedCertificate(zeros.data(), zeros.size()));
}
