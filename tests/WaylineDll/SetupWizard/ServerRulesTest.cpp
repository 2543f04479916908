#include "WaylineDll/SetupWizard/ServerRules.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

constexpr size_t kDns1 = static_cast<size_t>(ServerField::Dns1);
constexpr size_t kSearchList = static_cast<size_t>(ServerField::SearchList);

}  // namespace

TEST(ServerRules, ReadsModesAndValuesInTheirOrder) {
  ProfileColumns profile;
  profile.dns1Setting = L'1';
  profile.dns2Setting = L'2';
  profile.wins1Setting = L'3';
  profile.wins2Setting = L'4';
  profile.domainNameSetting = L'5';
  profile.searchListSetting = L'6';
  ConfigSetting config;
  config.fields.dns1 = L"one";
  config.fields.dns2 = L"two";
  config.fields.wins1 = L"three";
  config.fields.wins2 = L"four";
  config.fields.domainName = L"five";
  config.fields.searchList = L"six";
  const ServerSettings expected = {
      {{L'1', L"one"}, {L'2', L"two"}, {L'3', L"three"}, {L'4', L"four"}, {L'5', L"five"}, {L'6', L"six"}}};
  EXPECT_EQ(ReadServers(profile, config), expected);
}

TEST(ServerRules, WritesTheModesAndTheValuesOfThoseThatAreManual) {
  ProfileColumns profile;
  ConfigSetting config;
  config.fields.dns1 = L"192.0.2.1";
  config.fields.searchList = L"example.com";
  ServerSettings servers = ReadServers(profile, config);
  servers[kDns1] = {L'm', L"192.0.2.2"};
  servers[kSearchList] = {L'a', L"typed and given up"};
  WriteServers(servers, profile, config);
  EXPECT_EQ(profile.dns1Setting, L'm');
  EXPECT_EQ(config.fields.dns1, L"192.0.2.2");
  EXPECT_EQ(profile.searchListSetting, L'a');
  EXPECT_EQ(config.fields.searchList, L"example.com");
}

TEST(ServerRules, CarriesAModeThatItDoesNotKnow) {
  ProfileColumns profile;
  profile.wins1Setting = L'x';
  ConfigSetting config;
  WriteServers(ReadServers(profile, config), profile, config);
  EXPECT_EQ(profile.wins1Setting, L'x');
}

TEST(ServerRules, DnsServersHaveAddressesOfBothVersions) {
  for (const ServerField field : {ServerField::Dns1, ServerField::Dns2}) {
    EXPECT_EQ(AcceptedServer(field, L"192.0.2.53"), L"192.0.2.53");
    EXPECT_EQ(AcceptedServer(field, L"2001:db8::53"), L"2001:db8::53");
    EXPECT_EQ(AcceptedServer(field, L"dns.example.com"), std::nullopt);
    EXPECT_EQ(AcceptedServer(field, L""), std::nullopt);
  }
}

TEST(ServerRules, WinsServersHaveAddressesOfVersion4Only) {
  for (const ServerField field : {ServerField::Wins1, ServerField::Wins2}) {
    EXPECT_EQ(AcceptedServer(field, L"192.0.2.53"), L"192.0.2.53");
    EXPECT_EQ(AcceptedServer(field, L"2001:db8::53"), std::nullopt);
    EXPECT_EQ(AcceptedServer(field, L""), std::nullopt);
  }
}

TEST(ServerRules, ADomainNameAndASuffixListMustNotBeEmpty) {
  EXPECT_EQ(AcceptedServer(ServerField::DomainName, L"example.com"), L"example.com");
  EXPECT_EQ(AcceptedServer(ServerField::DomainName, L""), std::nullopt);
  EXPECT_EQ(AcceptedServer(ServerField::DomainName, L"a.com, b.com"), std::nullopt);
  EXPECT_EQ(AcceptedServer(ServerField::SearchList, L"a.com; b.com"), L"a.com,b.com");
  EXPECT_EQ(AcceptedServer(ServerField::SearchList, L""), std::nullopt);
}
