// The "Preferences" page by itself, on the sample settings.

#include "LoginProperties/Preferences/PreferenceDialog.h"

#include <gmock/gmock.h>
#include <prsht.h>
#include <windowsx.h>

#include <memory>
#include <optional>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/OverridePolicy.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Format.h"
#include "tests/support/Endurance.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ResourceCounters.h"
#include "tests/support/SavedCertificate.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/TreeItems.h"
#include "WaylineDll/Appearance.h"
#include "WaylineDll/Host.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAreArray;
using testing::Field;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

// Profiles of the sample data.
constexpr uint32_t kFollowsDefaults = 2001;  // those of id 1
constexpr uint32_t kFollowsField = 2002;     // those of id 100
constexpr uint32_t kOverrides = 2004;
constexpr uint32_t kAbove10000 = 10001;  // linked to 100

constexpr wchar_t kAutoConnect[] = L"Automatically connect if password saved";
constexpr wchar_t kBypass[] = L"Bypass Hardware Rendering";
constexpr wchar_t kMultiHoming[] = L"Enable additional adapter security (prevent multi-homing)";
constexpr wchar_t kDefaultMtu[] = L"Default (Recommended)";
constexpr wchar_t kCertificate[] = L"Use saved certificate.";

constexpr int kCheckOff = 1;
constexpr int kCheckOn = 2;
constexpr int kOptionOff = 7;
constexpr int kOptionOn = 8;

class PreferencePage : public testing::Test {
 protected:
  PreferencePage() {
    EXPECT_EQ(OpenSettings(folder_.File(L"Wayline.db")), Failure());
    EXPECT_EQ(LoadProfiles(Context().profiles), Failure());
    client_.Remove(kBypassHardwareRenderingValue);
    client_.Remove(kPreventMultiHomingValue);
  }
  ~PreferencePage() override {
    DestroyWindow(parent_);
    Context() = {};
    CloseSettings();
  }

  static LoginPropertiesContext& Context() { return GetContext(); }

  static Profile& Current() { return *Context().currentProfile; }

  static Preference& Stored(PreferenceId id) { return *Context().preferences.at(id); }

  // The page is created for a profile, and shown as the sheet shows it.
  void Open(uint32_t profileId) {
    Context().currentProfile = Context().profiles.at(profileId);
    CreatePage();
    Activate();
  }

  void CreatePage() {
    DestroyWindow(page_);
    dialog_ = std::make_unique<PreferenceDialog>(module_.Handle(), MAKEINTRESOURCEW(IDD_PREFERENCE), parent_);
    page_ = CreateDialogParamW(module_.Handle(), MAKEINTRESOURCEW(IDD_PREFERENCE), parent_,
                               static_cast<DLGPROC>(*dialog_), reinterpret_cast<LPARAM>(dialog_.get()));
    tree_ = GetDlgItem(page_, IDC_PREFERENCE_TREE);
    ShowWindow(page_, SW_SHOW);
    EnableWindow(page_, TRUE);
  }

  void Activate() const {
    NMHDR notification{page_, 0, PSN_SETACTIVE};
    SendMessageW(page_, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
  }

  void Choose(uint32_t profileId) const {
    const HWND combo = GetDlgItem(page_, IDC_PROFILE_COMBO);
    for (int index = 0; index < ComboBox_GetCount(combo); ++index) {
      if (static_cast<uint32_t>(ComboBox_GetItemData(combo, index)) == profileId) ComboBox_SetCurSel(combo, index);
    }
    FORWARD_WM_COMMAND(page_, IDC_PROFILE_COMBO, combo, CBN_SELCHANGE, SendMessageW);
  }

  void ClickOverride() const { SendDlgItemMessageW(page_, IDC_OVERRIDE_CHECK, BM_CLICK, 0, 0); }

  // What the input filter asks the page for.
  void Toggle(HTREEITEM item) const {
    SendMessageW(page_, TreeInputFilter::kToggleItem, reinterpret_cast<WPARAM>(item), reinterpret_cast<LPARAM>(tree_));
  }
  void Toggle(const std::wstring& text) const {
    const HTREEITEM item = Item(text);
    ASSERT_NE(item, nullptr);
    Toggle(item);
  }

  HTREEITEM Item(const std::wstring& text) const { return FindTreeItem(tree_, text); }

  int Image(const std::wstring& text) const { return TreeItemImage(tree_, Item(text)); }

  // The state images of a group's entries.
  std::vector<int> Images(const std::wstring& group) const {
    std::vector<int> images;
    for (HTREEITEM item = TreeView_GetChild(tree_, Item(group)); item != nullptr;
         item = TreeView_GetNextSibling(tree_, item)) {
      images.push_back(TreeItemImage(tree_, item));
    }
    return images;
  }

  bool IsTreeEnabled() const { return IsWindowEnabled(tree_) != FALSE; }
  bool IsOverrideChecked() const { return IsDlgButtonChecked(page_, IDC_OVERRIDE_CHECK) == BST_CHECKED; }

  LoadedModule module_{L"Pavise.dll"};
  TemporaryFolder folder_;
  TestRegistryKey client_{HKEY_LOCAL_MACHINE, kClientKey};
  HWND parent_ =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 600, 500, nullptr, nullptr, nullptr, nullptr);
  std::unique_ptr<PreferenceDialog> dialog_;
  HWND page_ = nullptr;
  HWND tree_ = nullptr;
};

}  // namespace

TEST_F(PreferencePage, ShowsAllGroupsOpenedWithTheirEntries) {
  client_.SetDword(kPreventMultiHomingValue, 1);
  const SavedCertificate certificate;
  Context().profiles.at(kOverrides)->SetHexDigCertHash(certificate.HashDigits());
  Open(kOverrides);
  const std::vector<TreeItem> expected = {
      {0, L"When this program starts", 12},
      {1, kAutoConnect, kCheckOn},
      {1, L"Minimize main window to system tray", kCheckOn},
      {1, kBypass, kCheckOff},
      {0, L"When connecting", 5},
      {1, kMultiHoming, kCheckOn},
      {1, L"Prefer IPv6 ", kCheckOn},
      {1, L"Prompt if a third party credential provider is installed.", kCheckOff},
      {1, L"Prompt to enter online mode if currently in offline mode.", kCheckOn},
      {1, L"Show the detailed message window", kCheckOn},
      {0, L"After connecting", 5},
      {1, L"Minimize the main window", kCheckOff},
      {1, L"Minimize main window to system tray instead of taskbar", kCheckOn},
      {1, L"Append domain and DNS suffix search list.", kCheckOff},
      {0, L"Confirm before disconnecting", 9},
      {1, L"When disconnect is pressed", kCheckOn},
      {1, L"When close or exit is selected", kCheckOn},
      {0, L"VPN Details", 4},
      {1, L"Negotiate UDP encapsulation with VPN server for NAT traversal", kCheckOn},
      {1, L"Perform VPN server health check.", kCheckOff},
      {1, L"Use SSL Tunneling when a proxy is detected", kCheckOn},
      {1, L"Use SSL Tunneling when an IPSec connection cannot be established.", kCheckOn},
      {1, L"Register VPN connection's address in DNS.", kCheckOff},
      {1, L"Use ephemeral source ports for IPSec.", kCheckOff},
      {1, L"Disable access to the local subnet while VPN connected.", kCheckOff},
      {1, L"Use Corvant VPN servers for SSL Tunneling only.", kCheckOff},
      {0, L"Show popup warning", 3},
      {1, L"When password will expire", kCheckOn},
      {1, L"Before prompting for browser-based login", kCheckOff},
      {0, L"Hotspot Browsing Settings", 13},
      {1, L"Use Bing Maps", kOptionOn},
      {1, L"Use Google Maps", kOptionOff},
      {0, L"VPN MTU Size", 3},
      {1, kDefaultMtu, kOptionOn},
      {1, L"1362", kOptionOff},
      {1, L"1300", kOptionOff},
      {1, L"1000", kOptionOff},
      {1, L"700", kOptionOff},
      {0, L"Number of IPSec attempts before failing over to SSL Tunneling.", 3},
      {1, kDefaultMtu, kOptionOn},
      {1, L"1", kOptionOff},
      {1, L"2", kOptionOff},
      {1, L"3", kOptionOff},
      {0, L"Certificates", 13},
      {1, kCertificate, kCheckOn},
  };
  EXPECT_THAT(TreeItems(tree_), ElementsAreArray(expected));
  EXPECT_TRUE(IsTreeEnabled());
  EXPECT_TRUE(IsOverrideChecked());
  EXPECT_EQ(TreeView_GetFirstVisible(tree_), TreeView_GetRoot(tree_));
  EXPECT_EQ(GetWindowFont(tree_), GetProportionalFont());
  EXPECT_NE(TreeView_GetTextColor(tree_), GetSysColor(COLOR_GRAYTEXT));
}

TEST_F(PreferencePage, ScrollsBackToTheTop) {
  Open(kOverrides);
  TreeView_EnsureVisible(tree_, Item(L"3"));
  ASSERT_NE(TreeView_GetFirstVisible(tree_), TreeView_GetRoot(tree_));
  Activate();
  EXPECT_EQ(TreeView_GetFirstVisible(tree_), TreeView_GetRoot(tree_));
}

TEST_F(PreferencePage, FollowingTheDefaultsShowsThoseOfTheLinkedProfileDisabled) {
  Open(kFollowsField);
  EXPECT_THAT(Images(L"VPN MTU Size"), ElementsAreArray({7, 7, 8, 7, 7})) << "1300";
  EXPECT_EQ(Image(L"Use Google Maps"), kOptionOn);
  EXPECT_FALSE(IsTreeEnabled());
  EXPECT_EQ(TreeView_GetTextColor(tree_), GetSysColor(COLOR_GRAYTEXT));
  EXPECT_FALSE(IsOverrideChecked());
  EXPECT_EQ(Stored(PreferenceId::VpnMtu).Fields().profileId, 100u);
}

TEST_F(PreferencePage, AProfileAbove10000ShowsThoseOfTheLinkedProfileAlsoWhenItOverrides) {
  Open(kAbove10000);
  ASSERT_FALSE(Current().GetDefaultPreferences());
  EXPECT_TRUE(IsOverrideChecked());
  EXPECT_TRUE(IsTreeEnabled());
  EXPECT_THAT(Images(L"VPN MTU Size"), ElementsAreArray({7, 7, 8, 7, 7})) << "1300, its own would be 700";
  EXPECT_EQ(Image(kAutoConnect), kCheckOff) << "its own would be on";
}

TEST_F(PreferencePage, ChoosingAnOptionAndChoosingItAgain) {
  Open(kOverrides);
  Toggle(L"1300");
  EXPECT_THAT(Images(L"VPN MTU Size"), ElementsAreArray({7, 7, 8, 7, 7}));
  EXPECT_EQ(Stored(PreferenceId::VpnMtu).GetValue(), 1480);
  EXPECT_EQ(Stored(PreferenceId::VpnMtu).GetState(), ChangeState::Changed);
  Toggle(L"1300");
  EXPECT_THAT(Images(L"VPN MTU Size"), Each(kOptionOff));
  EXPECT_EQ(Stored(PreferenceId::VpnMtu).GetValue(), 1480);
  EXPECT_THAT(Images(L"Hotspot Browsing Settings"), ElementsAreArray({8, 7})) << "another choice";
}

TEST_F(PreferencePage, ACheckBoxIsTurnedOverAndBack) {
  Open(kOverrides);
  Toggle(kAutoConnect);
  EXPECT_EQ(Image(kAutoConnect), kCheckOff);
  EXPECT_EQ(Stored(PreferenceId::AutoConnect).GetValue(), Preference::kOff);
  EXPECT_EQ(Stored(PreferenceId::AutoConnect).GetState(), ChangeState::Changed);
  EXPECT_EQ(Image(L"Minimize main window to system tray"), kCheckOn) << "another one";
  Toggle(kAutoConnect);
  EXPECT_EQ(Image(kAutoConnect), kCheckOn);
  EXPECT_EQ(Stored(PreferenceId::AutoConnect).GetValue(), Preference::kOn);
}

TEST_F(PreferencePage, ACheckBoxWithoutARecordStaysAsItIs) {
  Open(kOverrides);
  Context().preferences.erase(PreferenceId::AutoConnect);
  Toggle(kAutoConnect);
  EXPECT_EQ(Image(kAutoConnect), kCheckOn);
}

TEST_F(PreferencePage, AHeadingAndNothingAreNotToggled) {
  Open(kOverrides);
  const auto before = TreeItems(tree_);
  Toggle(L"VPN MTU Size");
  Toggle(L"VPN Details");
  Toggle(static_cast<HTREEITEM>(nullptr));
  EXPECT_EQ(TreeItems(tree_), before);
  for (const auto& [id, preference] : Context().preferences) {
    EXPECT_EQ(preference->GetState(), ChangeState::Unchanged) << static_cast<int32_t>(id);
  }
}

TEST_F(PreferencePage, WithoutPreferencesShowsTheBuiltInStatesAndCheckBoxesStay) {
  const SavedCertificate certificate;
  Context().profiles.at(kOverrides)->SetHexDigCertHash(certificate.HashDigits());
  CloseSettings();
  Open(kOverrides);
  EXPECT_THAT(Context().preferences, IsEmpty());
  for (const TreeItem& item : TreeItems(tree_)) {
    if (item.level == 0) continue;
    if (item.text == kCertificate) {
      EXPECT_EQ(item.stateImage, kCheckOn);
    } else {
      EXPECT_TRUE(item.stateImage == kCheckOff || item.stateImage == kOptionOff) << testing::PrintToString(item);
    }
  }
  Toggle(kAutoConnect);
  EXPECT_EQ(Image(kAutoConnect), kCheckOff);
}

TEST_F(PreferencePage, AProfileWithoutPreferencesShowsNothingOfTheOneShownBefore) {
  const SavedCertificate certificate;
  Context().profiles.at(kOverrides)->SetHexDigCertHash(certificate.HashDigits());
  Open(kOverrides);
  ASSERT_EQ(Image(kAutoConnect), kCheckOn);
  Toggle(kCertificate);
  ASSERT_EQ(Image(kCertificate), kCheckOff);
  CloseSettings();
  Choose(kFollowsField);
  EXPECT_THAT(Context().preferences, IsEmpty());
  for (const TreeItem& item : TreeItems(tree_)) {
    if (item.level == 0) continue;
    if (item.text == kCertificate) {
      EXPECT_EQ(item.stateImage, kCheckOn);
    } else {
      EXPECT_TRUE(item.stateImage == kCheckOff || item.stateImage == kOptionOff) << testing::PrintToString(item);
    }
  }
}

TEST_F(PreferencePage, OverridingShowsTheProfilesOwnAndFollowingTheDefaultsAgain) {
  Open(kFollowsField);
  ClickOverride();
  EXPECT_FALSE(Current().GetDefaultPreferences());
  EXPECT_EQ(Current().GetState(), ChangeState::Changed);
  EXPECT_TRUE(IsTreeEnabled());
  EXPECT_THAT(Images(L"VPN MTU Size"), ElementsAreArray({7, 7, 8, 7, 7})) << "inherited";
  EXPECT_EQ(Stored(PreferenceId::VpnMtu).Fields().profileId, kFollowsField);
  Toggle(L"700");
  ClickOverride();
  EXPECT_TRUE(Current().GetDefaultPreferences());
  EXPECT_FALSE(IsTreeEnabled());
  EXPECT_THAT(Images(L"VPN MTU Size"), ElementsAreArray({7, 7, 8, 7, 7})) << "those of the defaults";
}

TEST_F(PreferencePage, ChoosingAProfileShowsItAndToggledOptionsAreThereAgain) {
  Open(kOverrides);
  Toggle(L"700");
  Choose(kFollowsField);
  EXPECT_EQ(Current().GetProfileId(), kFollowsField);
  EXPECT_FALSE(IsTreeEnabled());
  EXPECT_EQ(Image(L"1300"), kOptionOn);
  Choose(kOverrides);
  EXPECT_TRUE(IsTreeEnabled());
  EXPECT_EQ(Image(L"700"), kOptionOn);
  EXPECT_EQ(Stored(PreferenceId::VpnMtu).GetState(), ChangeState::Changed);
}

TEST_F(PreferencePage, WithoutAProfileHasNoTree) {
  CreatePage();
  Activate();
  EXPECT_THAT(TreeItems(tree_), IsEmpty());
  ClickOverride();
  EXPECT_THAT(TreeItems(tree_), IsEmpty());
}

TEST_F(PreferencePage, APolicyShowsTheDefaultsWhenThePageIsCreated) {
  TestRegistryKey policy(HKEY_LOCAL_MACHINE, PolicyKeyOf(L"Preference"));
  policy.SetDword(kDisableOverrideValue, 1);
  Context().currentProfile = Context().profiles.at(kOverrides);
  CreatePage();
  EXPECT_TRUE(Current().GetDefaultPreferences());
  EXPECT_FALSE(IsOverrideChecked());
  EXPECT_TRUE(IsWindowEnabled(GetDlgItem(page_, IDC_OVERRIDE_CHECK)));
  EXPECT_FALSE(IsTreeEnabled());
  EXPECT_EQ(Image(kAutoConnect), kCheckOff) << "of the defaults";
  EXPECT_EQ(Stored(PreferenceId::AutoConnect).Fields().profileId, 2000u);
}

TEST_F(PreferencePage, MultiHomingIsAbsentUnlessTheAdministratorLetsItBeShown) {
  Open(kOverrides);
  EXPECT_EQ(Item(kMultiHoming), nullptr);
}

TEST_F(PreferencePage, MultiHomingIsAsTheAdministratorHasSetItWhateverIsStored) {
  for (const auto& [setting, image] : {std::pair{0u, kCheckOff}, std::pair{1u, kCheckOn}}) {
    client_.SetDword(kPreventMultiHomingValue, setting);
    for (const uint32_t profile : {kOverrides, kFollowsDefaults}) {
      Open(profile);
      EXPECT_EQ(Stored(PreferenceId::PreventMultiHoming).GetValue(), Preference::kOff);
      EXPECT_EQ(Image(kMultiHoming), image) << setting << ", profile " << profile;
    }
  }
}

TEST_F(PreferencePage, HardwareRenderingIsTheMachinesForAProfileThatOverrides) {
  Open(kOverrides);
  Stored(PreferenceId::BypassHardwareRendering).SetValue(Preference::kOn);
  EXPECT_EQ(Image(kBypass), kCheckOff) << "the registry value is missing";
  for (const auto& [setting, image] :
       {std::pair{0u, kCheckOff}, std::pair{1u, kCheckOn}, std::pair{2u, kCheckOff}, std::pair{1u, kCheckOn}}) {
    client_.SetDword(kBypassHardwareRenderingValue, setting);
    Activate();
    EXPECT_EQ(Image(kBypass), image) << setting;
  }
  Choose(kFollowsField);
  EXPECT_EQ(Image(kBypass), kCheckOff) << "as stored";
}

TEST_F(PreferencePage, HardwareRenderingThatCannotBeReadIsLoggedAndOff) {
  constexpr uint64_t kEightBytes = 1;
  client_.Set(kBypassHardwareRenderingValue, REG_QWORD, &kEightBytes, sizeof kEightBytes);
  const LogCapture log;
  Open(kOverrides);
  EXPECT_EQ(Image(kBypass), kCheckOff);
  const std::wstring line =
      LR"(RegQueryValueEx read DWORD64 HKLM\Software\Ostrel\Wayline\BypassHardwareRendering Error 234 (0xea))";
  const auto isLine = AllOf(Field(&LogCapture::Message::source, LogSource::General),
                            Field(&LogCapture::Message::level, LogLevel::Error),
                            Field(&LogCapture::Message::text, testing::StartsWith(line)));
  EXPECT_THAT(log.Messages(), Contains(isLine).Times(1));
}

TEST_F(PreferencePage, HasNoCertificatesWithoutASavedOne) {
  const SavedCertificate certificate;
  Open(kOverrides);
  EXPECT_EQ(Item(L"Certificates"), nullptr) << "the profile names none";
  Context().profiles.at(kOverrides)->SetHexDigCertHash(L"0123456789abcdef0123456789abcdef");
  Open(kOverrides);
  EXPECT_EQ(Item(L"Certificates"), nullptr) << "the profile names another";
}

TEST_F(PreferencePage, HasCertificatesForAHashAsWindowsShowsIt) {
  const SavedCertificate certificate;
  Context().profiles.at(kOverrides)->SetHexDigCertHash(certificate.Sha1HashDigits());
  Open(kOverrides);
  EXPECT_NE(Item(kCertificate), nullptr);
}

TEST_F(PreferencePage, LogsAHashThatCannotBeReadOnceWhenThePageIsMade) {
  const auto isError = Field(&LogCapture::Message::level, LogLevel::Error);
  const auto isLine =
      AllOf(isError, Field(&LogCapture::Message::source, LogSource::General),
            Field(&LogCapture::Message::text, L"Profile 2004 has a certificate hash that cannot be read: '12 3x'"));
  Context().profiles.at(kOverrides)->SetHexDigCertHash(L"12 3x");
  {
    const LogCapture log;
    Open(kOverrides);
    Activate();
    EXPECT_THAT(log.Messages(), Contains(isLine).Times(1));
  }
  EXPECT_EQ(Item(L"Certificates"), nullptr);
  for (const wchar_t* readable : {L"", L"0123456789abcdef0123456789abcdef"}) {
    Context().profiles.at(kOverrides)->SetHexDigCertHash(readable);
    const LogCapture log;
    Open(kOverrides);
    EXPECT_THAT(log.Messages(), Not(Contains(isError)));
  }
}

TEST_F(PreferencePage, AsksForTheSavedCertificateOnceWhenThePageIsMade) {
  Context().profiles.at(kOverrides)->SetHexDigCertHash(L"0123456789abcdef0123456789abcdef");
  Open(kOverrides);
  const SavedCertificate certificate;
  Current().SetHexDigCertHash(certificate.HashDigits());
  Activate();
  EXPECT_EQ(Item(kCertificate), nullptr);
  Open(kOverrides);
  EXPECT_NE(Item(kCertificate), nullptr);
}

TEST_F(PreferencePage, LogsWhatItShows) {
  Open(kFollowsField);
  const LogCapture log;
  Choose(kOverrides);
  std::vector<std::wstring> expected = {L"SetWindowControls profile id 2004"};
  for (HTREEITEM item = TreeView_GetRoot(tree_); item != nullptr; item = TreeView_GetNextVisible(tree_, item)) {
    TVITEMW data{};
    data.mask = TVIF_PARAM;
    data.hItem = item;
    TreeView_GetItem(tree_, &data);
    const std::wstring text = TreeItemText(tree_, item);
    const auto number = reinterpret_cast<uintptr_t>(item);
    if (TreeView_GetParent(tree_, item) == nullptr) {
      expected.push_back(Format(L"Header {} {} - item {:#08x}", text, data.lParam, number));
    } else {
      const int image = TreeItemImage(tree_, item);
      const int state = image == kCheckOn || image == kOptionOn ? Preference::kOn : Preference::kOff;
      expected.push_back(
          Format(L"AddChildrenToTreeView {} {} - state {} item {:#08x}", text, data.lParam, state, number));
    }
  }
  std::vector<std::wstring> logged;
  for (const LogCapture::Message& message : log.Messages()) {
    if (message.level == LogLevel::Trace) logged.push_back(message.text);
  }
  EXPECT_THAT(expected, SizeIs(1 + 9 + 33));
  EXPECT_THAT(logged, ElementsAreArray(expected));
}

namespace {

// What a tree is told while this lives.
class TreeMessages {
 public:
  explicit TreeMessages(HWND tree) : tree_(tree) {
    SetWindowSubclass(tree, Record, 7, reinterpret_cast<DWORD_PTR>(this));
  }
  ~TreeMessages() { RemoveWindowSubclass(tree_, Record, 7); }
  TreeMessages(const TreeMessages&) = delete;
  TreeMessages& operator=(const TreeMessages&) = delete;

  // How often the tree was changed, or drew itself, while it might draw.
  int drawnChanges = 0;
  int frozenChanges = 0;
  int freezes = 0;
  int releases = 0;

 private:
  static bool IsChange(UINT message) {
    switch (message) {
      case TVM_INSERTITEMW:
      case TVM_DELETEITEM:
      case TVM_EXPAND:
      case TVM_SETITEMW:
      case TVM_SETINDENT:
      case TVM_SELECTITEM:
      case WM_SETFONT:
        return true;
      default:
        return false;
    }
  }

  static LRESULT CALLBACK Record(HWND tree, UINT message, WPARAM wordParameter, LPARAM longParameter, UINT_PTR,
                                 DWORD_PTR data) {
    auto& self = *reinterpret_cast<TreeMessages*>(data);
    if (message == WM_SETREDRAW) ++(wordParameter == FALSE ? self.freezes : self.releases);
    if (IsChange(message)) ++(self.freezes > self.releases ? self.frozenChanges : self.drawnChanges);
    return DefSubclassProc(tree, message, wordParameter, longParameter);
  }

  HWND tree_;
};

}  // namespace

TEST_F(PreferencePage, FillsItsTreeWhileDrawingIsFrozen) {
  Open(kOverrides);
  UpdateWindow(page_);
  const TreeMessages messages(tree_);
  Activate();
  EXPECT_EQ(messages.freezes, 1);
  EXPECT_EQ(messages.releases, 1);
  EXPECT_EQ(messages.drawnChanges, 0);
  EXPECT_GE(messages.frozenChanges, 9 + 33 + 9) << "headings, entries and the opening of groups";
  EXPECT_TRUE(GetUpdateRect(tree_, nullptr, FALSE)) << "drawn once in the end";
}

TEST_F(PreferencePage, LeavesNothingBehindHoweverOftenItIsRefilled) {
  const SavedCertificate certificate;
  Context().profiles.at(kOverrides)->SetHexDigCertHash(certificate.HashDigits());
  const auto refill = [this](int times) {
    for (int time = 0; time < times; ++time) Choose(time % 2 == 0 ? kFollowsField : kOverrides);
  };
  Open(kOverrides);
  refill(20);
  const size_t handles = CountKernelHandles();
  const size_t objects = CountGdiObjects();
  const size_t windows = CountWindows();
  {
    // The counters see what would be left.
    const LOGFONTW anyFont{};
    const HFONT font = CreateFontIndirectW(&anyFont);
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, kClientKey, 0, KEY_READ, &key);
    EXPECT_EQ(CountGdiObjects(), objects + 1);
    EXPECT_EQ(CountKernelHandles(), handles + 1);
    RegCloseKey(key);
    DeleteObject(font);
  }
  refill(FullSize() ? 1000 : 200);
  constexpr size_t kPlatformsOwn = 5;
  EXPECT_LE(CountKernelHandles(), handles + kPlatformsOwn);
  EXPECT_LE(CountGdiObjects(), objects + kPlatformsOwn);
  EXPECT_EQ(CountWindows(), windows);
}

TEST_F(PreferencePage, LeavesNothingBehindWhenMade30Times) {
  for (int time = 0; time < 5; ++time) Open(kOverrides);
  const size_t handles = CountKernelHandles();
  const size_t objects = CountGdiObjects();
  for (int time = 0; time < 30; ++time) Open(kOverrides);
  constexpr size_t kPlatformsOwn = 5;
  EXPECT_LE(CountKernelHandles(), handles + kPlatformsOwn);
  EXPECT_LE(CountGdiObjects(), objects + kPlatformsOwn);
}

TEST_F(PreferencePage, TogglesForNoOtherMessage) {
  Open(kOverrides);
  const auto before = TreeItems(tree_);
  SendMessageW(page_, TreeInputFilter::kToggleItem - 1, reinterpret_cast<WPARAM>(Item(kAutoConnect)), 0);
  SendMessageW(page_, TreeInputFilter::kToggleItem + 1, reinterpret_cast<WPARAM>(Item(kAutoConnect)), 0);
  EXPECT_EQ(TreeItems(tree_), before);
}
