// What opening and using the sheet takes with few and with many profiles, beside a bare sheet whose six pages have the
// same templates and nothing behind them, and beside a bare sorted combo box. Prints Markdown tables.

#include <windows.h>

#include <commctrl.h>
#include <objbase.h>
#include <prsht.h>
#include <psapi.h>
#include <shlobj.h>
#include <windowsx.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <random>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "LoginProperties/Autostart/AutostartControls.h"
#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Proxy/ProxyControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectControls.h"
#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Module/Owner.h"
#include "tests/support/ProgramRun.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/StartMenuFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/ThisProgram.h"
#include "WaylineDll/AutoStart.h"
#include "WaylineDll/Host.h"

namespace {

struct PageOfSheet {
  const char* title;
  int templateId;
};

constexpr std::array kPages = {
    PageOfSheet{"General", IDD_GENERAL},     PageOfSheet{"Preferences", IDD_PREFERENCE},
    PageOfSheet{"Autostart", IDD_AUTOSTART}, PageOfSheet{"Proxy", IDD_PROXY},
    PageOfSheet{"Timeouts", IDD_TIMEOUT},    PageOfSheet{"Wi-Fi Switching", IDD_AUTO_RECONNECT},
};
constexpr size_t kPageCount = kPages.size();

// What is compared.
enum class Subject { Bare, Few, Many };
constexpr std::array kSubjects = {Subject::Bare, Subject::Few, Subject::Many};
constexpr size_t kFew = 10;
constexpr size_t kMany = 10'000;

double Milliseconds() {
  using std::chrono::duration;
  return duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The page Autostart with many entries.
constexpr size_t kAutostartPage = 2;
constexpr size_t kEntries = 2'000;
struct Refill {
  double page = 0;    // filled anew
  double moving = 0;  // an entry by one place
  double tree = 0;    // a bare one filled with as many items
};

// The editor of an autostart entry with many installed programs.
constexpr size_t kPrograms = 1'000;

// What is measured of a sheet, in milliseconds. Visits are of each page in turn.
struct Sample {
  double opening = 0;
  std::array<double, kPageCount> firstVisit{};  // of the first page: nothing
  std::array<double, kPageCount> laterVisit{};
  std::array<double, kPageCount> choosing{};  // another profile
  double removing = 0;                        // a profile: the page is shown again without it
};

// A sheet that is shown by this thread, and what is done with it as soon as its first page has been drawn.
class ShownSheet {
 public:
  // The profiles that it is shown on are null for the bare sheet.
  explicit ShownSheet(const ProfileTable* profiles) : profiles_(profiles) {}

  Sample Measure(const std::function<void()>& show) {
    Show(show, [this] { MeasurePages(); });
    return sample_;
  }

  Refill MeasureRefill(const std::function<void()>& show) {
    Refill refill;
    Show(show, [&] {
      Visit(kAutostartPage);
      refill.page = ShowPageAgain();
      refill.moving = MoveEntry();
      refill.tree = FillBareTree();
    });
    return refill;
  }

  double MeasureEditor(const std::function<void()>& show) {
    double time = 0;
    Show(show, [&] {
      Visit(kAutostartPage);
      time = OpenEditor();
    });
    return time;
  }

 private:
  void Show(const std::function<void()>& show, const std::function<void()>& measure) {
    current_ = this;
    measure_ = measure;
    // A thread is told of a timer when there is nothing else for it to do or to draw.
    timer_ = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, [](HWND, UINT, UINT_PTR, DWORD) { current_->OnIdle(); });
    start_ = Milliseconds();
    show();
    current_ = nullptr;
    KillTimer(nullptr, timer_);
    if (sheet_ == nullptr) throw std::runtime_error("The sheet was not shown.");
  }

  void OnIdle() {
    const double now = Milliseconds();
    if (!FindSheet()) return;
    KillTimer(nullptr, timer_);
    sample_.opening = now - start_;
    measure_();
    PostMessageW(sheet_, WM_COMMAND, IDCANCEL, 0);
  }

  void MeasurePages() {
    for (size_t page = 1; page < kPageCount; ++page) sample_.firstVisit[page] = Visit(page);
    for (size_t page = 0; page < kPageCount; ++page) sample_.laterVisit[page] = Visit(page);
    if (profiles_ != nullptr) {
      for (size_t page = 0; page < kPageCount; ++page) sample_.choosing[page] = ChooseProfile(page);
      sample_.removing = RemoveProfile();
    }
  }

  bool FindSheet() {
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM found) -> BOOL {
          if (IsWindowVisible(window) == FALSE || PropSheet_GetTabControl(window) == nullptr) return TRUE;
          *reinterpret_cast<HWND*>(found) = window;
          return FALSE;
        },
        reinterpret_cast<LPARAM>(&sheet_));
    return sheet_ != nullptr && IsWindowVisible(Page()) != FALSE;
  }

  HWND Page() const { return PropSheet_GetCurrentPageHwnd(sheet_); }

  double Visit(size_t page) const {
    return TimeOf([&] { PropSheet_SetCurSel(sheet_, nullptr, page); });
  }

  double ChooseProfile(size_t page) const {
    Visit(page);
    const HWND combo = GetDlgItem(Page(), IDC_PROFILE_COMBO);
    return TimeOf([&] {
      ComboBox_SetCurSel(combo, (ComboBox_GetCurSel(combo) + 1) % ComboBox_GetCount(combo));
      FORWARD_WM_COMMAND(Page(), IDC_PROFILE_COMBO, combo, CBN_SELCHANGE, SendMessageW);
    });
  }

  // The sheet shares its records with its caller.
  double RemoveProfile() const {
    Profile& removed = *profiles_->rbegin()->second;
    removed.SetHidden(true);
    const double time = ShowPageAgain();
    removed.SetHidden(false);
    return time;
  }

  double ShowPageAgain() const {
    return TimeOf([&] {
      NMHDR shown{sheet_, 0, PSN_SETACTIVE};
      FORWARD_WM_NOTIFY(Page(), 0, &shown, SendMessageW);
    });
  }

  double MoveEntry() const {
    const HWND tree = GetDlgItem(Page(), IDC_AUTOSTART_TREE);
    HTREEITEM item = TreeView_GetRoot(tree);
    for (size_t line = 0; line < kEntries / 2; ++line) item = TreeView_GetNextVisible(tree, item);
    TreeView_SelectItem(tree, item);
    return TimeOf([&] { FORWARD_WM_COMMAND(Page(), IDC_AUTOSTART_DOWN, nullptr, BN_CLICKED, SendMessageW); });
  }

  // The editor of a new entry, until it has been drawn. Then it is cancelled.
  double OpenEditor() {
    timer_ = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, [](HWND, UINT, UINT_PTR, DWORD) { current_->CancelEditor(); });
    const double start = Milliseconds();
    FORWARD_WM_COMMAND(Page(), IDC_AUTOSTART_ADD, nullptr, BN_CLICKED, SendMessageW);
    return editorShown_ - start;
  }

  void CancelEditor() {
    const HWND editor = GetLastActivePopup(sheet_);
    if (editor == sheet_ || IsWindowVisible(editor) == FALSE) return;
    editorShown_ = Milliseconds();
    KillTimer(nullptr, timer_);
    PostMessageW(editor, WM_COMMAND, IDCANCEL, 0);
  }

  // In the place of the page's tree and of its kind.
  double FillBareTree() const {
    const HWND model = GetDlgItem(Page(), IDC_AUTOSTART_TREE);
    RECT place{};
    GetWindowRect(model, &place);
    MapWindowRect(HWND_DESKTOP, Page(), &place);
    ShowWindow(model, SW_HIDE);
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(model, GWL_STYLE));
    const HWND tree =
        CreateWindowExW(0, WC_TREEVIEWW, L"", style | WS_VISIBLE, place.left, place.top, place.right - place.left,
                        place.bottom - place.top, Page(), nullptr, nullptr, nullptr);
    SetWindowFont(tree, GetWindowFont(model), FALSE);
    TimeOf([&] { FillTree(tree); });
    const double time = TimeOf([&] {
      SetWindowRedraw(tree, FALSE);
      TreeView_DeleteAllItems(tree);
      FillTree(tree);
      SetWindowRedraw(tree, TRUE);
      InvalidateRect(tree, nullptr, TRUE);
    });
    DestroyWindow(tree);
    ShowWindow(model, SW_SHOW);
    return time;
  }

  static void FillTree(HWND tree) {
    TVINSERTSTRUCTW insert{};
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT;
    const auto add = [&](const std::wstring& text) {
      std::wstring copy = text;
      insert.item.pszText = copy.data();
      return TreeView_InsertItem(tree, &insert);
    };
    const HTREEITEM heading = add(L"Programs");
    insert.hParent = heading;
    for (size_t number = 1; number <= kEntries; ++number) add(L"Program " + std::to_wstring(number));
    TreeView_Expand(tree, heading, TVE_EXPAND);
  }

  // What it takes until all is done and drawn.
  template <typename Action>
  static double TimeOf(Action action) {
    const double start = Milliseconds();
    action();
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    GdiFlush();
    return Milliseconds() - start;
  }

  static inline ShownSheet* current_ = nullptr;

  const ProfileTable* profiles_;
  std::function<void()> measure_;
  Sample sample_;
  double start_ = 0;
  double editorShown_ = 0;
  UINT_PTR timer_ = 0;
  HWND sheet_ = nullptr;
};

// In no order, as profiles have them.
std::vector<std::wstring> MakeNames(size_t count) {
  std::vector<std::wstring> names;
  for (size_t number = 1; number <= count; ++number) names.push_back(L"Branch office " + std::to_wstring(number));
  std::ranges::shuffle(names, std::mt19937(1));
  return names;
}

// The client that shows the sheet: it has a window, a settings database and a log.
class Client {
 public:
  Client() {
    if (module_ == nullptr || OpenSettings(folder_.File(L"Wayline.db"))) {
      throw std::runtime_error("The module or a settings database cannot be opened.");
    }
  }
  ~Client() {
    CloseSettings();
    StopLibraryLog();
    DestroyWindow(window_);
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  Sample Measure(Subject subject) {
    switch (subject) {
      case Subject::Bare:
        return ShownSheet(nullptr).Measure([this] { ShowBareSheet(); });
      case Subject::Few:
        return MeasureSheet(few_, kFew);
      case Subject::Many:
        break;
    }
    return MeasureSheet(many_, kMany);
  }

  // The page Autostart filled anew with many entries, beside a bare tree with as many items.
  Refill MeasureRefill() {
    if (entries_.profiles.empty()) entries_ = MakeEntries();
    return ShownSheet(&entries_.profiles).MeasureRefill([&] { show_(&entries_); });
  }

  // The editor of an autostart entry on a machine with many programs.
  double MeasureEditor() {
    if (entries_.profiles.empty()) entries_ = MakeEntries();
    return ShownSheet(&entries_.profiles).MeasureEditor([&] { show_(&entries_); });
  }

  // What a sorted combo box takes to be filled while it can be seen, as one does it who thinks of nothing else.
  double MeasureCombo() const {
    static const std::vector<std::wstring> names = MakeNames(kMany);
    return MeasureCombo(CBS_DROPDOWNLIST | CBS_SORT, names);
  }

  // One that is not sorted, with as many names as there are programs.
  double MeasureNameCombo() const {
    static const std::vector<std::wstring> names = MakeNames(kPrograms);
    return MeasureCombo(CBS_DROPDOWN, names);
  }

 private:
  using Entry = INT_PTR (*)(LoginPropertiesContext*);

  double MeasureCombo(DWORD style, const std::vector<std::wstring>& names) const {
    const HWND combo = CreateWindowExW(0, WC_COMBOBOXW, L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | style, 0, 0, 160, 160,
                                       window_, nullptr, nullptr, nullptr);
    const double start = Milliseconds();
    for (size_t index = 0; index < names.size(); ++index) {
      ComboBox_SetItemData(combo, ComboBox_AddString(combo, names[index].c_str()), index);
    }
    const double time = Milliseconds() - start;
    DestroyWindow(combo);
    return time;
  }

  Sample MeasureSheet(LoginPropertiesContext& context, size_t count) const {
    if (context.profiles.empty()) context = MakeContext(count);
    return ShownSheet(&context.profiles).Measure([&] { show_(&context); });
  }

  void ShowBareSheet() const {
    std::array<PROPSHEETPAGEW, kPageCount> pages{};
    for (size_t page = 0; page < kPageCount; ++page) {
      pages[page].dwSize = sizeof(PROPSHEETPAGEW);
      pages[page].dwFlags = PSP_HASHELP;
      pages[page].hInstance = module_.get();
      pages[page].pszTemplate = MAKEINTRESOURCEW(kPages[page].templateId);
      pages[page].pfnDlgProc = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; };
    }
    PROPSHEETHEADERW header{};
    header.dwSize = sizeof(header);
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW | PSH_HASHELP;
    header.hwndParent = window_;
    header.hInstance = module_.get();
    header.pszCaption = L"Wayline - Login Properties";
    header.nPages = kPageCount;
    header.ppsp = pages.data();
    PropertySheetW(&header);
  }

  // A profile of the sample data with many entries in one phase, which the library hands out as if the user had added
  // them.
  LoginPropertiesContext MakeEntries() const {
    constexpr uint32_t kOffice = 2004;
    LoginPropertiesContext context;
    context.parentWindow = window_;
    context.resourceInstance = module_.get();
    context.mode = SheetMode::Full;
    if (LoadProfiles(context.profiles)) throw std::runtime_error("The sample data cannot be read.");
    context.currentProfile = context.profiles.at(kOffice);
    for (uint16_t order = 1; order <= kEntries; ++order) {
      const auto entry = CreateNewItem(kOffice);
      entry->fields.name = L"Program " + std::to_wstring(order);
      entry->fields.phase = 1100;
      entry->fields.order = order;
      entry->SetState(ChangeState::New);
    }
    return context;
  }

  LoginPropertiesContext MakeContext(size_t count) const {
    constexpr uint32_t kRoot = 1;
    constexpr uint32_t kFirst = 2001;
    LoginPropertiesContext context;
    context.parentWindow = window_;
    context.resourceInstance = module_.get();
    context.mode = SheetMode::Full;
    const auto add = [&](uint32_t id, const std::wstring& name, uint32_t parent) {
      auto profile = std::make_shared<Profile>(id);
      profile->SetName(name);
      profile->Columns().linkProfile = parent;
      context.profiles.emplace(id, std::move(profile));
    };
    add(kRoot, L"Default", 0);
    for (const std::wstring& name : MakeNames(count)) {
      add(kFirst + static_cast<uint32_t>(context.profiles.size()) - 1, name, kRoot);
    }
    context.currentProfile = context.profiles.at(kFirst);
    return context;
  }

  const TemporaryFolder folder_;
  const LogSession logging_;
  const Owner<HMODULE, FreeLibrary> module_{LoadLibraryW(L"Pavise.dll")};
  const Entry show_ =
      reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module_.get(), "ShowLoginProperties")));
  const HWND window_ = CreateWindowExW(0, WC_STATICW, L"Client", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 240, 120,
                                       nullptr, nullptr, nullptr, nullptr);
  LoginPropertiesContext entries_;
  LoginPropertiesContext few_;
  LoginPropertiesContext many_;
};

// What a process of its own has to tell: of the first sheet in it, and in megabytes of its memory after that.
struct Outcome {
  Sample sample;
  double ownMemory = 0;  // that it shares with no other process
  double residentMemory = 0;
};

// A process may show its sheet while the logging service is still being started, or when all has become quiet.
enum class Beginning { Hurried, Quiet };

constexpr std::wstring_view kFirstSheet = L"first";

void TellOutcome(Subject subject, Beginning beginning) {
  Client client;
  if (beginning == Beginning::Quiet) Sleep(500);
  const Sample sample = client.Measure(subject);
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
  constexpr double kMegabyte = 1024 * 1024;
  std::printf("%f", sample.opening);
  for (const double time : sample.firstVisit) std::printf(" %f", time);
  std::printf(" %f %f\n", static_cast<double>(memory.PagefileUsage) / kMegabyte,
              static_cast<double>(memory.WorkingSetSize) / kMegabyte);
}

Outcome RunProcess(Subject subject, Beginning beginning) {
  const auto word = [](auto value) { return std::to_wstring(static_cast<int>(value)); };
  const ProgramOutcome program =
      RunProgram(ThisProgram().wstring(), {std::wstring(kFirstSheet), word(subject), word(beginning)});
  std::istringstream text(program.output);
  Outcome outcome;
  text >> outcome.sample.opening;
  for (double& time : outcome.sample.firstVisit) text >> time;
  text >> outcome.ownMemory >> outcome.residentMemory;
  if (!text) throw std::runtime_error("A process has not measured its sheet: " + program.error);
  return outcome;
}

// The middle of some numbers.
double Half(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

double Most(const std::vector<double>& values) { return *std::ranges::max_element(values); }

template <typename Result>
using PerSubject = std::array<std::vector<Result>, kSubjects.size()>;

// Each in turn, so that what else the machine does meets all.
template <typename Result>
PerSubject<Result> InTurns(int rounds, const std::function<Result(Subject)>& measure) {
  PerSubject<Result> results;
  for (int round = 0; round < rounds; ++round) {
    for (const Subject subject : kSubjects) results[static_cast<size_t>(subject)].push_back(measure(subject));
  }
  return results;
}

template <typename Result, typename Value>
std::vector<double> Values(const PerSubject<Result>& results, Subject subject, Value value) {
  std::vector<double> values;
  for (const Result& result : results[static_cast<size_t>(subject)]) values.push_back(value(result));
  return values;
}

PerSubject<Outcome> MeasureProcesses(int rounds, Beginning beginning) {
  return InTurns<Outcome>(rounds, [=](Subject subject) {
    // Otherwise the service of the process before would still be there.
    if (beginning == Beginning::Hurried) RegisteredService::WaitForEndOfServers();
    return RunProcess(subject, beginning);
  });
}

template <typename Result, typename Value>
void PrintOpening(const char* when, const PerSubject<Result>& results, double combo, Value value) {
  std::printf("| %s |", when);
  std::array<double, kSubjects.size()> halves{};
  for (const Subject subject : kSubjects) {
    const std::vector<double> times = Values(results, subject, value);
    halves[static_cast<size_t>(subject)] = Half(times);
    std::printf(" %.0f / %.0f |", Half(times), Most(times));
  }
  const auto& [bare, few, many] = halves;
  std::printf(" %.0f | %.2f | %.2f |\n", few - bare, few / bare, (many - few) / combo);
}

void PrintPages(const PerSubject<Sample>& samples, double combo) {
  std::puts(
      "\n| page | first visit: bare | 10 | 10,000 | selector to combo box | later: bare | 10 | 10,000 | choosing: 10 "
      "| 10,000 |\n|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|");
  for (size_t page = 0; page < kPageCount; ++page) {
    const auto half = [&](Subject subject, auto Sample::*times) {
      return Half(Values(samples, subject, [&](const Sample& sample) { return (sample.*times)[page]; }));
    };
    std::printf("| %s |", kPages[page].title);
    if (page == 0) {
      std::printf(" | | | |");
    } else {
      const double few = half(Subject::Few, &Sample::firstVisit);
      const double many = half(Subject::Many, &Sample::firstVisit);
      std::printf(" %.0f | %.0f | %.0f | %.2f |", half(Subject::Bare, &Sample::firstVisit), few, many,
                  (many - few) / combo);
    }
    for (const Subject subject : kSubjects) std::printf(" %.0f |", half(subject, &Sample::laterVisit));
    std::printf(" %.1f | %.1f |\n", half(Subject::Few, &Sample::choosing), half(Subject::Many, &Sample::choosing));
  }
}

void PrintRemoving(const PerSubject<Sample>& samples, const std::vector<double>& combos) {
  const auto removing = [&](Subject subject) {
    return Values(samples, subject, [](const Sample& sample) { return sample.removing; });
  };
  const auto few = removing(Subject::Few);
  const auto many = removing(Subject::Many);
  std::printf(
      "\n| what | p50 / most | to combo box |\n|---|---:|---:|\n"
      "| sorted combo box filled with 10,000 names | %.0f / %.0f | |\n"
      "| page shown again without a profile of 10 | %.1f / %.1f | |\n"
      "| page shown again without a profile of 10,000 | %.1f / %.1f | %.2f |\n",
      Half(combos), Most(combos), Half(few), Most(few), Half(many), Most(many), Half(many) / Half(combos));
}

void PrintRefill(const std::vector<Refill>& refills) {
  const auto values = [&](double Refill::*time) {
    std::vector<double> times;
    std::ranges::transform(refills, std::back_inserter(times), time);
    return times;
  };
  const auto tree = values(&Refill::tree);
  std::printf(
      "\n| 2,000 autostart entries | p50 / most | to bare tree |\n|---|---:|---:|\n"
      "| bare tree filled anew with as many items | %.0f / %.0f | |\n",
      Half(tree), Most(tree));
  const auto print = [&](const char* name, const std::vector<double>& times) {
    std::printf("| %s | %.0f / %.0f | %.2f |\n", name, Half(times), Most(times), Half(times) / Half(tree));
  };
  print("page shown again", values(&Refill::page));
  print("entry moved", values(&Refill::moving));
}

// Programs that the machine has while this object lives: half of them in the start menu, half registered.
class InstalledPrograms {
 public:
  InstalledPrograms() {
    constexpr size_t kHalf = kPrograms / 2;
    menu_.AddLinks(L"Bench linked ", MakeFile(L"program.exe"), kHalf);
    for (size_t number = 0; number < kHalf; ++number) {
      const std::wstring name = L"Bench product " + std::to_wstring(number);
      auto key = std::make_unique<TestRegistryKey>(HKEY_LOCAL_MACHINE, kUninstall + name);
      key->SetString(L"DisplayName", name);
      key->SetString(L"DisplayIcon", MakeFile(name + L".exe"));
      keys_.push_back(std::move(key));
    }
  }

 private:
  static constexpr wchar_t kUninstall[] = LR"(Software\Microsoft\Windows\CurrentVersion\Uninstall\)";

  std::wstring MakeFile(const std::wstring& name) const {
    std::ofstream(folder_.Path() / name) << "program";
    return folder_.File(name);
  }

  const TemporaryFolder folder_;
  const StartMenuFolder menu_{FOLDERID_CommonPrograms};
  std::vector<std::unique_ptr<TestRegistryKey>> keys_;
};

void PrintEditor(Client& client) {
  std::vector<double> combos;
  constexpr size_t kRounds = 11;
  std::vector<double> few(kRounds);
  std::vector<double> many;
  std::ranges::generate(few, [&] { return client.MeasureEditor(); });
  const InstalledPrograms programs;
  for (size_t round = 0; round < kRounds; ++round) {
    combos.push_back(client.MeasureNameCombo());
    many.push_back(client.MeasureEditor());
  }
  std::printf(
      "\n| editor of an autostart entry | p50 / most | above combo box |\n|---|---:|---:|\n"
      "| combo box filled with 1,000 names | %.0f / %.0f | |\n"
      "| editor opened, with the programs of a new machine | %.0f / %.0f | |\n"
      "| editor opened, with 1,000 more | %.0f / %.0f | %.0f |\n",
      Half(combos), Most(combos), Half(few), Most(few), Half(many), Most(many), Half(many) - Half(combos));
}

void PrintMemory(const PerSubject<Outcome>& outcomes) {
  std::puts("\n| memory | bare | 10 | 10,000 | 10,000 above 10 |\n|---|---:|---:|---:|---:|");
  const auto print = [&](const char* name, double Outcome::*memory) {
    std::printf("| %s |", name);
    std::array<double, kSubjects.size()> halves{};
    for (const Subject subject : kSubjects) {
      double& half = halves[static_cast<size_t>(subject)];
      half = Half(Values(outcomes, subject, [&](const Outcome& outcome) { return outcome.*memory; }));
      std::printf(" %.1f MB |", half);
    }
    std::printf(" %.1f MB |\n", halves[2] - halves[1]);
  };
  print("of the process alone", &Outcome::ownMemory);
  print("resident", &Outcome::residentMemory);
}

void Compare() {
  const RegisteredService service;
  const auto hurried = MeasureProcesses(3, Beginning::Hurried);

  Client client;
  const auto quiet = MeasureProcesses(7, Beginning::Quiet);
  std::vector<double> combos;
  const auto later = InTurns<Sample>(21, [&](Subject subject) {
    if (subject == Subject::Bare) combos.push_back(client.MeasureCombo());
    return client.Measure(subject);
  });
  const double combo = Half(combos);

  std::puts(
      "| first page drawn | bare | 10 profiles | 10,000 profiles | 10 above bare | 10 to bare | selector to combo box "
      "|\n|---|---:|---:|---:|---:|---:|---:|");
  const auto openingOfFirst = [](const Outcome& outcome) { return outcome.sample.opening; };
  PrintOpening("first in a process, with the logging service to be started", hurried, combo, openingOfFirst);
  PrintOpening("first in a process", quiet, combo, openingOfFirst);
  PrintOpening("later", later, combo, [](const Sample& sample) { return sample.opening; });
  PrintPages(later, combo);
  PrintRemoving(later, combos);
  std::vector<Refill> refills(21);
  std::ranges::generate(refills, [&] { return client.MeasureRefill(); });
  PrintRefill(refills);
  PrintEditor(client);
  PrintMemory(quiet);
}

}  // namespace

int wmain(int count, wchar_t** words) {  // NOLINT(bugprone-exception-escape): whoever runs it sees how it ends
  const std::span arguments(words, static_cast<size_t>(count));
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  UseLogger();
  if (count == 4 && arguments[1] == kFirstSheet) {
    TellOutcome(static_cast<Subject>(std::stoi(arguments[2])), static_cast<Beginning>(std::stoi(arguments[3])));
  } else {
    Compare();
  }
  StopLogger();
  CoUninitialize();
  return 0;
}
