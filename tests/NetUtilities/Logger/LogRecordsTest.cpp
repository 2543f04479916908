#include "NetUtilities/Logger/LogRecords.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr LogSource kUnnamed{36};

std::vector<std::wstring> Texts(const LogRecords& records) {
  std::vector<std::wstring> texts;
  records.ForEach([&](const LogRecord& record) { texts.emplace_back(record.text); });
  return texts;
}

TEST(LogRecords, ComeBackInOrderWithAllThatTheyHave) {
  LogRecords records;
  records.Add(LogSource::General, LogLevel::Error, L"first: ", L"message");
  records.Add(kUnnamed, LogLevel{0}, L"", L"second");
  std::vector<LogSource> sources;
  std::vector<LogLevel> levels;
  records.ForEach([&](const LogRecord& record) {
    sources.push_back(record.source);
    levels.push_back(record.level);
  });
  EXPECT_EQ(sources, (std::vector{LogSource::General, kUnnamed}));
  EXPECT_EQ(levels, (std::vector{LogLevel::Error, LogLevel{0}}));
  EXPECT_EQ(Texts(records), (std::vector<std::wstring>{L"first: message", L"second"}));
}

TEST(LogRecords, KeepEveryCharacter) {
  const std::wstring text{L'a', L'\0', L'\n', L'\xD83D', L'\xDE00'};
  LogRecords records;
  records.Add(LogSource::General, LogLevel::Error, L"", text);
  records.Add(LogSource::General, LogLevel::Error, L"", L"next");
  EXPECT_EQ(Texts(records), (std::vector<std::wstring>{text, L"next"}));
}

TEST(LogRecords, AreGoneOnceCleared) {
  LogRecords records;
  EXPECT_TRUE(records.empty());
  records.Add(LogSource::General, LogLevel::Error, L"", L"old");
  EXPECT_FALSE(records.empty());
  records.clear();
  EXPECT_TRUE(records.empty());
  records.Add(LogSource::General, LogLevel::Error, L"", L"new");
  EXPECT_EQ(Texts(records), std::vector<std::wstring>{L"new"});
}

TEST(LogRecords, AreClearedInAnyNumber) {
  const std::wstring text(1'000, L'x');
  LogRecords records;
  for (int record = 0; record < 1'000; ++record) records.Add(LogSource::General, LogLevel::Error, L"", text);
  EXPECT_EQ(Texts(records).size(), 1'000u);
  records.clear();
  EXPECT_TRUE(records.empty());
  EXPECT_TRUE(Texts(records).empty());
}

TEST(LogRecords, ChangePlaces) {
  LogRecords some;
  LogRecords others;
  some.Add(LogSource::General, LogLevel::Error, L"", L"some");
  some.swap(others);
  EXPECT_TRUE(some.empty());
  EXPECT_EQ(Texts(others), std::vector<std::wstring>{L"some"});
}

}  // namespace
