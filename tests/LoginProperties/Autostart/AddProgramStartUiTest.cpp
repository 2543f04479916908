// The dialog in which an autostart entry is edited: programs that are chosen, and started to try them out.

#include <windows.h>

#include <cderr.h>
#include <commdlg.h>
#include <gmock/gmock.h>
#include <shobjidl.h>
#include <windowsx.h>

#include <filesystem>
#include <fstream>

#include "LoginProperties/Autostart/BrowsedFile.h"
#include "LoginProperties/Autostart/DefaultBrowser.h"
#include "LoginProperties/Autostart/LaunchPlatform.h"
#include "LoginProperties/LoginPropertiesContext.h"
#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/ErrorText.h"
#include "tests/LoginProperties/Autostart/AddProgramDriver.h"
#include "tests/support/LaunchRecord.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"

namespace {

using std::filesystem::path;
using testing::Contains;
using testing::ElementsAre;

constexpr wchar_t kDefaultBrowser[] = L"Default Web Browser";

std::shared_ptr<PathData> Paths() { return Singleton<PathData>::Get(); }

// While it lives, the program that writes a record is the user's browser.
class RecordingBrowser {
 public:
  RecordingBrowser() {
    const std::wstring command = L'"' + LaunchRecord::Program().wstring() + L"\" \"%1\"";
    browser_.SetString(L"", L"Recording Browser");
    browserCommand_.SetString(L"", command);
    handler_.SetString(L"", command);
    FindBrowsers();
  }

 private:
  TestRegistryKey browser_{HKEY_LOCAL_MACHINE, LR"(software\clients\StartMenuInternet\Pavise Test)"};
  TestRegistryKey browserCommand_{HKEY_LOCAL_MACHINE,
                                  LR"(software\clients\StartMenuInternet\Pavise Test\shell\open\command)"};
  TestRegistryKey handler_{HKEY_CLASSES_ROOT, LR"(http\shell\open\command)"};
};

// While it lives, nobody knows which browser is the user's.
class NoBrowser {
 public:
  NoBrowser() {
    platform_->createInstance = [](REFCLSID, IUnknown*, DWORD, REFIID, void** object) -> HRESULT {
      return *object = nullptr, REGDB_E_CLASSNOTREG;
    };
  }

 private:
  const Substituted<LaunchPlatform> platform_{launchPlatform};
};

// A file that is there while this lives.
class WrittenFile {
 public:
  WrittenFile(path file, const std::string& text) : file_(std::move(file)) {
    create_directories(file_.parent_path());
    std::ofstream(file_, std::ios::binary) << text;
  }
  ~WrittenFile() {
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
  }
  WrittenFile(const WrittenFile&) = delete;
  WrittenFile& operator=(const WrittenFile&) = delete;

 private:
  path file_;
};

class AddProgramStart : public testing::Test {
 protected:
  AddProgramStart() {
    item_->fields.name = L"Recorder";
    item_->fields.program = LaunchRecord::Program().wstring();
  }

  AutoStartItem::Fields& Entry() { return item_->fields; }

  // Starts the entry as the dialog shows it, and waits for what the program writes down.
  void Try() {
    const AddProgramDriver dialog(item_);
    dialog.Press(IDC_PROGRAM_TEST);
    record_.Take();
    EXPECT_TRUE(dialog.IsOpen());
  }

  std::wstring MessageOfTry() {
    const AddProgramDriver dialog(item_);
    const ShownMessageBox shown = dialog.PressAndAnswer(IDC_PROGRAM_TEST);
    EXPECT_EQ(shown.owner, dialog.Window());
    EXPECT_TRUE(dialog.IsOpen());
    return shown.text;
  }

  // What the file dialog of the system is told, which the dialog has brought up.
  static void ChooseInFileDialog(const AddProgramDriver& dialog, const std::wstring& file) {
    constexpr int kFileName = 0x480;
    constexpr int kFileNames = 0x47c;
    HWND chooser = nullptr;
    ASSERT_TRUE(WaitUntil([&] { return (chooser = dialog.OtherDialog()) != nullptr; }));
    HWND field = GetDlgItem(chooser, kFileName);
    if (field == nullptr) field = GetDlgItem(chooser, kFileNames);
    ASSERT_NE(field, nullptr);
    SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(file.c_str()));
    PostMessageW(chooser, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(WaitUntil([chooser] { return !IsWindow(chooser); }));
    SendMessageW(dialog.Window(), WM_NULL, 0, 0);
  }

  LaunchRecord record_;
  TemporaryFolder folder_;
  std::shared_ptr<AutoStartItem> item_ = std::make_shared<AutoStartItem>();
};

std::wstring FileNotFound(const std::wstring& program, DWORD error = ERROR_FILE_NOT_FOUND) {
  return SystemErrorText(error) + L"\n\n" + program;
}

}  // namespace

// Test

TEST_F(AddProgramStart, TestStartsTheProgramInItsDirectoryAndSize) {
  Entry().directory = folder_.Path().wstring();
  Entry().parameters = LR"(/quiet "two words" say=\"hi\" & %PATH%)";
  Entry().initialSize = 2;
  Try();
  EXPECT_THAT(record_.Texts("argument"), ElementsAre(L"/quiet", L"two words", L"say=\"hi\"", L"&", L"%PATH%"));
  EXPECT_TRUE(equivalent(path(record_.Text("directory")), folder_.Path()));
  EXPECT_EQ(record_.Text("show"), std::to_wstring(SW_SHOWMINIMIZED));
}

TEST_F(AddProgramStart, TestShowsTheProgramInEachSize) {
  const AddProgramDriver dialog(item_);
  const int shows[] = {SW_SHOWNORMAL, SW_SHOWMAXIMIZED, SW_SHOWMINIMIZED};
  for (int index = 0; index < 3; ++index) {
    dialog.PickIndex(IDC_PROGRAM_SIZE, index);
    dialog.Press(IDC_PROGRAM_TEST);
    record_.Take();
    EXPECT_EQ(record_.Text("show"), std::to_wstring(shows[index]));
  }
}

TEST_F(AddProgramStart, TestStartsWhatIsTypedAndStoresNothing) {
  Entry().program = L"C:\\missing.exe";
  Entry().parameters = L"stored";
  const AddProgramDriver dialog(item_);
  dialog.Type(IDC_PROGRAM_FILE, L"  LaunchedProgram.exe ");
  dialog.Type(IDC_PROGRAM_DIRECTORY, L" " + LaunchRecord::Program().parent_path().wstring() + L"\\ ");
  dialog.Type(IDC_PROGRAM_PARAMETERS, L"typed");
  dialog.Press(IDC_PROGRAM_TEST);
  record_.Take();
  EXPECT_THAT(record_.Texts("argument"), ElementsAre(L"typed"));
  EXPECT_EQ(Entry().program, L"C:\\missing.exe");
  EXPECT_EQ(Entry().parameters, L"stored");
}

TEST_F(AddProgramStart, TestFindsTheProgramInItsDirectory) {
  Entry().program = L"LaunchedProgram.exe";
  Entry().directory = LaunchRecord::Program().parent_path().wstring();
  Try();
  EXPECT_TRUE(equivalent(path(record_.Text("directory")), LaunchRecord::Program().parent_path()));
}

TEST_F(AddProgramStart, TestStartsTheFileThatItHasFound) {
  static std::wstring started;
  started.clear();
  const Substituted platform(launchPlatform);
  platform->shellExecute = [](SHELLEXECUTEINFOW* info) -> BOOL { return started = info->lpFile, TRUE; };
  const WrittenFile file(folder_.Path() / L"orders.exe", "");
  Entry().program = L"orders.exe";
  Entry().directory = folder_.Path().wstring();
  const AddProgramDriver dialog(item_);
  dialog.Press(IDC_PROGRAM_TEST);
  EXPECT_EQ(started, folder_.File(L"orders.exe")) << "wherever the system would look for it";
}

TEST_F(AddProgramStart, TestReplacesTheVariablesOfTheParametersInAnyCase) {
  Entry().parameters = L"%Windir% %UserDir% %System% %Desktop% %StartMenuProg% %ProgramFiles%";
  for (int time = 0; time < 2; ++time) {
    // Paths with blanks are several arguments.
    Try();
    const std::wstring expected = Paths()->GetWindowsFolder() + L' ' + Paths()->GetProfileFolder() + L' ' +
                                  Paths()->GetSystemFolder() + L' ' + Paths()->GetDesktopFolder() + L' ' +
                                  Paths()->GetProgramsFolder() + L' ' + Paths()->GetProgramFilesFolder();
    EXPECT_TRUE(record_.Text("command").ends_with(expected)) << record_.Text("command");
    Entry().parameters = L"%WINDIR% %userdir% %sYsTeM% %desktop% %STARTMENUPROG% %programfiles%";
  }
}

TEST_F(AddProgramStart, TestReplacesTheVariablesOfTheDirectoryInAnyCase) {
  const std::pair<const wchar_t*, std::wstring> folders[] = {
      {L"%windir%", Paths()->GetWindowsFolder()},         {L"%WinDir%", Paths()->GetWindowsFolder()},
      {L"%userdir%", Paths()->GetProfileFolder()},        {L"%system%", Paths()->GetSystemFolder()},
      {L"%desktop%", Paths()->GetDesktopFolder()},        {L"%startMenuProg%", Paths()->GetProgramsFolder()},
      {L"%STARTMENUPROG%", Paths()->GetProgramsFolder()}, {L"%programFiles%", Paths()->GetProgramFilesFolder()},
  };
  for (const auto& [variable, folder] : folders) {
    Entry().directory = variable;
    Try();
    EXPECT_TRUE(equivalent(path(record_.Text("directory")), path(folder))) << variable;
  }
}

TEST_F(AddProgramStart, TestLeavesTheModeOfTheBrowserOut) {
  Entry().parameters = L"%browsermode% https://example.com";
  Try();
  EXPECT_THAT(record_.Texts("argument"), ElementsAre(L"https://example.com"));
}

TEST_F(AddProgramStart, TestNeverReplacesInTheProgram) {
  Entry().program = L"%windir%\\explorer.exe";
  EXPECT_EQ(MessageOfTry(), FileNotFound(Entry().program, ERROR_PATH_NOT_FOUND));
}

TEST_F(AddProgramStart, TestTellsThatTheProgramIsMissing) {
  Entry().program = folder_.File(L"missing.exe");
  Entry().directory = folder_.Path().wstring();
  EXPECT_EQ(MessageOfTry(), FileNotFound(Entry().program));
  Entry().program = L"missing.exe";
  EXPECT_EQ(MessageOfTry(), FileNotFound(L"missing.exe"));
}

TEST_F(AddProgramStart, TestSaysNothingWhenAFileCannotBeStarted) {
  const WrittenFile file(folder_.Path() / L"text.nothing-opens-this", "text");
  Entry().program = folder_.File(L"text.nothing-opens-this");
  const AddProgramDriver dialog(item_);
  dialog.Press(IDC_PROGRAM_TEST);
  EXPECT_EQ(dialog.OtherDialog(), nullptr);
}

TEST_F(AddProgramStart, TestIsThereForAProgramAlone) {
  Entry().program.clear();
  const AddProgramDriver dialog(item_);
  EXPECT_FALSE(dialog.IsEnabled(IDC_PROGRAM_TEST));
  dialog.Type(IDC_PROGRAM_FILE, L"   ");
  EXPECT_FALSE(dialog.IsEnabled(IDC_PROGRAM_TEST));
  dialog.Type(IDC_PROGRAM_FILE, L"  a");
  EXPECT_TRUE(dialog.IsEnabled(IDC_PROGRAM_TEST));
  dialog.Type(IDC_PROGRAM_FILE, L"");
  EXPECT_FALSE(dialog.IsEnabled(IDC_PROGRAM_TEST));
  // Whoever presses it all the same starts nothing.
  SendNotifyMessageW(dialog.Window(), WM_COMMAND, IDC_PROGRAM_TEST, 0);
  SendMessageW(dialog.Window(), WM_NULL, 0, 0);
  EXPECT_EQ(dialog.OtherDialog(), nullptr);
}

// The default browser

TEST_F(AddProgramStart, AnEntryForTheDefaultBrowserShowsAndStartsThat) {
  const RecordingBrowser browser;
  Entry().name = L"default web BROWSER";
  Entry().program = L"C:\\other.exe";
  Entry().parameters = L"https://example.com";
  {
    const AddProgramDriver dialog(item_);
    EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), LaunchRecord::Program().wstring());
    EXPECT_EQ(dialog.Text(IDC_PROGRAM_PARAMETERS), L"https://example.com");
    dialog.Type(IDC_PROGRAM_FILE, L"C:\\missing.exe");
    dialog.Press(IDC_PROGRAM_TEST);
    record_.Take();
    EXPECT_THAT(record_.Texts("argument"), ElementsAre(L"https://example.com"));
  }
  EXPECT_EQ(Entry().program, L"C:\\other.exe");
}

TEST_F(AddProgramStart, AnEntryForTheDefaultBrowserTellsThatThereIsNone) {
  const NoBrowser none;
  Entry().name = kDefaultBrowser;
  Entry().program = L"C:\\Browsers\\own.exe";
  AddProgramDriver dialog(item_);
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), L"C:\\Browsers\\own.exe") << "what is stored";
  EXPECT_EQ(dialog.PressAndAnswer(IDC_PROGRAM_TEST).text, FileNotFound(L"C:\\Browsers\\own.exe"));
  dialog.Close(IDOK);
  EXPECT_EQ(Entry().program, L"C:\\Browsers\\own.exe");
}

TEST_F(AddProgramStart, ADefaultBrowserThatIsActivatedNeedsNoFile) {
  static bool wasActivated;
  wasActivated = false;
  const Substituted platform(launchPlatform);
  platform->verifyVersion = [](OSVERSIONINFOEXW*, DWORD, DWORDLONG) -> BOOL { return TRUE; };
  platform->createInstance = [](REFCLSID id, IUnknown* outer, DWORD context, REFIID face, void** object) -> HRESULT {
    if (id != __uuidof(ApplicationActivationManager)) return CoCreateInstance(id, outer, context, face, object);
    wasActivated = true;
    return *object = nullptr, REGDB_E_CLASSNOTREG;
  };
  TestRegistryKey handler(HKEY_CLASSES_ROOT, LR"(http\shell\open\command)");
  handler.SetString(L"", L"LaunchWinApp.exe");
  FindBrowsers();
  Entry().name = kDefaultBrowser;
  const AddProgramDriver dialog(item_);
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), L"LaunchWinApp.exe");
  dialog.Press(IDC_PROGRAM_TEST);
  EXPECT_TRUE(wasActivated);
  EXPECT_EQ(dialog.OtherDialog(), nullptr);
}

// Installed programs

TEST_F(AddProgramStart, AChosenProgramFillsTheFields) {
  const path program = LaunchRecord::Program();
  TestRegistryKey key(HKEY_CURRENT_USER, LR"(Software\Microsoft\Windows\CurrentVersion\App Paths\Pavise Recorder.exe)");
  key.SetString(L"", program.wstring());
  Entry().program = L"C:\\missing.exe";
  Entry().parameters = L"/old";
  AddProgramDriver dialog(item_);
  ASSERT_THAT(dialog.Items(IDC_PROGRAM_NAME), Contains(L"Pavise Recorder"));
  EXPECT_EQ(dialog.Items(IDC_PROGRAM_NAME).back(), L"Recorder") << "the entry's own name";
  EXPECT_EQ(dialog.Values(IDC_PROGRAM_NAME).back(), 2u);
  EXPECT_EQ(dialog.Selected(IDC_PROGRAM_NAME), L"Recorder");
  dialog.Pick(IDC_PROGRAM_NAME, L"Pavise Recorder");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), program.wstring());
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_DIRECTORY), program.parent_path().wstring());
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_PARAMETERS), L"");
  dialog.Pick(IDC_PROGRAM_NAME, L"Recorder");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), program.wstring()) << "the own name changes no field";
  dialog.Pick(IDC_PROGRAM_NAME, L"Pavise Recorder");
  ASSERT_EQ(dialog.Close(IDOK), IDOK);
  EXPECT_EQ(Entry().name, L"Pavise Recorder");
  EXPECT_EQ(Entry().program, program.wstring());
  EXPECT_EQ(Entry().recordType, AutoStartRecordType::Program);
}

TEST_F(AddProgramStart, AChosenWebPageIsOpenedInTheDefaultBrowser) {
  const RecordingBrowser browser;
  const WrittenFile link(path(Paths()->GetProgramsFolder()) / L"Pavise Test Page.url",
                         "[InternetShortcut]\r\nURL=https://example.com/page\r\n");
  Entry().directory = L"C:\\old";
  const AddProgramDriver dialog(item_);
  dialog.Pick(IDC_PROGRAM_NAME, L"Pavise Test Page");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), LaunchRecord::Program().wstring());
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_DIRECTORY), L"");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_PARAMETERS), L"https://example.com/page");
  dialog.Press(IDC_PROGRAM_TEST);
  record_.Take();
  EXPECT_THAT(record_.Texts("argument"), ElementsAre(L"https://example.com/page"));
}

TEST_F(AddProgramStart, AChosenWebPageWithoutADefaultBrowserHasNoProgram) {
  const NoBrowser none;
  const WrittenFile link(path(Paths()->GetProgramsFolder()) / L"Pavise Test Page.url",
                         "[InternetShortcut]\r\nURL=https://example.com/page\r\n");
  const AddProgramDriver dialog(item_);
  dialog.Pick(IDC_PROGRAM_NAME, L"Pavise Test Page");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), L"");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_PARAMETERS), L"https://example.com/page");
  EXPECT_FALSE(dialog.IsEnabled(IDC_PROGRAM_TEST));
}

// Browse

TEST_F(AddProgramStart, ABrowsedFileFillsTheFields) {
  const WrittenFile file(folder_.Path() / L"Tools 2.0" / L"orders.new.exe", "");
  const std::wstring chosen = folder_.File(L"Tools 2.0\\orders.new.exe");
  Entry().program.clear();
  Entry().parameters = L"/old";
  AddProgramDriver dialog(item_);
  dialog.Press(IDC_PROGRAM_BROWSE);
  ASSERT_TRUE(WaitUntil([&] { return dialog.OtherDialog() != nullptr; }));
  EXPECT_EQ(TextOf(dialog.OtherDialog()), L"Select a program or file to autostart");
  EXPECT_EQ(GetWindow(dialog.OtherDialog(), GW_OWNER), dialog.Window());
  ChooseInFileDialog(dialog, chosen);
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), chosen);
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_DIRECTORY), folder_.File(L"Tools 2.0"));
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_PARAMETERS), L"/old");
  EXPECT_TRUE(dialog.IsEnabled(IDC_PROGRAM_TEST));
  EXPECT_FALSE(dialog.Text(IDC_PROGRAM_NAME).empty()) << "how much of it depends on how long the folder is";
}

TEST_F(AddProgramStart, ABrowsedFileGivesItsNameWithoutTheExtension) {
  const path chosen = path(Paths()->GetWindowsFolder()) / L"orders.new.exe";
  const WrittenFile file(chosen, "");
  const AddProgramDriver dialog(item_);
  dialog.Press(IDC_PROGRAM_BROWSE);
  ChooseInFileDialog(dialog, chosen.wstring());
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_NAME), L"orders.new");
}

TEST_F(AddProgramStart, ABrowsedFileWhoseNameIsBehindTheFirst50CharactersLeavesTheName) {
  constexpr size_t kRead = 50;
  std::wstring folder = Paths()->GetWindowsFolder() + L'\\';
  folder.append(kRead - 1 - folder.size(), L'x');
  std::filesystem::create_directory(folder);
  {
    const std::wstring chosen = folder + L"\\orders.exe";
    const WrittenFile file(chosen, "");
    const AddProgramDriver dialog(item_);
    dialog.Press(IDC_PROGRAM_BROWSE);
    ChooseInFileDialog(dialog, chosen);
    EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), chosen);
    EXPECT_EQ(dialog.Text(IDC_PROGRAM_NAME), L"Recorder");
  }
  std::filesystem::remove(folder);
}

TEST_F(AddProgramStart, ABrowsedFileLeavesADirectoryThatIsThere) {
  const WrittenFile file(folder_.Path() / L"orders.exe", "");
  Entry().directory = L"D:\\Orders";
  const AddProgramDriver dialog(item_);
  dialog.Press(IDC_PROGRAM_BROWSE);
  ChooseInFileDialog(dialog, folder_.File(L"orders.exe"));
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), folder_.File(L"orders.exe"));
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_DIRECTORY), L"D:\\Orders");
}

TEST_F(AddProgramStart, BrowsingLeavesTheCurrentFolderOfTheClient) {
  const path before = std::filesystem::current_path();
  const Substituted platform(launchPlatform);
  // As Windows does, and not every system.
  platform->openFileName = [](OPENFILENAMEW* choice) -> BOOL {
    std::filesystem::current_path(Paths()->GetWindowsFolder());
    return std::wstring(L"C:\\orders.exe").copy(choice->lpstrFile, choice->nMaxFile), TRUE;
  };
  const AddProgramDriver dialog(item_);
  dialog.Press(IDC_PROGRAM_BROWSE);
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), L"C:\\orders.exe");
  const path after = std::filesystem::current_path();
  std::filesystem::current_path(before);
  EXPECT_EQ(after, before);
}

TEST_F(AddProgramStart, BrowsingThatFailsIsTold) {
  const Substituted platform(launchPlatform);
  static DWORD error;
  platform->openFileName = [](OPENFILENAMEW*) -> BOOL { return FALSE; };
  platform->openFileError = []() -> DWORD { return error; };
  const AddProgramDriver dialog(item_);
  error = FNERR_BUFFERTOOSMALL;
  EXPECT_EQ(dialog.PressAndAnswer(IDC_PROGRAM_BROWSE).text,
            L"The path of this file is too long. Choose one with at most 259 characters, or move the file to another "
            L"folder.");
  error = CDERR_INITIALIZATION;
  EXPECT_EQ(dialog.PressAndAnswer(IDC_PROGRAM_BROWSE).text,
            L"The files cannot be shown. Type the path of the file instead. (Error 0x2)");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), LaunchRecord::Program().wstring());
}

TEST_F(AddProgramStart, ABrowsedStarterOfEdgeGivesEdge) {
  const WrittenFile file(folder_.Path() / L"launchwinapp.exe", "");
  const AddProgramDriver dialog(item_);
  dialog.Press(IDC_PROGRAM_BROWSE);
  ChooseInFileDialog(dialog, folder_.File(L"launchwinapp.exe"));
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), L"Microsoft Edge");
}

TEST_F(AddProgramStart, BrowsingBeginsWithTheProgramsOfTheStartMenu) {
  constexpr int kFileTypes = 0x470;
  const AddProgramDriver dialog(item_);
  dialog.Press(IDC_PROGRAM_BROWSE);
  HWND chooser = nullptr;
  ASSERT_TRUE(WaitUntil([&] { return (chooser = dialog.OtherDialog()) != nullptr; }));
  wchar_t shown[MAX_PATH] = {};
  SendMessageW(chooser, CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(shown));
  EXPECT_EQ(shown, Paths()->GetProgramsFolder());
  EXPECT_THAT(ItemsOf(GetDlgItem(chooser, kFileTypes)),
              ElementsAre(L"Executable Files (*.EXE;*.BAT)", L"All Files (*.*)"));
  PostMessageW(chooser, WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(WaitUntil([chooser] { return !IsWindow(chooser); }));
}

TEST_F(AddProgramStart, CancellingTheFileDialogChangesNothing) {
  const AddProgramDriver dialog(item_);
  dialog.Press(IDC_PROGRAM_BROWSE);
  HWND chooser = nullptr;
  ASSERT_TRUE(WaitUntil([&] { return (chooser = dialog.OtherDialog()) != nullptr; }));
  PostMessageW(chooser, WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(WaitUntil([chooser] { return !IsWindow(chooser); }));
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_NAME), L"Recorder");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), LaunchRecord::Program().wstring());
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_DIRECTORY), L"");
}
