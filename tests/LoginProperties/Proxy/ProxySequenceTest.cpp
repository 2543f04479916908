// Random steps of a user on the "Proxy" page of the real sheet, beside a plain model: at any time the page shows what
// the model says, and in the end the database differs from what it was in what was confirmed alone.

#include <gmock/gmock.h>

#include <map>
#include <optional>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "LoginProperties/SheetResult.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/LoginProperties/Proxy/ProxyModel.h"
#include "tests/support/Endurance.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/ProxyPageDriver.h"
#include "tests/ui/SaveContext.h"
#include "tests/ui/sequence/RandomSteps.h"
#include "tests/ui/SettingsDriver.h"
#include "tests/ui/StoredSheetTest.h"
#include "WaylineDll/Host.h"

namespace {

constexpr int kStepsOnASheet = 60;

int StepsToTake() { return FullSize() ? 5000 : 300; }

const std::map<wchar_t, int> kModes = {
    {L'a', IDC_PROXY_AUTOMATIC_RADIO}, {L'n', IDC_PROXY_NOT_UPDATED_RADIO}, {L'm', IDC_PROXY_MANUAL_RADIO}};

// What profiles may hold before a sheet is opened: an unknown mode, a mode that is inherited, a text that is too long,
// lists that are not as the dialog gives them back.
constexpr char kUnusualSettings[] =
    "UPDATE Profiles SET AutoProxySetting = 'm', ManualProxySetting = 'x' WHERE ProfileId = 1;"
    "UPDATE Profiles SET ProxyExceptionsSetting = 'm' WHERE ProfileId = 2003;"
    "INSERT INTO ConfigSettings (ProfileId, Automatic, AutoProxyUrl, ManualProxy, ProxyExceptions, Dns1, Dns2, Wins1, "
    "Wins2, DomainName, SearchList) VALUES "
    "(2003, 0, 'http://' || printf('%0600d', 0), 'a:b:c;;d', 'LEAVE', '', '', '', '', '', '')";

class ProxySequence : public RandomSteps {
 protected:
  ProxySequence() {
    EXPECT_EQ(OpenSettings(file_), std::nullopt);
    RunSql(file_, kUnusualSettings);
  }
  ~ProxySequence() override {
    sheet_.reset();
    CloseSettings();
  }

  // Texts, of any length around one at which they are cut

  std::wstring AnyText(size_t longest) {
    static const std::vector<std::wstring> kPieces = {
        L"a", L"B", L"7", L".", L" ", L":", L";", L"\u4f60", L"\u05d0", L"'", L"\xd83d\xde00", L"leave", L"LEAVE"};
    if (OneIn(8)) return OneOf(kPieces);
    const size_t length = OneIn(3) ? longest - 4 + static_cast<size_t>(Below(9)) : static_cast<size_t>(Below(12));
    std::wstring text;
    while (text.size() < length) text += OneOf(kPieces);
    return text;
  }

  // Steps

  void Step() {
    ++steps_;
    switch (Below(10)) {
      case 0:
        return ChooseProfile();
      case 1:
      case 2:
        return VisitAnotherTab();
      case 3:
        return ClickOverride();
      case 4:
      case 5:
        return SelectRow();
      case 6:
      case 7:
        return EnterValue();
      default:
        return ChooseMode();
    }
  }

  void ChooseProfile() {
    const auto profiles = SelectableProfiles(context_.profiles);
    const SelectableProfile& profile = OneOf(profiles);
    story_ << "profile " << profile.id << "; ";
    sheet_->Pick(IDC_PROFILE_COMBO, profile.name);
    model_->Choose(profile.id);
    if (onPage_) model_->ShowPage();
  }

  void VisitAnotherTab() {
    static const std::vector<std::wstring> kTabs = {L"General", L"Autostart"};
    const std::wstring& tab = OneOf(kTabs);
    story_ << ToUtf8(tab) << "; ";
    sheet_->SelectTab(tab);
    ASSERT_EQ(sheet_->CurrentTab(), tab);
    model_->LeavePage();
    onPage_ = false;
    if (OneIn(3)) ChooseProfile();
    story_ << "Proxy; ";
    sheet_->SelectTab(L"Proxy");
    onPage_ = true;
    model_->ShowPage();
  }

  void ClickOverride() {
    if (model_->Overrides() && !OneIn(3)) return EnterValue();
    story_ << "override; ";
    sheet_->Click(IDC_OVERRIDE_CHECK);
    model_->ClickOverride();
  }

  void SelectRow() {
    if (!model_->Overrides()) return;
    const auto row = static_cast<size_t>(Below(3));
    story_ << "row " << row << "; ";
    page_->Select(row);
    model_->SelectRow(row);
  }

  void ChooseMode() {
    if (!model_->Overrides()) return;
    const auto& [mode, radio] = OneOf(kModes);
    story_ << "mode " << static_cast<char>(mode) << "; ";
    sheet_->Click(radio);
    model_->ChooseMode(mode);
  }

  void EnterValue() {
    if (!model_->CanEnter()) return ChooseMode();
    model_->Row() == 0 ? TypeUrl() : EditList();
  }

  void TypeUrl() {
    const std::wstring url = AnyText(511);
    story_ << "url '" << ToUtf8(url) << "'; ";
    if (url.size() < 8) {
      page_->TypeUrl(url.empty() ? L"\b" : url);
    } else {
      // As pasted.
      SendMessageW(sheet_->Control(IDC_PROXY_URL), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(url.c_str()));
    }
    model_->TypeUrl(url);
  }

  void EditList() {
    story_ << "settings (";
    const SettingsDriver dialog(*sheet_);
    const bool withPorts = model_->Row() == 1;
    ProxyModel::List list(model_->ListText());
    std::wstring address;
    std::wstring port;
    size_t selected = 0;
    for (int steps = Below(8); steps > 0 && !HasFailure(); --steps) {
      const auto rows = static_cast<int>(list.Rows().size());
      switch (Below(5)) {
        case 0:
          story_ << "delete ";
          dialog.Press(IDC_SETTINGS_DELETE);
          list.Delete(selected);
          break;
        case 1:
          if (rows == 0) break;
          selected = static_cast<size_t>(Below(rows));
          story_ << "row " << selected << " ";
          // Selected anew, though the list may show it still.
          ListView_SetItemState(dialog.List(), -1, 0, LVIS_SELECTED);
          dialog.Select(selected);
          address = FirstUnits(list.Rows()[selected][0], 63);
          if (withPorts) port = FirstUnits(list.Rows()[selected][1], 63);
          break;
        case 2:
          Press(dialog, IDC_SETTINGS_CHANGE);
          list.Change(selected, FirstUnits(address, 63), withPorts ? FirstUnits(port, 63) : L"");
          break;
        default:
          address = AnyText(63);
          port = OneIn(2) ? L"" : AnyText(63);
          story_ << "'" << ToUtf8(address) << ":" << ToUtf8(port) << "' ";
          SetDlgItemTextW(dialog.Window(), IDC_SETTINGS_ADDRESS, address.c_str());
          SetDlgItemTextW(dialog.Window(), IDC_SETTINGS_PORT, port.c_str());
          Press(dialog, IDC_SETTINGS_ADD);
          list.Add(FirstUnits(address, 63), withPorts ? FirstUnits(port, 63) : L"");
      }
      EXPECT_EQ(dialog.Entries(), list.Rows());
      EXPECT_EQ(dialog.Address(), address);
      EXPECT_EQ(dialog.Port(), port);
    }
    const bool confirms = !OneIn(4);
    story_ << (confirms ? "OK); " : "Cancel); ");
    dialog.Close(confirms ? IDOK : IDCANCEL);
    if (confirms) model_->StoreList(list.Joined());
  }

  void Press(const SettingsDriver& dialog, int button) {
    story_ << (button == IDC_SETTINGS_ADD ? "add " : "change ");
    dialog.Press(button);
  }

  // What is seen

  void ExpectPage() {
    ASSERT_EQ(sheet_->MessageBoxText(), std::nullopt);
    EXPECT_EQ(sheet_->SelectedValue(IDC_PROFILE_COMBO), model_->ChosenId());
    EXPECT_EQ(sheet_->IsChecked(IDC_OVERRIDE_CHECK), model_->Overrides());
    EXPECT_EQ(page_->Rows(), model_->Rows());
    EXPECT_EQ(page_->SelectedRow(), static_cast<int>(model_->Row()));
    const auto checked = kModes.find(model_->CheckedMode());
    EXPECT_EQ(page_->CheckedMode(), checked != kModes.end() ? checked->second : 0);
    for (const auto& [mode, radio] : kModes) EXPECT_EQ(sheet_->IsEnabled(radio), model_->Overrides());
    EXPECT_EQ(sheet_->IsEnabled(IDC_PROXY_LIST), model_->Overrides());
    EXPECT_EQ(sheet_->IsEnabled(IDC_PROXY_URL_LABEL), model_->Overrides());
    const bool isUrl = model_->Row() == 0;
    EXPECT_EQ(page_->IsShown(IDC_PROXY_URL), isUrl);
    EXPECT_EQ(page_->IsShown(IDC_PROXY_URL_LABEL), isUrl);
    EXPECT_EQ(page_->IsShown(IDC_PROXY_SETTINGS), !isUrl);
    EXPECT_EQ(sheet_->IsEnabled(isUrl ? IDC_PROXY_URL : IDC_PROXY_SETTINGS), model_->CanEnter());
    EXPECT_EQ(sheet_->Text(IDC_PROXY_URL), model_->Url());
  }

  // Opens the sheet, takes many steps on its page and closes it, most often with OK.
  void UseSheet() {
    context_ = {};
    context_.mode = SheetMode::Full;
    ASSERT_EQ(LoadProfiles(context_.profiles), std::nullopt);
    model_.emplace(context_.profiles, file_);
    const uint32_t first = OneOf(SelectableProfiles(context_.profiles)).id;
    story_ << "on profile " << first << ": ";
    context_.currentProfile = context_.profiles.at(first);
    model_->Choose(first);
    sheet_.emplace(context_);
    page_.emplace(*sheet_);
    sheet_->SelectTab(L"Proxy");
    model_->ShowPage();
    ExpectPage();
    for (int step = 0; step < kStepsOnASheet && !HasFailure(); ++step) {
      Step();
      if (!HasFatalFailure()) ExpectPage();
    }
    if (!HasFailure()) OneIn(4) ? Cancel() : Confirm();
  }

  void Confirm() {
    const std::wstring expected = folder_.File(L"Expected.db");
    ASSERT_TRUE(CopyFileW(file_.c_str(), expected.c_str(), FALSE));
    model_->LeavePage();
    RunSql(expected, model_->Statements());
    story_ << "OK";
    sheet_->PressOk();
    ASSERT_EQ(sheet_->Result(), kSheetConfirmed);
    sheet_.reset();
    SaveContext(context_);
    EXPECT_EQ(AllRows(file_), AllRows(expected)) << model_->Statements();
  }

  void Cancel() {
    const std::multiset<std::string> before = AllRows(file_);
    story_ << "Cancel";
    sheet_->PressCancel();
    ASSERT_EQ(sheet_->Result(), kSheetCancelled);
    sheet_.reset();
    DiscardChanges();
    EXPECT_EQ(AllRows(file_), before);
  }

  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"Wayline.db");
  LoginPropertiesContext context_;
  std::optional<ProxyModel> model_;
  std::optional<SheetDriver> sheet_;
  std::optional<ProxyPageDriver> page_;
  bool onPage_ = true;
  int steps_ = 0;
};

}  // namespace

TEST_F(ProxySequence, ShowsAndSavesWhatWasChosenWhateverTheOrder) {
  while (steps_ < StepsToTake() && !HasFailure()) {
    story_.str({});
    UseSheet();
  }
}
