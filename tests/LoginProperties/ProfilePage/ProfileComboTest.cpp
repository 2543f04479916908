#include "LoginProperties/ProfilePage/ProfileCombo.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <windowsx.h>

#include <algorithm>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class ProfileComboTest : public testing::Test {
 protected:
  ProfileComboTest() {
    SetWindowSubclass(combo_, CountFillings, 1, reinterpret_cast<DWORD_PTR>(&fillings_));
    selector_.Attach(combo_);
  }
  ~ProfileComboTest() override { DestroyWindow(page_); }

  static LRESULT CALLBACK CountFillings(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter,
                                        UINT_PTR /*id*/, DWORD_PTR fillings) {
    if (message == CB_RESETCONTENT) ++*reinterpret_cast<int*>(fillings);
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

  int fillings_ = 0;
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

TEST_F(ProfileComboTest, IsFilledOnlyWhenItsListIsNoLongerRight) {
  const auto home = Add(2001, L"Home");
  const auto work = Add(2002, L"Work");
  Show(work);
  EXPECT_EQ(fillings_, 1);
  Show(home);
  work->SetState(ChangeState::Changed);
  Add(1, L"Root");
  Show(work);
  EXPECT_EQ(fillings_, 1);

  work->SetName(L"At work");
  Show(work);
  EXPECT_EQ(fillings_, 2);
  EXPECT_THAT(Items(), ElementsAre(Pair(L"At work", 2002), Pair(L"Home", 2001)));
  EXPECT_EQ(SelectedId(), 2002);

  home->SetHidden(true);
  Show(work);
  EXPECT_EQ(fillings_, 3);
  EXPECT_THAT(Items(), ElementsAre(Pair(L"At work", 2002)));

  Add(2003, L"New");
  Show(work);
  EXPECT_EQ(fillings_, 4);
  EXPECT_THAT(Items(), ElementsAre(Pair(L"At work", 2002), Pair(L"New", 2003)));

  profiles_.clear();
  Show(work);
  EXPECT_EQ(fillings_, 5);
  EXPECT_THAT(Items(), IsEmpty());
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

TEST_F(ProfileComboTest, DrawsNothingWhileItIsFilled) {
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
  EXPECT_THAT(redraws, ElementsAre(false, true)) << "nothing was filled";
}

}  // namespace
