// The command line of the real program.
#include <windows.h>

#include <gmock/gmock.h>
#include <objbase.h>

#include <filesystem>

#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/ComPointer.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/ProgramRun.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/WaitUntil.h"
#include "TraceLogManager/DailyLogFile.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr wchar_t kProgram[] = L"TraceLogManager.exe";
constexpr wchar_t kClassId[] = L"{904D1B57-4C3C-4F54-B426-1A62D5CAA8DE}";
constexpr wchar_t kInterfaceId[] = L"{518242CA-031C-4F57-88FE-492728B2B4E7}";
const std::wstring kClasses = LR"(Software\Classes\)";
const std::wstring kClassKey = kClasses + L"CLSID\\" + kClassId;
const std::wstring kInterfaceKey = kClasses + L"Interface\\" + kInterfaceId;

std::wstring ReadText(HKEY root, const std::wstring& key) {
  wchar_t text[MAX_PATH] = L"";
  DWORD size = sizeof(text);
  RegGetValueW(root, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size);
  return text;
}

bool Exists(HKEY root, const std::wstring& key) {
  RegistryKey opened;
  return opened.Open(root, key, KEY_READ) == ERROR_SUCCESS;
}

std::wstring TypeLibraryKey(HKEY root) {
  return kClasses + L"TypeLib\\" + ReadText(root, kInterfaceKey + L"\\TypeLib");
}

HRESULT Activate() {
  void* object = nullptr;
  CLSID id{};
  CLSIDFromString(kClassId, &id);
  const HRESULT result = CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_IUnknown, &object);
  ComPointer<IUnknown>(static_cast<IUnknown*>(object)).reset();
  return result;
}

class ComApartment {
 public:
  ComApartment() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
  ~ComApartment() { CoUninitialize(); }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
};

void Succeeds(const std::vector<std::wstring>& arguments) {
  const ProgramOutcome outcome = RunProgram(kProgram, arguments);
  EXPECT_EQ(outcome.exitCode, 0u);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.output, "");
}

// Runs a test for a registration of one kind; in the end there is none.
class RegistrationTest : public testing::TestWithParam<bool> {
 protected:
  RegistrationTest() {
    // Other tests may have left one of either kind.
    Succeeds({L"--unregister"});
    Succeeds({L"--unregister", L"--user"});
  }
  ~RegistrationTest() override { Run(L"--unregister"); }

  bool ForUser() const { return GetParam(); }
  HKEY Root() const { return ForUser() ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE; }
  HKEY OtherRoot() const { return ForUser() ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

  void Run(const std::wstring& action) const {
    Succeeds(ForUser() ? std::vector<std::wstring>{action, L"--user"} : std::vector{action});
  }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(ForAllAndForOne, RegistrationTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "User" : "Machine"; });

TEST_P(RegistrationTest, NamesTheProgramTheInterfaceAndTheTypeLibrary) {
  Run(L"--register");
  const std::wstring program = FindProgram(kProgram);
  EXPECT_EQ(ReadText(Root(), kClassKey + L"\\LocalServer32"), L'"' + program + L'"');
  EXPECT_EQ(ReadText(Root(), kInterfaceKey), L"ITraceLogManager");
  EXPECT_EQ(ReadText(Root(), kInterfaceKey + L"\\ProxyStubClsid32"), L"{00020424-0000-0000-C000-000000000046}");
  EXPECT_EQ(ReadText(Root(), TypeLibraryKey(Root()) + L"\\1.0\\0\\win64"), program);
  EXPECT_FALSE(Exists(OtherRoot(), kClassKey));
}

TEST_P(RegistrationTest, LetsComStartTheService) {
  Run(L"--register");
  if (!Exists(HKEY_CLASSES_ROOT, std::wstring(L"CLSID\\") + kClassId)) {
    GTEST_SKIP() << "This system does not look for classes of the user.";
  }
  ASSERT_TRUE(RegisteredService::WaitForEndOfServers());
  const ComApartment apartment;
  EXPECT_EQ(Activate(), S_OK);
  EXPECT_EQ(RegisteredService::Servers().size(), 1u);
}

TEST_P(RegistrationTest, LeavesNothingBehindWhenItIsRemoved) {
  Run(L"--register");
  const std::wstring typeLibrary = TypeLibraryKey(Root());
  EXPECT_TRUE(Exists(Root(), typeLibrary));
  Run(L"--unregister");
  for (const std::wstring& key : {kClassKey, kInterfaceKey, typeLibrary}) EXPECT_FALSE(Exists(Root(), key));
  Run(L"--unregister");
}

TEST_P(RegistrationTest, RepairsWhatPointsElsewhere) {
  Run(L"--register");
  const std::wstring key = kClassKey + L"\\LocalServer32";
  constexpr wchar_t kElsewhere[] = L"\"C:\\Moved\\TraceLogManager.exe\"";
  RegSetKeyValueW(Root(), key.c_str(), nullptr, REG_SZ, kElsewhere, sizeof(kElsewhere));
  Run(L"--register");
  EXPECT_EQ(ReadText(Root(), key), L'"' + FindProgram(kProgram) + L'"');
}

TEST(Registration, IsNeededToStartTheService) {
  Succeeds({L"--unregister"});
  ASSERT_TRUE(RegisteredService::WaitForEndOfServers());
  const ComApartment apartment;
  EXPECT_EQ(Activate(), REGDB_E_CLASSNOTREG);
}

namespace {

class ServiceProgramTest : public testing::Test {
 protected:
  ServiceProgramTest() {
    client_.Remove(L"TraceLevel");
    sources_.Remove(L"28");
  }

  void Log(uint32_t source, uint32_t level, const std::wstring& text) {
    EXPECT_EQ(log_.Append(LogFileRecord(source, level, text)), S_OK);
  }

  static std::wstring UniqueText(const std::wstring& text) {
    LARGE_INTEGER ticks{};
    QueryPerformanceCounter(&ticks);
    return text + L" " + std::to_wstring(ticks.QuadPart);
  }

  TestRegistryKey client_{HKEY_LOCAL_MACHINE, kClientKey};
  TestRegistryKey sources_{HKEY_LOCAL_MACHINE, std::wstring(kClientKey) + L"\\TraceLevels"};
  DailyLogFile log_{[] { return Singleton<PathData>::Get()->GetProgramDataPath(); }, LocalDate};
};

}  // namespace

TEST_F(ServiceProgramTest, SetsAndShowsLevels) {
  Succeeds({L"--level", L"2"});
  const ProgramOutcome outcome = RunProgram(kProgram, {L"--source-level", L"28=5", L"--show"});
  EXPECT_EQ(outcome.exitCode, 0u);
  EXPECT_THAT(outcome.output, AllOf(HasSubstr("Global level: 2 Error\n"), HasSubstr("    28  Database       5 Trace\n"),
                                    HasSubstr("     1  General        global\n"), HasSubstr(ToUtf8(log_.Path()))));
}

TEST_F(ServiceProgramTest, FollowsTheLogThroughAFilter) {
  const std::wstring before = UniqueText(L"before");
  const std::wstring after = UniqueText(L"after");
  const std::wstring hidden = UniqueText(L"hidden");
  Log(1, 2, hidden);
  Log(28, 4, hidden);
  Log(28, 2, before);
  RunningProgram program(kProgram, {L"--tail", L"--source", L"Database", L"--max-level", L"3"});
  EXPECT_TRUE(WaitUntil([&] { return program.Output().find(ToUtf8(before)) != std::string::npos; }));
  Log(1, 2, hidden);
  Log(28, 3, after);
  EXPECT_TRUE(WaitUntil([&] { return program.Output().find(ToUtf8(after)) != std::string::npos; }));
  EXPECT_THAT(program.Output(), testing::EndsWith("Database      Error  " + ToUtf8(before) + "\nDatabase      Info   " +
                                                  ToUtf8(after) + "\n"));
  EXPECT_THAT(program.Output(), Not(HasSubstr(ToUtf8(hidden))));
}

TEST_F(ServiceProgramTest, StopsFollowingWhenNobodyReads) {
  RunningProgram program(kProgram, {L"--tail"});
  const std::wstring text = UniqueText(L"one");
  Log(1, 2, text);
  EXPECT_TRUE(WaitUntil([&] { return program.Output().find(ToUtf8(text)) != std::string::npos; }));
  program.StopReading();
  Log(1, 2, text);
  EXPECT_EQ(program.WaitForEnd().exitCode, 0u);
}

TEST_F(ServiceProgramTest, RefusesWhatItDoesNotUnderstand) {
  const ProgramOutcome outcome = RunProgram(kProgram, {L"--level", L"9"});
  EXPECT_EQ(outcome.exitCode, 2u);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.error, "The command line is not understood: --level: \"9\" is no level from 1 to 5.\n");
}

TEST_F(ServiceProgramTest, AnswersHelpAndVersion) {
  for (const wchar_t* option : {L"--help", L"--version"}) {
    const ProgramOutcome outcome = RunProgram(kProgram, {option});
    EXPECT_EQ(outcome.exitCode, 0u);
    EXPECT_THAT(outcome.output, HasSubstr("TraceLogManager"));
    EXPECT_THAT(outcome.error, IsEmpty());
  }
}
