#include "LoginProperties/ProfilePage/ProfileCombo.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <windowsx.h>

#include <random>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// What was done to the items.
struct Changes {
  int added = 0;
  int removed = 0;

  bool operator==(const Changes&) const = default;
};

void PrintTo(const Changes& changes, std::ostream* stream) {
  *stream << changes.added << " added, " << changes.removed << " removed";
}

class ProfileComboTest : public testing::Test {
 protected:
  ProfileComboTest() {
    SetWindowSubclass(combo_, NoteChanges, 1, reinterpret_cast<DWORD_PTR>(&changes_));
    selector_.Attach(combo_);
  }
  ~ProfileComboTest() override { DestroyWindow(page_); }

  static LRESULT CALLBACK NoteChanges(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter,
                                      UINT_PTR /*id*/, DWORD_PTR notes) {
    auto& changes = *reinterpret_cast<Changes*>(notes);
    if (message == CB_INSERTSTRING || message == CB_ADDSTRING) ++changes.added;
    if (message == CB_DELETESTRING || message == CB_RESETCONTENT) ++changes.removed;
    return DefSubclassProc(window, message, wordParameter, longParameter);
  }

  std::shared_ptr<Profile> Add(uint32_t id, const std::wstring& name) {
    auto profile = std::make_shared<Profile>(id);
    profile->SetName(name);
    profiles_[id] = profile;
    return profile;
  }

  void Show(const std::shared_ptr<Profile>& current = nullptr) { selector_.Show(profiles_, current); }

  // Names and ids of the items, in order.
  std::vector<std::pair<std::wstring, LRESULT>> Items() const {
    std::vector<std::pair<std::wstring, LRESULT>> items;
    for (int index = 0; index < ComboBox_GetCount(combo_); ++index) {
      wchar_t text[64] = {};
      ComboBox_GetLBText(combo_, index, text);
      items.emplace_back(text, ComboBox_GetItemData(combo_, index));
    }
    return items;
  }

  // The id of the selected item, CB_ERR when there is none.
  LRESULT SelectedId() const {
    const int index = ComboBox_GetCurSel(combo_);
    return index == CB_ERR ? CB_ERR : ComboBox_GetItemData(combo_, index);
  }

  Changes changes_;
  HWND page_ =
      CreateWindowExW(0, WC_STATICW, L"", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
  HWND combo_ = CreateWindowExW(0, WC_COMBOBOXW, L"", WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST | CBS_SORT, 0, 0, 100,
                                100, page_, nullptr, nullptr, nullptr);
  ProfileCombo selector_;
  ProfileTable profiles_;
};

TEST_F(ProfileComboTest, ListsProfilesByNameAndEqualNamesByAscendingId) {
  Add(2001, L"work");
  Add(2002, L"Home");
  Add(2003, L"Work");
  Add(2004, L"Archive");
  Add(2005, L"work");
  Show();
  EXPECT_THAT(Items(), ElementsAre(Pair(L"Archive", 2004), Pair(L"Home", 2002), Pair(L"work", 2001),
                                   Pair(L"Work", 2003), Pair(L"work", 2005)));
}

TEST_F(ProfileComboTest, SelectsTheCurrentProfileAmongEqualNames) {
  for (const uint32_t id : {2001u, 2002u, 2003u}) Add(id, L"Work");
  for (const uint32_t id : {2002u, 2003u, 2001u}) {
    Show(profiles_[id]);
    EXPECT_EQ(SelectedId(), id);
  }
}

TEST_F(ProfileComboTest, SelectsTheCurrentProfileAmongNamesThatBeginAlike) {
  Add(2001, L"Work 2");
  Add(2002, L"work");
  Add(2003, L"Wo");
  Add(2004, L"Work-shop");
  for (const uint32_t id : {2001u, 2002u, 2003u, 2004u}) {
    Show(profiles_[id]);
    EXPECT_EQ(SelectedId(), id);
  }
}

TEST_F(ProfileComboTest, SelectsNothingForAProfileThatIsNotListedThoughItsNameIs) {
  Add(2001, L"Work");
  const auto hidden = Add(2002, L"Work");
  hidden->SetHidden(true);
  const auto root = Add(1, L"Wo");
  Show(profiles_[2001]);
  for (const auto& current : {hidden, root}) {
    Show(current);
    EXPECT_EQ(SelectedId(), CB_ERR);
    Show(profiles_[2001]);
    EXPECT_EQ(SelectedId(), 2001);
  }
}

TEST_F(ProfileComboTest, SelectsNothingWithoutACurrentProfile) {
  const auto work = Add(2001, L"Work");
  Show(work);
  Show(nullptr);
  EXPECT_EQ(SelectedId(), CB_ERR);
}

TEST_F(ProfileComboTest, SelectsTheCurrentProfileAgainAfterAnotherChoice) {
  Add(2001, L"Home");
  const auto work = Add(2002, L"Work");
  Show(work);
  ComboBox_SetCurSel(combo_, 0);
  Show(work);
  EXPECT_EQ(SelectedId(), 2002);
}

TEST_F(ProfileComboTest, ChangesOnlyWhatIsNoLongerRight) {
  const auto home = Add(2001, L"Home");
  const auto work = Add(2002, L"Work");
  Add(2003, L"Office");
  // What showing them does to the items.
  const auto changesOfShowing = [&] {
    changes_ = {};
    Show(work);
    return changes_;
  };
  EXPECT_EQ(changesOfShowing(), (Changes{3, 0}));
  EXPECT_EQ(changesOfShowing(), Changes{});
  Show(home);
  work->SetState(ChangeState::Changed);
  Add(1, L"Root");
  EXPECT_EQ(changesOfShowing(), Changes{});

  work->SetName(L"At work");
  EXPECT_EQ(changesOfShowing(), (Changes{1, 1}));
  EXPECT_THAT(Items(), ElementsAre(Pair(L"At work", 2002), Pair(L"Home", 2001), Pair(L"Office", 2003)));
  EXPECT_EQ(SelectedId(), 2002);

  home->SetHidden(true);
  EXPECT_EQ(changesOfShowing(), (Changes{0, 1}));
  EXPECT_THAT(Items(), ElementsAre(Pair(L"At work", 2002), Pair(L"Office", 2003)));
  EXPECT_EQ(SelectedId(), 2002);

  Add(2004, L"New");
  EXPECT_EQ(changesOfShowing(), (Changes{1, 0}));
  EXPECT_THAT(Items(), ElementsAre(Pair(L"At work", 2002), Pair(L"New", 2004), Pair(L"Office", 2003)));

  profiles_.clear();
  EXPECT_EQ(changesOfShowing(), (Changes{0, 3}));
  EXPECT_THAT(Items(), IsEmpty());
}

// Whatever becomes of the profiles, the list is what it would be in an empty combo box.
TEST_F(ProfileComboTest, ListsTheSameWhateverItListedBefore) {
  constexpr unsigned kSeed = 11;
  constexpr int kRounds = 200;
  constexpr uint32_t kProfiles = 12;
  std::mt19937 random(kSeed);
  const auto nameOf = [&] { return std::wstring(1, L"abAB"[random() % 4]) + (random() % 2 == 0 ? L"x" : L""); };
  for (int round = 0; round < kRounds; ++round) {
    for (unsigned edits = random() % 5; edits > 0; --edits) {
      const uint32_t id = 2001 + random() % kProfiles;
      Add(id, nameOf())->SetHidden(random() % 3 == 0);
      if (random() % 5 == 0) profiles_.erase(id);
    }
    const auto current = FindProfile(profiles_, 2001 + random() % kProfiles);
    Show(current);
    const auto items = Items();
    const LRESULT selected = SelectedId();

    ComboBox_ResetContent(combo_);
    selector_.Attach(combo_);
    Show(current);
    ASSERT_EQ(items, Items()) << "in round " << round;
    ASSERT_EQ(selected, SelectedId()) << "in round " << round;
    ASSERT_EQ(selected, current && !current->GetHidden() ? static_cast<LRESULT>(current->GetProfileId()) : CB_ERR);
  }
}

TEST_F(ProfileComboTest, IsFilledAnewInAnotherWindow) {
  const auto work = Add(2001, L"Work");
  Show(work);
  ComboBox_ResetContent(combo_);
  selector_.Attach(combo_);
  Show(work);
  EXPECT_THAT(Items(), ElementsAre(Pair(L"Work", 2001)));
  EXPECT_EQ(SelectedId(), 2001);
}

TEST_F(ProfileComboTest, DrawsNothingWhileItsItemsChange) {
  std::vector<bool> redraws;
  SetWindowSubclass(
      combo_,
      [](HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter, UINT_PTR, DWORD_PTR notes) -> LRESULT {
        if (message == WM_SETREDRAW) reinterpret_cast<std::vector<bool>*>(notes)->push_back(wordParameter != FALSE);
        return DefSubclassProc(window, message, wordParameter, longParameter);
      },
      2, reinterpret_cast<DWORD_PTR>(&redraws));
  const auto work = Add(2001, L"Work");
  Show(work);
  EXPECT_THAT(redraws, ElementsAre(false, true));
  Show(work);
  EXPECT_THAT(redraws, ElementsAre(false, true)) << "nothing has changed";
}

}  // namespace
