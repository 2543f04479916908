// The real service, started by COM and called as the client's processes call it.
#include <windows.h>

#include <gmock/gmock.h>
#include <ole2.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/ComPointer.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FileBytes.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/ProgramRun.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/WaitUntil.h"
#include "TraceLogManager/DailyLogFile.h"
#include "TraceLogManager/TraceLogManager.h"

using testing::ElementsAre;

namespace {

constexpr ULONG kGeneral = 1;
constexpr ULONG kDatabase = 28;
constexpr unsigned short kError = 2;
constexpr unsigned short kInfo = 3;

const std::wstring kSourceLevelsKey = std::wstring(kClientKey) + L"\\TraceLevels";

AutomationText MakeText(const std::wstring& text) {
  return AutomationText(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
}

// This thread calls COM.
class ComApartment {
 public:
  ComApartment() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
  ~ComApartment() { CoUninitialize(); }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
};

// Connects as the module does.
ComPointer<ITraceLogManager> Connect() {
  void* object = nullptr;
  const HRESULT result = CoCreateInstance(CLSID_TraceLogManager, nullptr, CLSCTX_LOCAL_SERVER, IID_IUnknown, &object);
  const ComPointer<IUnknown> unknown(static_cast<IUnknown*>(object));
  if (FAILED(result) || FAILED(OleRun(unknown.get())) ||
      FAILED(unknown->QueryInterface(IID_ITraceLogManager, &object))) {
    throw std::runtime_error("There is no service: " + std::to_string(result));
  }
  return ComPointer<ITraceLogManager>(static_cast<ITraceLogManager*>(object));
}

HRESULT LogText(ITraceLogManager& service, ULONG source, unsigned short level, const std::wstring& text) {
  return service.LogMessage(source, level, MakeText(text).get());
}

std::wstring LogFilePath() {
  return DailyLogFile([] { return Singleton<PathData>::Get()->GetProgramDataPath(); }, LocalDate).Path();
}

// A text that no other test, and no other run of this one, logs.
std::wstring UniqueText(const std::wstring& text) {
  static int count = 0;
  LARGE_INTEGER ticks{};
  QueryPerformanceCounter(&ticks);
  return text + L" " + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(ticks.QuadPart) + L"-" +
         std::to_wstring(++count);
}

class ServiceTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { registration.emplace(); }
  static void TearDownTestSuite() { registration.reset(); }

  ServiceTest() {
    // Noted before the service changes them.
    client_.Remove(L"TraceLevel");
    sources_.Remove(L"28");
  }

  static std::optional<RegisteredService> registration;

  const ComApartment apartment_;
  TestRegistryKey client_{HKEY_LOCAL_MACHINE, kClientKey};
  TestRegistryKey sources_{HKEY_LOCAL_MACHINE, kSourceLevelsKey};
};

std::optional<RegisteredService> ServiceTest::registration;

}  // namespace

TEST_F(ServiceTest, KnowsItsSources) {
  const auto service = Connect();
  ULONG count = 0;
  EXPECT_EQ(service->GetSourceCount(&count), S_OK);
  EXPECT_EQ(count, 37u);
  const std::pair<ULONG, std::wstring> names[] = {
      {1, L"General"}, {8, L"Impersonation"}, {28, L"Database"}, {36, L"Source 36"}};
  for (const auto& [source, expected] : names) {
    BSTR name = nullptr;
    EXPECT_EQ(service->GetSourceName(source, &name), S_OK);
    const AutomationText owner(name);
    EXPECT_EQ(std::wstring(name, SysStringLen(name)), expected);
  }
}

TEST_F(ServiceTest, TellsWhereTheLogIs) {
  const auto service = Connect();
  BSTR folder = nullptr;
  EXPECT_EQ(service->GetLogFolder(&folder), S_OK);
  const AutomationText folderOwner(folder);
  EXPECT_EQ(std::wstring(folder), Singleton<PathData>::Get()->GetProgramDataPath());
  BSTR file = nullptr;
  EXPECT_EQ(service->GetLogFile(&file), S_OK);
  const AutomationText fileOwner(file);
  EXPECT_EQ(std::wstring(file), LogFilePath());
}

TEST_F(ServiceTest, LogsDetailsUnlessToldOtherwise) {
  const auto service = Connect();
  unsigned short level = 99;
  EXPECT_EQ(service->GetGlobalLogLevel(&level), S_OK);
  EXPECT_EQ(level, 4);
  EXPECT_EQ(service->GetSourceLogLevel(kDatabase, &level), S_OK);
  EXPECT_EQ(level, 0);
}

TEST_F(ServiceTest, KeepsLevelsInTheRegistry) {
  const auto service = Connect();
  EXPECT_EQ(service->SetGlobalLogLevel(2), S_OK);
  EXPECT_EQ(service->SetSourceLogLevel(kDatabase, 5), S_OK);
  EXPECT_EQ(ReadRegistryDword(HKEY_LOCAL_MACHINE, kClientKey, L"TraceLevel", 0), 2u);
  EXPECT_EQ(ReadRegistryDword(HKEY_LOCAL_MACHINE, kSourceLevelsKey, L"28", 0), 5u);
  unsigned short level = 99;
  EXPECT_EQ(service->GetGlobalLogLevel(&level), S_OK);
  EXPECT_EQ(level, 2);
  EXPECT_EQ(service->GetSourceLogLevel(kDatabase, &level), S_OK);
  EXPECT_EQ(level, 5);
  EXPECT_EQ(service->SetSourceLogLevel(kDatabase, 0), S_OK);
  EXPECT_EQ(service->GetSourceLogLevel(kDatabase, &level), S_OK);
  EXPECT_EQ(level, 0);
}

TEST_F(ServiceTest, RunningClientsSeeLevelsThatAreSetByCommand) {
  const auto service = Connect();
  unsigned short level = 99;
  EXPECT_EQ(service->GetGlobalLogLevel(&level), S_OK);
  EXPECT_EQ(level, 4);
  EXPECT_EQ(RunProgram(L"TraceLogManager.exe", {L"--level", L"5", L"--source-level", L"Database=1"}).exitCode, 0u);
  EXPECT_EQ(service->GetGlobalLogLevel(&level), S_OK);
  EXPECT_EQ(level, 5);
  EXPECT_EQ(service->GetSourceLogLevel(kDatabase, &level), S_OK);
  EXPECT_EQ(level, 1);
}

TEST_F(ServiceTest, WritesEachMessageAsALine) {
  const auto service = Connect();
  const std::wstring text = UniqueText(L"11/15 06:10:17.042 01a2c-0f3b8: text");
  EXPECT_EQ(LogText(*service, kDatabase, kError, text), S_OK);
  EXPECT_EQ(LogText(*service, kGeneral, kInfo, text), S_OK);
  EXPECT_THAT(FileBytes(LogFilePath()),
              testing::EndsWith("28 2 " + ToUtf8(text) + "\r\n 1 3 " + ToUtf8(text) + "\r\n"));
}

TEST_F(ServiceTest, WritesTextsOfEveryAlphabetAndSetsFurtherLinesIn) {
  const auto service = Connect();
  const std::wstring text = UniqueText(L"Z\u00fcrich \u0416 \u20ac \U0001F600");
  EXPECT_EQ(LogText(*service, kDatabase, kError, text + L"\r\nsecond"), S_OK);
  EXPECT_THAT(FileBytes(LogFilePath()), testing::EndsWith("28 2 " + ToUtf8(text) + "\r\n     second\r\n"));
}

TEST_F(ServiceTest, WritesLongTexts) {
  const auto service = Connect();
  const std::wstring text = UniqueText(std::wstring(100'000, L'x'));
  EXPECT_EQ(LogText(*service, kGeneral, kError, text), S_OK);
  EXPECT_THAT(FileBytes(LogFilePath()).ends_with(" 1 2 " + ToUtf8(text) + "\r\n"), true);
}

TEST_F(ServiceTest, WritesEmptyTexts) {
  const auto service = Connect();
  EXPECT_EQ(service->LogMessage(kGeneral, kError, nullptr), S_OK);
  EXPECT_THAT(FileBytes(LogFilePath()), testing::EndsWith("\n 1 2 \r\n"));
}

TEST_F(ServiceTest, HasItsMethodsWhereTheModuleCallsThem) {
  const auto service = Connect();
  void* const* const table = *reinterpret_cast<void* const* const*>(service.get());
  const auto globalLevel = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(void*, unsigned short*)>(table[10]);
  const auto sourceLevel = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(void*, ULONG, unsigned short*)>(table[13]);
  const auto logMessage = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(void*, ULONG, unsigned short, BSTR)>(table[15]);
  client_.SetDword(L"TraceLevel", 3);
  sources_.SetDword(L"28", 5);
  unsigned short level = 99;
  EXPECT_EQ(globalLevel(service.get(), &level), S_OK);
  EXPECT_EQ(level, 3);
  EXPECT_EQ(sourceLevel(service.get(), kDatabase, &level), S_OK);
  EXPECT_EQ(level, 5);
  const std::wstring text = UniqueText(L"by place");
  EXPECT_EQ(logMessage(service.get(), kDatabase, kError, MakeText(text).get()), S_OK);
  EXPECT_THAT(FileBytes(LogFilePath()), testing::EndsWith("28 2 " + ToUtf8(text) + "\r\n"));
}

TEST_F(ServiceTest, CanBeCalledByName) {
  const auto service = Connect();
  void* object = nullptr;
  ASSERT_EQ(service->QueryInterface(IID_IDispatch, &object), S_OK);
  const ComPointer<IDispatch> dispatch(static_cast<IDispatch*>(object));
  UINT count = 0;
  EXPECT_EQ(dispatch->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);

  std::wstring name = L"GetGlobalLogLevel";
  LPOLESTR names[] = {name.data()};
  DISPID id = DISPID_UNKNOWN;
  ASSERT_EQ(dispatch->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
  client_.SetDword(L"TraceLevel", 2);
  unsigned short level = 99;
  VARIANT argument;
  argument.vt = VT_UI2 | VT_BYREF;
  argument.puiVal = &level;
  DISPPARAMS parameters{&argument, nullptr, 1, 0};
  EXPECT_EQ(
      dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
      S_OK);
  EXPECT_EQ(level, 2);

  name = L"GetColor";
  names[0] = name.data();
  EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNNAME);
}

TEST_F(ServiceTest, RefusesSourcesAndLevelsThatDoNotExist) {
  const auto service = Connect();
  unsigned short level = 0;
  BSTR name = nullptr;
  EXPECT_EQ(service->GetSourceName(37, &name), E_INVALIDARG);
  EXPECT_EQ(service->GetSourceLogLevel(37, &level), E_INVALIDARG);
  EXPECT_EQ(service->SetSourceLogLevel(37, 1), E_INVALIDARG);
  EXPECT_EQ(service->SetSourceLogLevel(kDatabase, 6), E_INVALIDARG);
  EXPECT_EQ(service->SetGlobalLogLevel(0), E_INVALIDARG);
  EXPECT_EQ(service->SetGlobalLogLevel(6), E_INVALIDARG);
  const std::string before = FileBytes(LogFilePath());
  EXPECT_EQ(LogText(*service, 37, kError, L"lost"), E_INVALIDARG);
  EXPECT_EQ(LogText(*service, 0xFFFFFFFF, kError, L"lost"), E_INVALIDARG);
  EXPECT_EQ(FileBytes(LogFilePath()), before);
}

TEST_F(ServiceTest, SaysWhenAMessageCannotBeWritten) {
  const auto service = Connect();
  EXPECT_EQ(LogText(*service, kGeneral, kError, UniqueText(L"before")), S_OK);
  // A folder in the place of the file.
  const std::filesystem::path file = LogFilePath();
  const std::filesystem::path kept = file.parent_path() / L"kept.log";
  std::filesystem::rename(file, kept);
  std::filesystem::create_directory(file);
  EXPECT_TRUE(FAILED(LogText(*service, kGeneral, kError, L"lost")));
  std::filesystem::remove(file);
  std::filesystem::rename(kept, file);
  const std::wstring text = UniqueText(L"after");
  EXPECT_EQ(LogText(*service, kGeneral, kError, text), S_OK);
  EXPECT_THAT(FileBytes(file), testing::EndsWith(ToUtf8(text) + "\r\n"));
}

namespace {

// Logs numbered messages from several threads, each with a connection of its own, until `isEnough` says so.
void LogFromThreads(const std::wstring& client, const std::function<bool(int messages)>& isEnough) {
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 3; ++thread) {
    threads.emplace_back([&client, &isEnough, thread] {
      const ComApartment apartment;
      const auto service = Connect();
      for (int message = 0; !isEnough(message); ++message) {
        const std::wstring text = client + L" " + std::to_wstring(thread) + L" " + std::to_wstring(message);
        EXPECT_EQ(LogText(*service, kDatabase, kError, text), S_OK);
      }
    });
  }
}

// How many of the messages of `client` are in the log, by thread; they are there once each and in order.
std::map<int, int> CountMessages(const std::wstring& client) {
  const std::string start = "28 2 " + ToUtf8(client) + " ";
  std::map<int, int> counts;
  std::istringstream lines(FileBytes(LogFilePath()));
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(line.ends_with('\r')) << line;
    if (!line.starts_with(start)) continue;
    std::istringstream numbers(line.substr(start.size()));
    int thread = -1;
    int message = -1;
    numbers >> thread >> message;
    EXPECT_EQ(message, counts[thread]++) << line;
  }
  return counts;
}

}  // namespace

TEST_F(ServiceTest, ServesThreadsOfSeveralProcessesAtOnce) {
  constexpr int kMessages = 100;
  std::atomic<bool> otherHasEnded = false;
  std::atomic<bool> here = true;
  const std::wstring client = UniqueText(L"client");
  std::jthread logging(
      [&] { LogFromThreads(client, [&](int messages) { return !here || (messages >= kMessages && otherHasEnded); }); });
  InOwnProcess([&] {
    here = false;
    const std::wstring other = UniqueText(L"other");
    LogFromThreads(other, [](int messages) { return messages >= kMessages; });
    EXPECT_THAT(CountMessages(other),
                ElementsAre(testing::Pair(0, kMessages), testing::Pair(1, kMessages), testing::Pair(2, kMessages)));
  });
  otherHasEnded = true;
  logging.join();
  if (!here) return;
  const std::map<int, int> counts = CountMessages(client);
  EXPECT_EQ(counts.size(), 3u);
  for (const auto& [thread, count] : counts) EXPECT_GE(count, kMessages) << thread;
}

TEST_F(ServiceTest, NeitherAKilledClientNorAKilledServerHurtsTheOthers) {
  const auto service = Connect();
  const std::wstring before = UniqueText(L"before");
  EXPECT_EQ(LogText(*service, kGeneral, kError, before), S_OK);
  InOwnProcess([] {
    const auto other = Connect();
    EXPECT_EQ(LogText(*other, kGeneral, kError, UniqueText(L"killed")), S_OK);
    // This file says that the process ended before its test did, which is meant here.
    wchar_t unfinished[MAX_PATH];
    GetEnvironmentVariableW(L"TEST_PREMATURE_EXIT_FILE", unfinished, MAX_PATH);
    DeleteFileW(unfinished);
    TerminateProcess(GetCurrentProcess(), testing::Test::HasFailure() ? 1 : 0);
  });
  const std::wstring after = UniqueText(L"after");
  EXPECT_EQ(LogText(*service, kGeneral, kError, after), S_OK);
  EXPECT_THAT(FileBytes(LogFilePath()), testing::EndsWith(ToUtf8(after) + "\r\n"));

  // Wine never takes note of the killed client, so that this server would not end. A new one takes its place.
  RegisteredService::KillServers();
  EXPECT_EQ(LogText(*Connect(), kGeneral, kError, UniqueText(L"new server")), S_OK);
}

TEST_F(ServiceTest, ClientsThatFollowEachOtherHaveTheSameServer) {
  Connect().reset();
  const std::vector<DWORD> servers = RegisteredService::Servers();
  EXPECT_EQ(servers.size(), 1u);
  Connect().reset();
  EXPECT_EQ(RegisteredService::Servers(), servers);
}

TEST_F(ServiceTest, EndsSomeTimeAfterItsLastClientAndIsStartedAgain) {
  auto service = Connect();
  const std::vector<DWORD> servers = RegisteredService::Servers();
  ASSERT_EQ(servers.size(), 1u);
  // A client that keeps silent longer than a server waits without one.
  EXPECT_FALSE(WaitUntil([&] { return RegisteredService::Servers() != servers; }, std::chrono::seconds(7)));
  service.reset();
  EXPECT_TRUE(RegisteredService::WaitForEndOfServers());
  service = Connect();
  EXPECT_EQ(LogText(*service, kGeneral, kError, UniqueText(L"again")), S_OK);
}

TEST_F(ServiceTest, AnIdleServerEndsThoughNobodyEverCame) {
  RunningProgram server(L"TraceLogManager.exe", {L"-Embedding"});
  EXPECT_EQ(server.WaitForEnd().exitCode, 0u);
}
