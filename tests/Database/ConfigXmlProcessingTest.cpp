#include "Database/ConfigXmlProcessing.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "Database/SQLite/MemberBinding.h"
#include "NetUtilities/Text/Utf8.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

// A value between two others that must stay as they are.
template <typename Value>
struct Enclosed {
  Value before;
  Value value;
  Value after;

  bool operator==(const Enclosed&) const = default;
};

// A record with a column of every kind.
struct Sample : SQLRecord {
  int32_t id = -1;
  int32_t parent = -1;
  std::wstring name = L"unset";
  wchar_t letter = L'?';
  Enclosed<int32_t> number = {-1, -1, -1};
  Enclosed<int64_t> big = {-1, -1, -1};
  Enclosed<bool> flag = {true, false, true};
  std::string bytes = "unset";
  Enclosed<uint16_t> small = {99, 99, 99};

  std::span<const ColumnBinding> GetBindings() const override {
    static constexpr ColumnBinding kBindings[] = {
        BindAs<ColumnKind::Key, &Sample::id>(L"Id", 1),
        BindAs<ColumnKind::ParentKey, &Sample::parent>(L"Parent"),
        Bind<&Sample::name>(L"Name"),
        Bind<&Sample::letter>(L"Letter"),
        Bind<&Sample::number, &Enclosed<int32_t>::value>(L"Number"),
        Bind<&Sample::big, &Enclosed<int64_t>::value>(L"Big"),
        Bind<&Sample::flag, &Enclosed<bool>::value>(L"Flag"),
        Bind<&Sample::bytes>(L"Bytes"),
        Bind<&Sample::small, &Enclosed<uint16_t>::value>(L"Small"),
    };
    return kBindings;
  }
};

const std::vector<std::wstring> kColumns = {L"Id",  L"Parent", L"Name",  L"Letter", L"Number",
                                            L"Big", L"Flag",   L"Bytes", L"Small"};

// The base class as it is.
class Plain : public ConfigXmlProcessing {
 public:
  const std::vector<ValidName>& GetValidNames() override {
    StoreValidNames({{L"Table", L"none", ValueClass::Enumeration}}, Sample().GetBindings());
    return StoredValidNames();
  }
};

// A table with limits and words of its own.
class Limited : public Plain {
 public:
  int32_t GetLowestInteger(std::wstring_view name) const override { return name == L"Number" ? 10 : -20; }
  int32_t GetHighestInteger(std::wstring_view name) const override { return name == L"Number" ? 15 : 70000; }
  EnumerationWords GetEnumerationWords(std::wstring_view name) const override {
    if (name == L"Id") return {};
    return {{L"SmartCardOnly", 2}, {L"None", 0}, {L"LocalStore", 1}, {L"below", -7}};
  }
};

class ConfigXmlProcessingTest : public testing::Test {
 protected:
  Plain plain_;
  Limited limited_;
  Sample record_;
  std::wstring message_ = L"from before";
};

}  // namespace

// Names

TEST_F(ConfigXmlProcessingTest, GivesEachColumnTheClassOfItsKind) {
  EXPECT_THAT(plain_.GetValidNames(),
              ElementsAre(ValidName{L"Table", L"none", ValueClass::Enumeration}, ValidName{L"Id", L"", ValueClass{2}},
                          ValidName{L"Parent", L"", ValueClass{2}}, ValidName{L"Name", L"", ValueClass{1}},
                          ValidName{L"Letter", L"", ValueClass{1}}, ValidName{L"Number", L"", ValueClass{2}},
                          ValidName{L"Big", L"", ValueClass{2}}, ValidName{L"Flag", L"", ValueClass{3}},
                          ValidName{L"Bytes", L"", ValueClass{5}}, ValidName{L"Small", L"", ValueClass{2}}));
}

TEST_F(ConfigXmlProcessingTest, ReplacesTheNamesThatItHadBefore) {
  const size_t count = plain_.GetValidNames().size();
  EXPECT_EQ(plain_.GetValidNames().size(), count);
  plain_.StoreValidNames({}, {});
  EXPECT_EQ(plain_.GetValidNames().size(), count);
}

TEST_F(ConfigXmlProcessingTest, HasNoWordsAndTheLimitsOf32Bits) {
  EXPECT_THAT(plain_.GetEnumerationWords(L"Number"), IsEmpty());
  EXPECT_EQ(plain_.GetLowestInteger(L"Number"), -2147483648);
  EXPECT_EQ(plain_.GetHighestInteger(L"Number"), 2147483647);
}

TEST_F(ConfigXmlProcessingTest, AcceptsNothingForTheTable) {
  std::wstring value = L"yes";
  EXPECT_FALSE(plain_.SetTableValue(L"Default", value, message_));
  EXPECT_EQ(value, L"");
  EXPECT_EQ(message_, L"");
}

TEST_F(ConfigXmlProcessingTest, EverySetterRefusesAnUnknownName) {
  using Setter = bool (ConfigXmlProcessing::*)(std::wstring_view, SQLRecord&, const std::wstring&, std::wstring&);
  for (const Setter setter : {&ConfigXmlProcessing::SetText, &ConfigXmlProcessing::SetInteger,
                              &ConfigXmlProcessing::SetBoolean, &ConfigXmlProcessing::SetEnumeration}) {
    EXPECT_FALSE((limited_.*setter)(L"Missing", record_, L"no number", message_));
    EXPECT_EQ(message_, L"unknown name 'Missing'");
    EXPECT_FALSE((limited_.*setter)(L"", record_, L"no number", message_));
    EXPECT_EQ(message_, L"unknown name ''");
  }
}

TEST_F(ConfigXmlProcessingTest, ANameInOtherLettersOrInPartIsUnknown) {
  for (const std::wstring name : {L"name", L"NAME", L"Nam", L"Name "}) {
    EXPECT_FALSE(plain_.SetText(name, record_, L"x", message_));
    EXPECT_EQ(message_, L"unknown name '" + name + L"'");
  }
  EXPECT_EQ(record_.name, L"unset");
}

// Texts

TEST_F(ConfigXmlProcessingTest, StoresATextUnchanged) {
  const std::wstring text = L" a'\"~\n\u20ac\U0001F4A1 ";
  EXPECT_TRUE(plain_.SetText(L"Name", record_, text, message_));
  EXPECT_EQ(record_.name, text);
  EXPECT_EQ(message_, L"");
  EXPECT_TRUE(plain_.SetText(L"Name", record_, L"", message_));
  EXPECT_EQ(record_.name, L"");
}

TEST_F(ConfigXmlProcessingTest, StoresTheFirstUnitOfATextAsCharacter) {
  EXPECT_TRUE(plain_.SetText(L"Letter", record_, L"manual", message_));
  EXPECT_EQ(record_.letter, L'm');
  EXPECT_TRUE(plain_.SetText(L"Letter", record_, L"\U0001F4A1", message_));
  EXPECT_EQ(static_cast<uint32_t>(record_.letter), 0xD83Du);
  EXPECT_TRUE(plain_.SetText(L"Letter", record_, L"", message_));
  EXPECT_EQ(record_.letter, L'\0');
}

// Integers

TEST_F(ConfigXmlProcessingTest, StoresANumberInAsManyBitsAsTheColumnHas) {
  for (const wchar_t* name : {L"Id", L"Parent", L"Number", L"Big", L"Small"}) {
    EXPECT_TRUE(plain_.SetInteger(name, record_, L"-2", message_)) << ToUtf8(name);
    EXPECT_EQ(message_, L"");
  }
  EXPECT_EQ(record_.id, -2);
  EXPECT_EQ(record_.parent, -2);
  EXPECT_EQ(record_.number, (Enclosed<int32_t>{-1, -2, -1}));
  EXPECT_EQ(record_.big, (Enclosed<int64_t>{-1, -2, -1}));
  EXPECT_EQ(record_.small, (Enclosed<uint16_t>{99, 65534, 99}));
  EXPECT_TRUE(plain_.SetInteger(L"Small", record_, L"70000", message_));
  EXPECT_EQ(record_.small, (Enclosed<uint16_t>{99, 4464, 99}));
}

TEST_F(ConfigXmlProcessingTest, TakesAnEmptyTextForZero) {
  EXPECT_TRUE(plain_.SetInteger(L"Number", record_, L"", message_));
  EXPECT_EQ(record_.number.value, 0);
}

TEST_F(ConfigXmlProcessingTest, ReadsTheNumberAtTheStart) {
  const std::pair<const wchar_t*, int32_t> numbers[] = {{L" \t\n7", 7},
                                                        {L"+12 apples", 12},
                                                        {L"-3.9", -3},
                                                        {L"0x10", 0},
                                                        {L"010", 10},
                                                        {L"1 2", 1},
                                                        {L"2147483647", INT32_MAX},
                                                        {L"-2147483648", INT32_MIN}};
  for (const auto& [text, number] : numbers) {
    EXPECT_TRUE(plain_.SetInteger(L"Number", record_, text, message_)) << ToUtf8(text);
    EXPECT_EQ(record_.number.value, number) << ToUtf8(text);
  }
}

TEST_F(ConfigXmlProcessingTest, RaisesTheStandardErrorForWhatIsNoNumberOf32Bits) {
  for (const wchar_t* text : {L" ", L"abc", L"-", L"+-1", L"- 1", L".5"}) {
    EXPECT_THROW(plain_.SetInteger(L"Number", record_, text, message_), std::invalid_argument) << ToUtf8(text);
  }
  for (const wchar_t* text : {L"2147483648", L"-2147483649", L"99999999999999999999999"}) {
    EXPECT_THROW(plain_.SetInteger(L"Big", record_, text, message_), std::out_of_range) << ToUtf8(text);
  }
  EXPECT_EQ(record_.number.value, -1);
  EXPECT_EQ(record_.big.value, -1);
}

TEST_F(ConfigXmlProcessingTest, RefusesANumberBeyondTheLimitsWithoutAMessage) {
  for (const wchar_t* text : {L"9", L"16", L"", L"-2147483648", L"2147483647"}) {
    message_ = L"from before";
    EXPECT_FALSE(limited_.SetInteger(L"Number", record_, text, message_)) << ToUtf8(text);
    EXPECT_EQ(message_, L"");
  }
  EXPECT_EQ(record_.number.value, -1);
  EXPECT_TRUE(limited_.SetInteger(L"Number", record_, L"10", message_));
  EXPECT_TRUE(limited_.SetInteger(L"Number", record_, L"15", message_));
  EXPECT_EQ(record_.number.value, 15);
  EXPECT_TRUE(limited_.SetInteger(L"Big", record_, L"-20", message_)) << "other names have other limits";
}

// Flags

TEST_F(ConfigXmlProcessingTest, StoresTrueForItsWordsOnly) {
  for (const wchar_t* word : {L"true", L"YES", L"y", L"T"}) {
    record_.flag.value = false;
    EXPECT_TRUE(plain_.SetBoolean(L"Flag", record_, word, message_));
    EXPECT_EQ(record_.flag, (Enclosed<bool>{true, true, true})) << ToUtf8(word);
  }
  for (const wchar_t* word : {L"", L"1", L"on", L"false", L" true"}) {
    record_.flag.value = true;
    EXPECT_TRUE(plain_.SetBoolean(L"Flag", record_, word, message_));
    EXPECT_EQ(record_.flag, (Enclosed<bool>{true, false, true})) << ToUtf8(word);
  }
  EXPECT_EQ(message_, L"");
}

// Enumerations

TEST_F(ConfigXmlProcessingTest, MatchesAWordInAnyLetters) {
  for (const wchar_t* word : {L"LOCALSTORE", L"localstore", L"LocalStore"}) {
    record_.number.value = -1;
    EXPECT_TRUE(limited_.SetEnumeration(L"Number", record_, word, message_));
    EXPECT_EQ(record_.number.value, 1);
    EXPECT_EQ(message_, L"");
  }
}

TEST_F(ConfigXmlProcessingTest, StoresAWordsNumberInAsManyBitsAsTheColumnHas) {
  EXPECT_TRUE(limited_.SetEnumeration(L"Big", record_, L"Below", message_));
  EXPECT_TRUE(limited_.SetEnumeration(L"Small", record_, L"Below", message_));
  EXPECT_TRUE(limited_.SetEnumeration(L"Parent", record_, L"Below", message_));
  EXPECT_EQ(record_.big, (Enclosed<int64_t>{-1, -7, -1}));
  EXPECT_EQ(record_.small, (Enclosed<uint16_t>{99, 65529, 99}));
  EXPECT_EQ(record_.parent, -7);
}

TEST_F(ConfigXmlProcessingTest, ListsTheWordsForAWrongOne) {
  for (const std::wstring value : {L"Local Store", L"", L"1", L"LocalStore "}) {
    EXPECT_FALSE(limited_.SetEnumeration(L"Number", record_, value, message_));
    EXPECT_EQ(message_,
              L"unknown value '" + value + L"' here are the valid values below, LocalStore, None, SmartCardOnly");
  }
  EXPECT_EQ(record_.number.value, -1);
}

TEST_F(ConfigXmlProcessingTest, ListsNothingWhereThereAreNoWords) {
  EXPECT_FALSE(plain_.SetEnumeration(L"Number", record_, L"None", message_));
  EXPECT_EQ(message_, L"unknown value 'None' here are the valid values ");
}

TEST(EnumerationWords, AreOrderedAndEqualWithoutRegardToCase) {
  const EnumerationWords words = {{L"b", 1}, {L"A", 2}, {L"C", 3}, {L"B", 4}, {L"", 5}, {L"ab", 6}};
  EXPECT_THAT(words, ElementsAre(Pair(L"", 5), Pair(L"A", 2), Pair(L"ab", 6), Pair(L"b", 1), Pair(L"C", 3)));
}

// The wrong setter

TEST_F(ConfigXmlProcessingTest, ASetterTakesOnlyColumnsOfItsClass) {
  int stored = 0;
  for (const std::wstring& name : kColumns) {
    for (const wchar_t* value : {L"15", L"None"}) {
      stored += limited_.SetText(name, record_, value, message_);
      if (*value == L'1') stored += limited_.SetInteger(name, record_, value, message_);
      stored += limited_.SetBoolean(name, record_, value, message_);
      stored += name != L"Id" && limited_.SetEnumeration(name, record_, value, message_);
    }
  }
  EXPECT_EQ(stored, 2 * 2 + 5 + 2 + 4) << "texts, integers, flags, words";
  EXPECT_EQ(record_.bytes, "unset");
  EXPECT_FALSE(plain_.SetText(L"Bytes", record_, L"x", message_));
  EXPECT_EQ(message_, L"");
}
