#include "Database/Profiles/ServiceInfo.h"

#include <gmock/gmock.h>

#include "tests/Database/SQLite/UserDatabase.h"
#include "tests/support/LogCapture.h"

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class ServiceInfoTest : public testing::Test {
 protected:
  void MakeTable(const std::string& rows) {
    database_.Run("create table Services (ServiceId, Name, DisplayText); insert into Services values " + rows);
  }

  LogCapture log_;
  UserDatabase database_;
  ServiceInfo service_;
};

constexpr char kServices[] =
    "(402, 'guest', 'Guest Internet'), (400, 'standard', 'Standard Access'), (401, 'secure', 'Z\xc3\xbcrich')";

LogCapture::Message NotFound(const std::wstring& id) {
  return {LogSource::General, LogLevel::Error, L"ServiceInfo::Load(" + id + L") Record Not Found!"};
}

}  // namespace

TEST_F(ServiceInfoTest, HasNoServiceAtFirst) {
  EXPECT_EQ(service_.GetService(), nullptr);
  EXPECT_EQ(service_.GetDisplayText(), L"");
}

TEST_F(ServiceInfoTest, FindsAServiceByItsId) {
  MakeTable(kServices);
  EXPECT_TRUE(service_.Load(401));
  ASSERT_NE(service_.GetService(), nullptr);
  EXPECT_EQ(service_.GetService()->serviceId, 401);
  EXPECT_EQ(service_.GetService()->name, L"secure");
  EXPECT_EQ(service_.GetDisplayText(), L"Z\u00fcrich");
  EXPECT_TRUE(service_.Load(402));
  EXPECT_EQ(service_.GetDisplayText(), L"Guest Internet");
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(ServiceInfoTest, TakesIdZeroForService400) {
  MakeTable(kServices);
  EXPECT_TRUE(service_.Load(0));
  EXPECT_EQ(service_.GetService()->serviceId, 400);
  EXPECT_EQ(service_.GetDisplayText(), L"Standard Access");
}

TEST_F(ServiceInfoTest, LogsTheIdThatItLookedFor) {
  MakeTable("(401, 'secure', 'Secure Tunnel')");
  EXPECT_FALSE(service_.Load(0));
  EXPECT_FALSE(service_.Load(7));
  EXPECT_FALSE(service_.Load(4294967295));
  EXPECT_THAT(log_.Messages(), ElementsAre(NotFound(L"400"), NotFound(L"7"), NotFound(L"4294967295")));
  EXPECT_EQ(service_.GetService(), nullptr);
}

TEST_F(ServiceInfoTest, KeepsTheServiceThatItHasWhenAnotherIsMissing) {
  MakeTable(kServices);
  EXPECT_TRUE(service_.Load(402));
  EXPECT_FALSE(service_.Load(403));
  EXPECT_EQ(service_.GetService()->serviceId, 402);
}

TEST_F(ServiceInfoTest, TakesTheFirstOfServicesWithTheSameId) {
  MakeTable("(400, 'a', 'First'), (400, 'b', 'Second')");
  EXPECT_TRUE(service_.Load(400));
  EXPECT_EQ(service_.GetDisplayText(), L"First");
}

TEST_F(ServiceInfoTest, ReadsTheListOnce) {
  MakeTable(kServices);
  EXPECT_TRUE(service_.Load(400));
  database_.Run("update Services set DisplayText = 'Changed'; insert into Services values (500, 'new', 'New')");
  EXPECT_TRUE(service_.Load(401));
  EXPECT_EQ(service_.GetDisplayText(), L"Z\u00fcrich");
  EXPECT_FALSE(service_.Load(500));
  EXPECT_TRUE(ServiceInfo().Load(500));
}

TEST_F(ServiceInfoTest, FindsNothingWithoutDatabase) {
  EXPECT_FALSE(service_.Load(400));
  EXPECT_THAT(log_.Messages(), ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Info,
                                                               L"database not found: " + database_.File()},
                                           NotFound(L"400")));
}

TEST_F(ServiceInfoTest, ReadsTheListAgainAfterAFailure) {
  database_.Run("create table Other (Id)");
  EXPECT_FALSE(service_.Load(400));
  ASSERT_THAT(log_.Messages(), SizeIs(2));
  EXPECT_EQ(log_.Messages()[0].level, LogLevel::Error);
  EXPECT_THAT(log_.Messages()[0].text,
              EndsWith(L" Error: 1 - SQL logic error - select ServiceId, Name, DisplayText from Services;"));
  EXPECT_EQ(log_.Messages()[1], NotFound(L"400"));
  MakeTable(kServices);
  EXPECT_TRUE(service_.Load(400));
}

TEST_F(ServiceInfoTest, ACopyHasAServiceOfItsOwn) {
  MakeTable(kServices);
  EXPECT_TRUE(service_.Load(402));
  ServiceInfo copy = service_;
  EXPECT_TRUE(copy.Load(401));
  EXPECT_EQ(service_.GetService()->serviceId, 402);
  EXPECT_EQ(copy.GetService()->serviceId, 401);
}
