#include "tests/ui/sequence/WizardSteps.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cwctype>
#include <utility>

#include "NetUtilities/Text/Utf8.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"
#include "tests/ui/sequence/ServersModel.h"

namespace {

using testing::UnorderedElementsAreArray;

constexpr wchar_t kUserIdExpected[] =
    L"The user ID can have at most 256 characters, and no blanks, tabs or other control characters.";

// A row of the pages with the servers, in the order of the fields.
struct ServerRow {
  int mode;
  int value;
  const wchar_t* expected;
  const wchar_t* wrong;
  std::vector<std::pair<std::wstring, std::string>> right;  // as it is typed, and as it is taken
};

const std::vector<std::pair<std::wstring, std::string>> kAddresses = {
    {L"192.0.2.1", "192.0.2.1"}, {L" 198.51.100.2 ", "198.51.100.2"}, {L"203.0.113.3", "203.0.113.3"}};

const std::vector<ServerRow> kRows = {
    {IDC_WIZARD_DNS1_MODE, IDC_WIZARD_DNS1,
     L"Please enter the address of DNS server 1: an IPv4 or IPv6 address such as 192.0.2.53 or 2001:db8::53.",
     L"server", kAddresses},
    {IDC_WIZARD_DNS2_MODE, IDC_WIZARD_DNS2,
     L"Please enter the address of DNS server 2: an IPv4 or IPv6 address such as 192.0.2.53 or 2001:db8::53.", L"",
     kAddresses},
    {IDC_WIZARD_WINS1_MODE, IDC_WIZARD_WINS1,
     L"Please enter the address of WINS server 1: an IPv4 address such as 192.0.2.53.", L"2001:db8::53", kAddresses},
    {IDC_WIZARD_WINS2_MODE, IDC_WIZARD_WINS2,
     L"Please enter the address of WINS server 2: an IPv4 address such as 192.0.2.53.", L"192.0.2.300", kAddresses},
    {IDC_WIZARD_DOMAIN_MODE,
     IDC_WIZARD_DOMAIN,
     L"Please enter a domain name such as example.com: letters, digits and hyphens between dots, at most 63 "
     L"characters each and 253 in all.",
     L"-bad.com",
     {{L"one.example", "one.example"}, {L"two.example", "two.example"}}},
    {IDC_WIZARD_SUFFIXES_MODE,
     IDC_WIZARD_SUFFIXES,
     L"Please enter the suffixes to search: domain names with commas between them, such as example.com, "
     L"example.org.",
     L"a..b",
     {{L" a.example,b.example ", "a.example,b.example"}, {L"c.example", "c.example"}}},
};

}  // namespace

WizardSteps::WizardSteps(SheetScene& scene, OtherProgram& other, WizardModel& entries)
    : scene_(scene),
      other_(other),
      entries_(entries),
      wizard_(GetWindowThreadProcessId(scene.sheet->Sheet(), nullptr)) {
  for (const auto& [id, row] : scene_.stored.services) services_.push_back(static_cast<uint32_t>(id));
}

bool WizardSteps::Walk() {
  do {
    UsePage();
    if (testing::Test::HasFailure()) return false;
  } while (GoOn());
  if (!WaitUntil([this] { return !wizard_.IsOpen(); })) Fail("the wizard stays open");
  SendMessageW(scene_.sheet->Page(), WM_NULL, 0, 0);
  scene_.story << (finished_ ? "finished; " : "cancelled; ");
  return finished_;
}

// Whether the wizard stays open.
bool WizardSteps::GoOn() {
  if (givesUp_ || Random().OneIn(16)) {
    wizard_.PressCancel();
    return false;
  }
  if (Random().OneIn(20)) other_.TakeStep();
  if (Random().OneIn(10) && wizard_.CanPress(WizardDriver::kBack)) {
    scene_.story << "back, ";
    wizard_.PressBack();
    return true;
  }
  finished_ = wizard_.CanPress(WizardDriver::kFinish);
  Advance();
  return !finished_;
}

void WizardSteps::Advance() { wizard_.CanPress(WizardDriver::kFinish) ? wizard_.PressFinish() : wizard_.PressNext(); }

void WizardSteps::ExpectRefusal(const std::wstring& sentence) {
  scene_.story << "refused, ";
  const auto page = wizard_.CurrentPage();
  Advance();
  ASSERT_EQ(wizard_.MessageBoxText(), sentence);
  wizard_.AnswerMessageBox();
  EXPECT_EQ(wizard_.CurrentPage(), page);
  givesUp_ = Random().OneIn(6);
}

void WizardSteps::UsePage() {
  constexpr size_t kServers = 4;
  ASSERT_EQ(wizard_.MessageBoxText(), std::nullopt);
  const auto page = wizard_.CurrentPage();
  ASSERT_TRUE(page);
  switch (*page) {
    case WizardPage::Name:
      return UseName();
    case WizardPage::Defaults:
      return UseDefaults();
    case WizardPage::UserId:
      return UseUserId();
    case WizardPage::Service:
      return UseService();
    case WizardPage::ServerChoice:
      return UseServerChoice();
    case WizardPage::Servers:
      return UseServers(0, kServers);
    case WizardPage::Domains:
      return UseServers(kServers, kRows.size() - kServers);
    case WizardPage::Copy:
      return UseCopy();
    case WizardPage::Summary:
      return UseSummary();
  }
}

// A new one, or that of any profile, also in capitals.
std::wstring WizardSteps::AnyName() {
  if (Random().OneIn(2)) return L"New " + std::to_wstring(entries_.id) + (Random().OneIn(2) ? L" a" : L" b");
  std::wstring name = Random().OneOf(Model().Profiles().All()).second.GetName();
  if (Random().OneIn(3)) {
    for (wchar_t& letter : name) letter = letter < 0x80 ? static_cast<wchar_t>(std::towupper(letter)) : letter;
  }
  return name;
}

void WizardSteps::UseName() {
  EXPECT_EQ(wizard_.Text(IDC_WIZARD_NAME), entries_.name);
  if (!entries_.name.empty() && Random().OneIn(2)) return;
  for (;;) {
    const std::wstring name = AnyName();
    scene_.story << "name '" << ToUtf8(name) << "', ";
    wizard_.Type(IDC_WIZARD_NAME, name);
    const auto refusal = Model().Profiles().RefuseName(name);
    if (!refusal) {
      entries_.name = name;
      return;
    }
    ASSERT_NO_FATAL_FAILURE(ExpectRefusal(*refusal));
    if (givesUp_) return;
  }
}

void WizardSteps::UseDefaults() {
  const auto offered = Model().Profiles().Defaults();
  EXPECT_THAT(wizard_.Values(IDC_WIZARD_DEFAULTS), UnorderedElementsAreArray(offered));
  EXPECT_EQ(wizard_.SelectedValue(IDC_WIZARD_DEFAULTS), entries_.defaults);
  if (Random().OneIn(2)) return;
  entries_.defaults = Random().OneOf(offered);
  scene_.story << "defaults " << entries_.defaults << ", ";
  wizard_.PickValue(IDC_WIZARD_DEFAULTS, entries_.defaults);
  entries_.ShowOther(Model().Profiles().Columns(entries_.defaults));
}

void WizardSteps::UseUserId() {
  EXPECT_EQ(wizard_.Text(IDC_WIZARD_ACCOUNT), entries_.Account());
  EXPECT_EQ(wizard_.Text(IDC_WIZARD_USER_ID), entries_.UserId());
  if (Random().OneIn(3)) {
    const std::wstring account = Random().OneOf(std::vector<std::wstring>{L"A Ltd", L"B Ltd", L""});
    scene_.story << "account '" << ToUtf8(account) << "', ";
    wizard_.Type(IDC_WIZARD_ACCOUNT, account);
    entries_.EnterAccount(account);
  }
  const bool isWrong = Random().OneIn(6);
  if (isWrong) {
    scene_.story << "user ID ";
    wizard_.Type(IDC_WIZARD_USER_ID, L"a b");
    ASSERT_NO_FATAL_FAILURE(ExpectRefusal(kUserIdExpected));
    if (givesUp_) return;
  }
  if (isWrong || Random().OneIn(2)) {
    const std::wstring userId = Random().OneOf(std::vector<std::wstring>{L"a.b", L"c.d", L""});
    scene_.story << "user ID '" << ToUtf8(userId) << "', ";
    wizard_.Type(IDC_WIZARD_USER_ID, userId);
    entries_.EnterUserId(userId);
  }
}

void WizardSteps::UseService() {
  EXPECT_EQ(wizard_.Values(IDC_WIZARD_SERVICE), services_);
  const auto chosen = static_cast<uint32_t>(entries_.Service() != 0 ? entries_.Service() : 400);
  const bool isKnown = std::ranges::count(services_, chosen) != 0;
  EXPECT_EQ(wizard_.SelectedValue(IDC_WIZARD_SERVICE), isKnown ? std::optional(chosen) : std::nullopt);
  if (services_.empty() || Random().OneIn(2)) return;
  const uint32_t service = Random().OneOf(services_);
  scene_.story << "service " << service << ", ";
  wizard_.PickValue(IDC_WIZARD_SERVICE, service);
  entries_.EnterService(static_cast<int32_t>(service));
}

void WizardSteps::UseServerChoice() {
  EXPECT_EQ(wizard_.IsChecked(IDC_WIZARD_SET_SERVERS), entries_.setsServers);
  if (Random().OneIn(2)) return;
  entries_.setsServers = !entries_.setsServers;
  scene_.story << (entries_.setsServers ? "set servers, " : "no servers, ");
  wizard_.Click(entries_.setsServers ? IDC_WIZARD_SET_SERVERS : IDC_WIZARD_DEFAULT_SERVERS);
}

void WizardSteps::UseServers(size_t first, size_t count) {
  std::vector<size_t> inUse;
  for (size_t field = first; field < first + count; ++field) {
    ASSERT_NO_FATAL_FAILURE(UseServer(field));
    if (entries_.Mode(field) == L'm') inUse.push_back(field);
  }
  if (inUse.empty() || !Random().OneIn(4)) return;
  const size_t field = Random().OneOf(inUse);
  scene_.story << "server " << field << " ";
  wizard_.Type(kRows[field].value, kRows[field].wrong);
  ASSERT_NO_FATAL_FAILURE(ExpectRefusal(kRows[field].expected));
  if (!givesUp_) EnterServer(field);
}

void WizardSteps::UseServer(size_t field) {
  const ServerRow& row = kRows[field];
  EXPECT_EQ(wizard_.SelectedValue(row.mode), static_cast<uint32_t>(entries_.Mode(field)));
  EXPECT_EQ(ToUtf8(wizard_.Text(row.value)), entries_.Value(field));
  EXPECT_EQ(wizard_.IsEnabled(row.value), entries_.Mode(field) == L'm');
  if (Random().OneIn(4)) {
    const wchar_t mode = Random().OneOf(std::vector{L'a', L'm', L'm', L'n'});
    scene_.story << "server " << field << " " << static_cast<char>(mode) << ", ";
    wizard_.PickValue(row.mode, static_cast<uint32_t>(mode));
    entries_.EnterMode(field, mode);
  }
  if (entries_.Mode(field) == L'm' && (entries_.Value(field).empty() || Random().OneIn(4))) EnterServer(field);
}

void WizardSteps::EnterServer(size_t field) {
  const auto& [typed, taken] = Random().OneOf(kRows[field].right);
  scene_.story << "server " << field << " " << taken << ", ";
  wizard_.Type(kRows[field].value, typed);
  entries_.EnterValue(field, taken);
}

void WizardSteps::UseCopy() {
  std::vector<uint32_t> offered = Model().Profiles().Sources();
  offered.push_back(0);
  EXPECT_THAT(wizard_.Values(IDC_WIZARD_COPY), UnorderedElementsAreArray(offered));
  EXPECT_EQ(wizard_.SelectedValue(IDC_WIZARD_COPY), entries_.source);
  if (!Random().OneIn(4)) {
    entries_.source = Random().OneOf(offered);
    scene_.story << "copy " << entries_.source << ", ";
    wizard_.PickValue(IDC_WIZARD_COPY, entries_.source);
  }
  const std::wstring text = wizard_.Text(IDC_WIZARD_COPIED);
  EXPECT_THAT(text, testing::StartsWith(TextOfCopied()));
  EXPECT_EQ(static_cast<size_t>(std::ranges::count(text, L'\n')), LinesOfCopied());
}

std::wstring WizardSteps::TextOfCopied() {
  if (entries_.source == 0) return {};
  const auto copied = Model().LookAtCopied(entries_.source, scene_.stored);
  std::wstring text = copied.columns.defaultPreferences ? L"It follows the default preferences.\r\n"
                                                        : L"It overrides the default preferences.\r\n";
  text += copied.columns.defaultAutostart ? L"It follows the default autostart entries.\r\n"
                                          : L"It overrides the default autostart entries.\r\n";
  text += L"Autostart entries of its own:";
  if (!copied.hasAutoStartList) {
    text += L" none";
  } else if (copied.programs.empty()) {
    text += L" an empty list, so that no program is started";
  }
  text += L"\r\n";
  for (const std::string& program : copied.programs) text += L"    " + FromUtf8(program) + L"\r\n";
  return text + (copied.preferences == 0 ? L"Preferences of its own: none\r\n" : L"Preferences of its own:\r\n");
}

size_t WizardSteps::LinesOfCopied() {
  if (entries_.source == 0) return 0;
  const auto copied = Model().LookAtCopied(entries_.source, scene_.stored);
  return 4 + copied.programs.size() + copied.preferences;
}

void WizardSteps::UseSummary() {
  EXPECT_THAT(wizard_.Text(IDC_WIZARD_SUMMARY), testing::StartsWith(L"Name: " + entries_.name + L"\r\n"));
}
