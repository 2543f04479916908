#include "LoginProperties/Proxy/ProxyEntries.h"

#include <gmock/gmock.h>

#include <initializer_list>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

ProxyEntries Loaded(const std::wstring& text) {
  ProxyEntries entries;
  entries.Load(text);
  return entries;
}

ProxyEntry Entry(const wchar_t* address, const wchar_t* port = L"") { return {address, port}; }

TEST(ProxyEntries, AreLoadedInOrderAndJoinedToTheSameText) {
  const ProxyEntries entries = Loaded(L"proxy1:8080;proxy2:3128");
  EXPECT_THAT(entries.All(), ElementsAre(Entry(L"proxy1", L"8080"), Entry(L"proxy2", L"3128")));
  EXPECT_EQ(entries.Joined(), L"proxy1:8080;proxy2:3128");
}

TEST(ProxyEntries, NeedNoPort) {
  const ProxyEntries entries = Loaded(L"host;proxy:80;other");
  EXPECT_THAT(entries.All(), ElementsAre(Entry(L"host"), Entry(L"proxy", L"80"), Entry(L"other")));
  EXPECT_EQ(entries.Joined(), L"host;proxy:80;other");
}

TEST(ProxyEntries, KeepTheirBlanks) {
  const ProxyEntries entries = Loaded(L"proxy1 : 8080; ;a b");
  EXPECT_THAT(entries.All(), ElementsAre(Entry(L"proxy1 ", L" 8080"), Entry(L" "), Entry(L"a b")));
  EXPECT_EQ(entries.Joined(), L"proxy1 : 8080; ;a b");
}

TEST(ProxyEntries, LeaveOutWhatIsEmpty) {
  EXPECT_THAT(Loaded(L";;host;").All(), ElementsAre(Entry(L"host")));
  EXPECT_EQ(Loaded(L";;host;").Joined(), L"host");
  for (const wchar_t* nothing : {L"", L";", L";;;", L":", L"::;:"}) {
    EXPECT_THAT(Loaded(nothing).All(), IsEmpty()) << testing::PrintToString(nothing);
    EXPECT_EQ(Loaded(nothing).Joined(), L"");
  }
}

TEST(ProxyEntries, DropThePartsBetweenTheFirstAndTheLast) {
  EXPECT_THAT(Loaded(L"a:b:c").All(), ElementsAre(Entry(L"a", L"c")));
  EXPECT_THAT(Loaded(L"http://proxy:8080").All(), ElementsAre(Entry(L"http", L"8080")));
  EXPECT_THAT(Loaded(L"2001:db8::53").All(), ElementsAre(Entry(L"2001", L"53")));
  EXPECT_EQ(Loaded(L"a:b:c").Joined(), L"a:c");
}

TEST(ProxyEntries, HaveTheFirstPartThatIsNotEmptyAsAddress) {
  EXPECT_THAT(Loaded(L":8080").All(), ElementsAre(Entry(L"8080")));
  EXPECT_THAT(Loaded(L"host:").All(), ElementsAre(Entry(L"host")));
  EXPECT_THAT(Loaded(L"::host::80::").All(), ElementsAre(Entry(L"host", L"80")));
}

TEST(ProxyEntries, LoadedAgainTakeThePlaceOfTheFormerOnes) {
  ProxyEntries entries = Loaded(L"a;b");
  entries.Load(L"c");
  EXPECT_THAT(entries.All(), ElementsAre(Entry(L"c")));
}

TEST(ProxyEntries, AreAddedAtTheEndAlsoTwice) {
  ProxyEntries entries = Loaded(L"b");
  entries.Add(Entry(L"a", L"1"));
  entries.Add(Entry(L"a", L"1"));
  EXPECT_EQ(entries.Joined(), L"b;a:1;a:1");
}

TEST(ProxyEntries, ChangeTheFirstThatIsEqual) {
  ProxyEntries entries = Loaded(L"x;a:1;a:2;a:1");
  entries.ChangeFirstLike(3, Entry(L"new", L"9"));
  EXPECT_EQ(entries.Joined(), L"x;new:9;a:2;a:1");
  entries.ChangeFirstLike(3, Entry(L"last"));
  EXPECT_EQ(entries.Joined(), L"x;new:9;a:2;last");
}

TEST(ProxyEntries, DeleteTheFirstThatIsEqual) {
  ProxyEntries entries = Loaded(L"a;b;a;c");
  entries.DeleteFirstLike(2);
  EXPECT_EQ(entries.Joined(), L"b;a;c");
  entries.DeleteFirstLike(2);
  EXPECT_EQ(entries.Joined(), L"b;a");
}

TEST(ProxyEntries, AreEqualOnlyWithTheSameCaseAndPort) {
  ProxyEntries entries = Loaded(L"Host;host:80;host;HOST");
  entries.ChangeFirstLike(2, Entry(L"new"));
  EXPECT_EQ(entries.Joined(), L"Host;host:80;new;HOST");
  entries.DeleteFirstLike(3);
  EXPECT_EQ(entries.Joined(), L"Host;host:80;new");
}

TEST(ProxyEntries, StayAsTheyAreForARowThatIsNotThere) {
  ProxyEntries entries = Loaded(L"a;b");
  entries.ChangeFirstLike(2, Entry(L"new"));
  entries.DeleteFirstLike(2);
  EXPECT_EQ(entries.Joined(), L"a;b");
  ProxyEntries none;
  none.ChangeFirstLike(0, Entry(L"new"));
  none.DeleteFirstLike(0);
  EXPECT_THAT(none.All(), IsEmpty());
}

}  // namespace
