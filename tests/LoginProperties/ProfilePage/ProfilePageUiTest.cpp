// What all pages have in common: the selector, the override box, the administrator's policy.

#include <gmock/gmock.h>

#include <chrono>
#include <stop_token>
#include <thread>

#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/OverridePolicy.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Proxy/ProxyControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/TestContext.h"

using testing::ElementsAre;

namespace {

constexpr std::array<const wchar_t*, 6> kTabs = {L"General", L"Preferences", L"Autostart",
                                                 L"Proxy",   L"Timeouts",    L"Wi-Fi Switching"};

// The pages that a policy resets, and how.
struct PolicyPage {
  const wchar_t* tab;
  const wchar_t* policy;
  bool (Profile::*followsDefaults)() const;
  void (Profile::*setFollowsDefaults)(bool);
};
const std::array<PolicyPage, 4> kPolicyPages = {{
    {L"Preferences", L"Preference", &Profile::GetDefaultPreferences, &Profile::SetDefaultPreferences},
    {L"Proxy", L"Proxy", &Profile::GetDefaultProxy, &Profile::SetDefaultProxy},
    {L"Autostart", L"AutoStart", &Profile::GetDefaultAutostart, &Profile::SetDefaultAutostart},
    {L"Timeouts", L"Timeouts", &Profile::GetDefaultTimeouts, &Profile::SetDefaultTimeouts},
}};

// The administrator's policy for a page while this object lives.
class Policy {
 public:
  Policy(const wchar_t* page, DWORD disableOverride) : key_(HKEY_LOCAL_MACHINE, PolicyKeyOf(page)) {
    key_.SetDword(kDisableOverrideValue, disableOverride);
  }

 private:
  TestRegistryKey key_;
};

// Keys that are held down while this object lives. As those of a keyboard they repeat: while the screen hands the
// keyboard over, it sets all keys to what they really are.
class HeldKeys {
 public:
  explicit HeldKeys(std::vector<WORD> keys)
      : keys_(std::move(keys)), repeating_([this](const std::stop_token& end) {
          while (!end.stop_requested()) {
            Send(0);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
          }
        }) {}
  ~HeldKeys() {
    repeating_.request_stop();
    repeating_.join();
    Send(KEYEVENTF_KEYUP);
  }
  HeldKeys(const HeldKeys&) = delete;
  HeldKeys& operator=(const HeldKeys&) = delete;

 private:
  void Send(DWORD flags) const {
    for (const WORD key : keys_) {
      INPUT input{};
      input.type = INPUT_KEYBOARD;
      input.ki.wVk = key;
      input.ki.dwFlags = flags;
      SendInput(1, &input, sizeof(input));
    }
  }

  std::vector<WORD> keys_;
  std::jthread repeating_;
};

bool IsKeyDown(int key) { return (GetAsyncKeyState(key) & 0x8000) != 0; }

// The controls behind the override box in the tab order, without those of the page Proxy that can always be read.
std::vector<HWND> GovernedControls(const SheetDriver& sheet) {
  std::vector<HWND> controls;
  HWND control = sheet.Control(IDC_OVERRIDE_CHECK);
  while ((control = GetWindow(control, GW_HWNDNEXT)) != nullptr) controls.push_back(control);
  if (sheet.CurrentTab() != L"Proxy") return controls;
  std::erase(controls, sheet.Control(IDC_PROXY_EXPLANATION));
  std::erase(controls, sheet.Control(IDC_PROXY_SETTING_GROUP));
  return controls;
}

}  // namespace

TEST(ProfileSelector, ListsLoginProfilesByName) {
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  for (const wchar_t* tab : kTabs) {
    sheet.SelectTab(tab);
    EXPECT_THAT(sheet.Items(IDC_PROFILE_COMBO), ElementsAre(L"Home", L"Work", L"Work 2")) << tab;
    EXPECT_EQ(sheet.Selected(IDC_PROFILE_COMBO), L"Work") << tab;
  }
}

TEST(ProfileSelector, ShowsTheFirstIdAboveTheRoots) {
  LoginPropertiesContext context = MakeContext();
  context.profiles[2000] = std::make_shared<Profile>(2000);
  context.profiles[2000]->SetName(L"Custom root");
  const SheetDriver sheet(context);
  EXPECT_THAT(sheet.Items(IDC_PROFILE_COMBO), ElementsAre(L"Home", L"Work", L"Work 2"));
}

// By its id: profiles may have one name, or names that begin alike.
TEST(ProfileSelector, SelectsTheCurrentProfileWhateverOthersAreCalled) {
  constexpr uint32_t kNamesake = 2006;
  constexpr uint32_t kPrefix = 2007;
  LoginPropertiesContext context = MakeContext();
  for (const auto& [id, name] : {std::pair{kNamesake, L"Work"}, std::pair{kPrefix, L"wo"}}) {
    context.profiles[id] = std::make_shared<Profile>(id);
    context.profiles[id]->SetName(name);
  }
  for (const uint32_t id : {kWork, kWork2, kNamesake, kPrefix}) {
    context.currentProfile = context.profiles[id];
    SheetDriver sheet(context);
    for (const wchar_t* tab : kTabs) {
      sheet.SelectTab(tab);
      EXPECT_THAT(sheet.Items(IDC_PROFILE_COMBO), ElementsAre(L"Home", L"wo", L"Work", L"Work", L"Work 2")) << tab;
      EXPECT_EQ(sheet.SelectedValue(IDC_PROFILE_COMBO), id) << tab;
    }
  }
}

TEST(ProfileSelector, SelectsNothingForAProfileThatIsNotListed) {
  for (const uint32_t id : {kHidden, kRoot}) {
    LoginPropertiesContext context = MakeContext();
    // Listed profiles have its name, or begin with it.
    context.profiles[id]->SetName(id == kRoot ? L"Work" : L"Wo");
    context.currentProfile = context.profiles[id];
    SheetDriver sheet(context);
    for (const wchar_t* tab : kTabs) {
      sheet.SelectTab(tab);
      EXPECT_EQ(sheet.Selected(IDC_PROFILE_COMBO), std::nullopt) << tab;
    }
    sheet.PressOk();
    EXPECT_EQ(sheet.Result(), kSheetConfirmed);
    EXPECT_EQ(context.currentProfile->GetProfileId(), id);
  }
}

TEST(ProfileSelector, WorksWithoutACurrentProfile) {
  LoginPropertiesContext context = MakeContext();
  context.currentProfile = nullptr;
  SheetDriver sheet(context);
  for (const wchar_t* tab : kTabs) {
    sheet.SelectTab(tab);
    EXPECT_EQ(sheet.CurrentTab(), tab);
    EXPECT_EQ(sheet.Selected(IDC_PROFILE_COMBO), std::nullopt) << tab;
  }
  sheet.SelectTab(L"Timeouts");
  sheet.Pick(IDC_PROFILE_COMBO, L"Home");
  sheet.PressOk();
  EXPECT_EQ(sheet.Result(), kSheetConfirmed);
  EXPECT_EQ(context.currentProfile, context.profiles[kHome]);
}

TEST(ProfileSelector, IsSharedByAllPages) {
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  sheet.SelectTab(L"Timeouts");
  sheet.Pick(IDC_PROFILE_COMBO, L"Home");
  for (const wchar_t* tab : kTabs) {
    sheet.SelectTab(tab);
    EXPECT_EQ(sheet.Selected(IDC_PROFILE_COMBO), L"Home") << tab;
  }
}

TEST(ProfileSelector, TakesAProfileByItsFirstLetter) {
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  sheet.SelectTab(L"Timeouts");
  sheet.Focus(IDC_PROFILE_COMBO);
  EXPECT_TRUE(sheet.PressKeyUntil([&sheet] { return sheet.Selected(IDC_PROFILE_COMBO) == L"Home"; }, 'H'));
  sheet.SelectTab(L"General");
  EXPECT_EQ(sheet.Selected(IDC_PROFILE_COMBO), L"Home");
}

TEST(ProfileSelector, KeepsTheCurrentProfileWhenTheChosenOneIsGone) {
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  // The item's value leads nowhere, as if its profile had left the table.
  const HWND combo = sheet.Control(IDC_PROFILE_COMBO);
  SendMessageW(combo, CB_SETITEMDATA, 0, 4711);
  sheet.Pick(IDC_PROFILE_COMBO, L"Home");
  EXPECT_EQ(sheet.Selected(IDC_PROFILE_COMBO), L"Work");
  sheet.PressOk();
  EXPECT_EQ(sheet.Result(), kSheetConfirmed);
  EXPECT_EQ(context.currentProfile, context.profiles[kWork]);
}

// On the page Wi-Fi Switching it governs only some of what follows it.
TEST(OverrideBox, EnablesWhatFollowsIt) {
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  for (const wchar_t* tab : {L"Preferences", L"Autostart", L"Proxy", L"Timeouts"}) {
    sheet.SelectTab(tab);
    ASSERT_FALSE(GovernedControls(sheet).empty());
    EXPECT_FALSE(sheet.IsChecked(IDC_OVERRIDE_CHECK)) << tab;
    for (const HWND control : GovernedControls(sheet)) EXPECT_FALSE(IsWindowEnabled(control)) << tab;
    EXPECT_TRUE(sheet.IsEnabled(IDC_PROFILE_COMBO)) << tab;

    sheet.Click(IDC_OVERRIDE_CHECK);
    EXPECT_TRUE(sheet.IsChecked(IDC_OVERRIDE_CHECK)) << tab;
    const auto governed = GovernedControls(sheet);
    EXPECT_TRUE(std::ranges::any_of(governed, [](HWND control) { return IsWindowEnabled(control) != FALSE; })) << tab;

    sheet.Click(IDC_OVERRIDE_CHECK);
    EXPECT_FALSE(sheet.IsChecked(IDC_OVERRIDE_CHECK)) << tab;
    for (const HWND control : GovernedControls(sheet)) EXPECT_FALSE(IsWindowEnabled(control)) << tab;
  }
}

TEST(OverrideBox, StoresTheChoiceInTheCurrentProfileOnly) {
  for (const PolicyPage& page : kPolicyPages) {
    LoginPropertiesContext context = MakeContext();
    SheetDriver sheet(context);
    sheet.SelectTab(page.tab);
    sheet.Click(IDC_OVERRIDE_CHECK);
    const Profile& work = *context.profiles[kWork];
    EXPECT_FALSE((work.*page.followsDefaults)()) << page.tab;
    EXPECT_EQ(work.GetState(), ChangeState::Changed) << page.tab;
    EXPECT_TRUE((*context.profiles[kHome].*page.followsDefaults)()) << page.tab;
    EXPECT_EQ(context.profiles[kHome]->GetState(), ChangeState::Unchanged) << page.tab;
  }
}

TEST(OverridePolicyOnPage, ResetsThePageToTheDefaults) {
  for (const PolicyPage& page : kPolicyPages) {
    const Policy policy(page.policy, 1);
    LoginPropertiesContext context = MakeContext();
    (*context.profiles[kWork].*page.setFollowsDefaults)(false);
    SheetDriver sheet(context);
    sheet.SelectTab(page.tab);
    EXPECT_TRUE((*context.profiles[kWork].*page.followsDefaults)()) << page.tab;
    EXPECT_FALSE(sheet.IsChecked(IDC_OVERRIDE_CHECK)) << page.tab;
    for (const HWND control : GovernedControls(sheet)) EXPECT_FALSE(IsWindowEnabled(control)) << page.tab;
  }
}

TEST(OverridePolicyOnPage, LetsTheUserOverrideAgainExceptOnAutostart) {
  for (const PolicyPage& page : kPolicyPages) {
    const Policy policy(page.policy, 1);
    LoginPropertiesContext context = MakeContext();
    SheetDriver sheet(context);
    sheet.SelectTab(page.tab);
    EXPECT_EQ(sheet.IsEnabled(IDC_OVERRIDE_CHECK), page.tab != std::wstring(L"Autostart")) << page.tab;
  }
}

TEST(OverridePolicyOnPage, OfAutostartKeepsItsBoxDisabledForEveryProfile) {
  const Policy policy(L"AutoStart", 1);
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  sheet.SelectTab(L"Autostart");
  sheet.Pick(IDC_PROFILE_COMBO, L"Home");
  EXPECT_FALSE(sheet.IsEnabled(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(sheet.IsEnabled(IDC_PROFILE_COMBO));
  sheet.SelectTab(L"Proxy");
  EXPECT_TRUE(sheet.IsEnabled(IDC_OVERRIDE_CHECK)) << "the policy is of one page";
  sheet.SelectTab(L"Autostart");
  EXPECT_FALSE(sheet.IsEnabled(IDC_OVERRIDE_CHECK));
}

TEST(OverridePolicyOnPage, ActsOnlyWhenThePageIsFirstShown) {
  const Policy policy(L"Timeouts", 1);
  LoginPropertiesContext context = MakeContext();
  context.profiles[kWork]->SetDefaultTimeouts(false);
  SheetDriver sheet(context);
  EXPECT_FALSE(context.profiles[kWork]->GetDefaultTimeouts()) << "the page has not been shown yet";
  sheet.SelectTab(L"Timeouts");
  EXPECT_TRUE(context.profiles[kWork]->GetDefaultTimeouts());
  sheet.Click(IDC_OVERRIDE_CHECK);
  sheet.SelectTab(L"General");
  sheet.SelectTab(L"Timeouts");
  EXPECT_FALSE(context.profiles[kWork]->GetDefaultTimeouts()) << "the policy does not lock the page";
}

TEST(OverridePolicyOnPage, IsSuspendedByShiftAndCtrlTogether) {
  const Policy policy(L"Timeouts", 1);
  // Whether the policy resets the page when it is first shown while these keys are held.
  const auto resetsWith = [](const std::vector<WORD>& keys) {
    LoginPropertiesContext context = MakeContext();
    context.profiles[kWork]->SetDefaultTimeouts(false);
    SheetDriver sheet(context);
    sheet.SelectTab(L"Proxy");
    const HeldKeys held(keys);
    WaitUntil([&keys] { return std::ranges::all_of(keys, IsKeyDown); }, std::chrono::seconds(1));
    sheet.SelectTab(L"Timeouts");
    return context.profiles[kWork]->GetDefaultTimeouts();
  };
  EXPECT_TRUE(resetsWith({VK_SHIFT}));
  EXPECT_TRUE(resetsWith({VK_CONTROL}));
  // Between two repetitions the page may still see them up.
  constexpr int kMostTries = 10;
  bool resets = true;
  for (int tries = 0; tries < kMostTries && resets; ++tries) resets = resetsWith({VK_SHIFT, VK_CONTROL});
  EXPECT_FALSE(resets);
}

TEST(OverridePolicyOnPage, OfAnotherPageDoesNothing) {
  const Policy policy(L"Proxy", 1);
  LoginPropertiesContext context = MakeContext();
  context.profiles[kWork]->SetDefaultTimeouts(false);
  SheetDriver sheet(context);
  sheet.SelectTab(L"Timeouts");
  EXPECT_FALSE(context.profiles[kWork]->GetDefaultTimeouts());
  EXPECT_TRUE(sheet.IsChecked(IDC_OVERRIDE_CHECK));
}

TEST(OverridePolicyOnPage, OfZeroDoesNothing) {
  const Policy policy(L"Timeouts", 0);
  LoginPropertiesContext context = MakeContext();
  context.profiles[kWork]->SetDefaultTimeouts(false);
  SheetDriver sheet(context);
  sheet.SelectTab(L"Timeouts");
  EXPECT_FALSE(context.profiles[kWork]->GetDefaultTimeouts());
}
