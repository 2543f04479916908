// Random steps of a user on the "Proxy" page of the real sheet.

#include <gmock/gmock.h>

#include <map>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/LoginProperties/Proxy/ProxyModel.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/ProxyPageDriver.h"
#include "tests/ui/sequence/PageSequence.h"
#include "tests/ui/SettingsDriver.h"

namespace {

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

class ProxySequence : public PageSequence<ProxyModel, ProxyPageDriver> {
 protected:
  ProxySequence() : PageSequence(L"Proxy", {L"General", L"Autostart"}, kUnusualSettings) {}

  ProxyModel MakeModel() override { return ProxyModel(context_.profiles, file_); }
  void OnLeaving() override { model_->LeavePage(); }

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

  void Step() override {
    switch (Below(10)) {
      case 0:
        return ChooseProfile();
      case 1:
      case 2:
        return VisitAnotherTab();
      case 3:
        return OverrideOrEnter();
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

  // Most is to be seen of settings of its own.
  void OverrideOrEnter() { model_->Overrides() && !OneIn(3) ? EnterValue() : ClickOverride(); }

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

  void ExpectPage() override {
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
};

}  // namespace

TEST_F(ProxySequence, ShowsAndSavesWhatWasChosenWhateverTheOrder) { TakeSteps(); }
