// What every page must have for those who cannot see it, or use no mouse.

#include <windows.h>

#include <gmock/gmock.h>

#include <cwctype>
#include <set>

#include "tests/ui/DialogWindows.h"
#include "tests/WaylineDll/SetupWizard/WizardTest.h"

namespace {

std::wstring ClassOf(HWND window) {
  wchar_t name[32] = {};
  GetClassNameW(window, name, ARRAYSIZE(name));
  return name;
}

bool IsLabel(HWND window) { return window != nullptr && ClassOf(window) == L"Static" && !TextOf(window).empty(); }

bool HasTextOfItsOwn(HWND control) { return ClassOf(control) == L"Button" && !TextOf(control).empty(); }

class WizardPages : public WizardTest {
 protected:
  // Looks at every page of the wizard for a new profile, which has them all.
  template <typename Look>
  void ForEachPage(Look look) {
    MakeNewProfile();
    Open(WizardId::NewProfile);
    wizard->Type(IDC_WIZARD_NAME, L"Home");
    for (const WizardPage page : PagesOf(WizardId::NewProfile)) {
      if (page == WizardPage::Servers) {
        wizard->Click(IDC_WIZARD_SET_SERVERS);
      }
      GoTo(page);
      look(page);
    }
  }
};

}  // namespace

TEST_F(WizardPages, NameEveryFieldForScreenReaders) {
  ForEachPage([this](WizardPage page) {
    std::set<std::wstring> names;
    for (HWND control = GetWindow(wizard->Page(), GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
      if ((GetWindowLongW(control, GWL_STYLE) & WS_TABSTOP) == 0 || HasTextOfItsOwn(control)) continue;
      EXPECT_TRUE(IsLabel(GetWindow(control, GW_HWNDPREV))) << GetDlgCtrlID(control);
      const std::wstring name = TextOf(GetWindow(control, GW_HWNDPREV));
      EXPECT_TRUE(names.insert(name).second) << "two fields are called " << testing::PrintToString(name);
    }
    EXPECT_TRUE(!names.empty() || page == WizardPage::ServerChoice);
  });
}

TEST_F(WizardPages, GiveEachOfItsKeysToOneControl) {
  ForEachPage([this](WizardPage page) {
    std::set<wchar_t> keys = {L'b', L'n', L'f'};  // of the buttons
    for (HWND control = GetWindow(wizard->Page(), GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
      const std::wstring text = TextOf(control);
      const size_t mark = text.find(L'&');
      if (!IsLabel(control) && !HasTextOfItsOwn(control)) continue;
      if (mark == std::wstring::npos) continue;
      const auto key = static_cast<wchar_t>(std::towlower(text.at(mark + 1)));
      EXPECT_TRUE(keys.insert(key).second) << static_cast<int>(page) << ": " << testing::PrintToString(text);
    }
    EXPECT_GT(keys.size(), 3U) << static_cast<int>(page);
  });
}
