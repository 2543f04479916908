#include "LoginProperties/ProfilePage/SortedListOrder.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <windowsx.h>

#include <random>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A combo box that sorts what is added to it, as the templates of the pages have it.
class SortedCombo {
 public:
  SortedCombo() = default;
  ~SortedCombo() { DestroyWindow(page_); }
  SortedCombo(const SortedCombo&) = delete;
  SortedCombo& operator=(const SortedCombo&) = delete;

  LCID Locale() const { return static_cast<LCID>(SendMessageW(window_, CB_GETLOCALE, 0, 0)); }

  void Add(const std::wstring& name) const { ComboBox_AddString(window_, name.c_str()); }

  std::vector<std::wstring> Items() const {
    std::vector<std::wstring> items;
    for (int index = 0; index < ComboBox_GetCount(window_); ++index) {
      std::wstring text(static_cast<size_t>(ComboBox_GetLBTextLen(window_, index)) + 1, L'\0');
      text.resize(static_cast<size_t>(ComboBox_GetLBText(window_, index, text.data())));
      items.push_back(std::move(text));
    }
    return items;
  }

 private:
  HWND page_ = CreateWindowExW(0, WC_STATICW, L"", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
  HWND window_ = CreateWindowExW(0, WC_COMBOBOXW, L"", WS_CHILD | CBS_DROPDOWNLIST | CBS_SORT, 0, 0, 100, 100, page_,
                                 nullptr, nullptr, nullptr);
};

// The names in the order in which a sorted combo box shows them when they are added to it one by one.
std::vector<std::wstring> AsComboSorts(const std::vector<std::wstring>& names) {
  const SortedCombo combo;
  for (const std::wstring& name : names) combo.Add(name);
  return combo.Items();
}

std::vector<std::wstring> AsOrderSorts(const std::vector<std::wstring>& names) {
  std::vector<std::wstring> sorted;
  for (const size_t place : SortedListOrder(names, SortedCombo().Locale())) sorted.push_back(names[place]);
  return sorted;
}

// The order among names that differ only in what the list does not regard depends on how the combo box searches.
void ExpectSameOrder(const std::vector<std::wstring>& names) {
  const LCID locale = SortedCombo().Locale();
  const auto sorted = AsOrderSorts(names);
  const auto expected = AsComboSorts(names);
  ASSERT_EQ(sorted.size(), expected.size());
  for (size_t place = 0; place < sorted.size(); ++place) {
    ASSERT_EQ(CompareStringW(locale, NORM_IGNORECASE, sorted[place].c_str(), -1, expected[place].c_str(), -1),
              CSTR_EQUAL)
        << "item " << place << " is " << testing::PrintToString(sorted[place]) << " instead of "
        << testing::PrintToString(expected[place]);
  }
}

}  // namespace

TEST(SortedListOrder, IsThatOfASortedComboBox) {
  ExpectSameOrder({L"Work",       L"work 2", L"WORK",   L"Work 10",
                   L"Work 9",     L"Work",   L"Zürich", L"Zurich",
                   L"zug",        L"Äpfel",  L"Apfel",  L"apfel",
                   L"ärger",      L"Öl",     L"Oel",    L"Straße",
                   L"Strasse",    L"Strand", L"10",     L"9",
                   L"1",          L"01",     L"a",      L"B",
                   L"b",          L"A",      L" space", L"-dash",
                   L"da-sh",      L"dash",   L"d'ash",  L"(x)",
                   L"_",          L"é",      L"e",      L"É",
                   L"Ωmega",      L"Жук",    L"日本",   L"co-op",
                   L"coop",       L"co op",  L"x\ty",   L"\x0130stanbul",
                   L"ımpossible", L"ﬁle",    L"file",   L"\xd83d\xde00"});
}

TEST(SortedListOrder, IsThatOfASortedComboBoxForAnyNames) {
  constexpr unsigned kSeed = 7;
  constexpr size_t kNames = 2000;
  const std::wstring characters = L"aAbBzZ019 -_'.,()/äÄöüßéèñçœŁłØåΩж日\u0301";
  std::mt19937 random(kSeed);
  std::vector<std::wstring> names;
  for (size_t count = 0; count < kNames; ++count) {
    std::wstring name;
    for (unsigned length = 1 + random() % 6; length > 0; --length) name += characters[random() % characters.size()];
    names.push_back(std::move(name));
  }
  ExpectSameOrder(names);
}

TEST(SortedListOrder, LeavesNamesThatDifferOnlyInCaseAsTheyCome) {
  const LCID locale = SortedCombo().Locale();
  EXPECT_THAT(SortedListOrder({L"work", L"Home", L"Work", L"WORK", L"home", L"work"}, locale),
              ElementsAre(1, 4, 0, 2, 3, 5));
}

TEST(SortedListOrder, OfNothingIsEmpty) { EXPECT_THAT(SortedListOrder({}, SortedCombo().Locale()), IsEmpty()); }

TEST(SortedListOrder, HoldsForNamesOfAnyLength) {
  const std::wstring longName(3000, L'm');
  EXPECT_EQ(AsOrderSorts({longName + L"2", L"n", longName + L"1", L"l"}),
            (std::vector<std::wstring>{L"l", longName + L"1", longName + L"2", L"n"}));
}
