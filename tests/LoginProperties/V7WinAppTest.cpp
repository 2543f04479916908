#include "LoginProperties/V7WinApp.h"

#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "Database/SQLite/DatabasePlatform.h"
#include "LoginProperties/SettingsFile.h"
#include "NetUtilities/Crash/CrashDump.h"
#include "NetUtilities/Crash/CrashHandlers.h"
#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Module/Singleton.h"
#include "tests/support/FakeLogMachine.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/ResourceCounters.h"
#include "tests/support/Substituted.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

LONG WINAPI OtherFilter(EXCEPTION_POINTERS*) { return EXCEPTION_CONTINUE_SEARCH; }
void OtherHandler(const wchar_t*, const wchar_t*, const wchar_t*, unsigned, uintptr_t) {}

LPTOP_LEVEL_EXCEPTION_FILTER Filter() {
  LPTOP_LEVEL_EXCEPTION_FILTER filter = SetUnhandledExceptionFilter(nullptr);
  SetUnhandledExceptionFilter(filter);
  return filter;
}

HINSTANCE Instance() { return GetModuleHandleW(nullptr); }

// What happens in the exit, in order, each with what is there at that moment.
std::vector<std::string> events;
HGDIOBJ object = nullptr;

void Note(const std::string& what) {
  std::string event = what;
  if (GetObjectType(object) != 0) event += ", object there";
  if (V7WinApp::GdiObject() != nullptr) event += ", object kept";
  if (Singleton<Logger>::Exists()) event += ", Logger there";
  if (_get_invalid_parameter_handler() == InvalidParameterHandler) event += ", handler there";
  events.push_back(event);
}

struct First {
  ~First() { Note("first destroyed"); }
};

struct Second {
  ~Second() { Note("second destroyed"); }
};

// The module in a program with handlers of its own. A test of the exit takes a process of its own: it leaves nothing of
// what is there only once.
class V7WinAppTest : public testing::Test {
 protected:
  V7WinAppTest() {
    SetUnhandledExceptionFilter(OtherFilter);
    _set_invalid_parameter_handler(OtherHandler);
  }
  ~V7WinAppTest() override {
    SetUnhandledExceptionFilter(filter_);
    _set_invalid_parameter_handler(handler_);
  }

  V7WinApp application_;

 private:
  const Substituted<LogHandler> logHandler_{logHandler};
  const Substituted<DatabasePlatform> databasePlatform_{databasePlatform};
  LPTOP_LEVEL_EXCEPTION_FILTER filter_ = Filter();
  _invalid_parameter_handler handler_ = _get_invalid_parameter_handler();
};

TEST_F(V7WinAppTest, HandsTheModulesMessagesToItsLogger) {
  InOwnProcess([this] {
    FakeLogMachine machine;
    application_.InitInstance(Instance());
    Log(LogLevel::Error, L"from the module");
    EXPECT_TRUE(machine.WaitForSent(1));
    StopLogger();
  });
}

TEST_F(V7WinAppTest, ReadsTheSettingsDatabaseThatTheClientHasOpen) {
  application_.InitInstance(Instance());
  EXPECT_EQ(databasePlatform.settingsFile, SettingsFileOfClient);
}

TEST_F(V7WinAppTest, IsCalledPavise) { EXPECT_EQ(application_.Name(), L"Pavise"); }

TEST_F(V7WinAppTest, DoesNothingBeforeItIsInitialized) {
  EXPECT_EQ(application_.Module(), nullptr);
  EXPECT_EQ(Filter(), OtherFilter);
  EXPECT_EQ(_get_invalid_parameter_handler(), OtherHandler);
}

TEST_F(V7WinAppTest, InstallsTheHandlersOfCrashesAndKeepsItsInstance) {
  EXPECT_TRUE(application_.InitInstance(Instance()));
  EXPECT_EQ(Filter(), CrashDumpFilter);
  EXPECT_EQ(_get_invalid_parameter_handler(), InvalidParameterHandler);
  EXPECT_EQ(application_.Module(), Instance());
}

TEST_F(V7WinAppTest, InitializesTheCommonControls) {
  application_.InitInstance(Instance());
  for (const wchar_t* control : {WC_TREEVIEWW, WC_LISTVIEWW, UPDOWN_CLASSW, TOOLTIPS_CLASSW}) {
    HWND window = CreateWindowExW(0, control, nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, Instance(), nullptr);
    EXPECT_NE(window, nullptr) << control;
    DestroyWindow(window);
  }
}

TEST_F(V7WinAppTest, InitializationStartsNoLoggerAndMakesNoObject) {
  InOwnProcess([this] {
    const FakeLogMachine machine;
    application_.InitInstance(Instance());
    EXPECT_FALSE(Singleton<Logger>::Exists());
    EXPECT_EQ(machine.Happened().starts, 0);
    EXPECT_EQ(V7WinApp::GdiObject(), nullptr);
  });
}

TEST_F(V7WinAppTest, ExitDeletesTheObjectStopsTheLoggerDestroysTheSingletonsAndPutsTheHandlerBack) {
  InOwnProcess([this] {
    FakeLogMachine machine;
    machine.tracesLogger = true;
    logPlatform.reportToDebugger = [](std::wstring_view line) {
      if (line.find(L"Logger::Stop(") != std::wstring_view::npos) {
        Note(line.starts_with(L"Enter") ? "stop begins" : "stop ends");
      }
      if (line.starts_with(L"Exit") && line.find(L"Logger::~Logger(") != std::wstring_view::npos) {
        Note("Logger destroyed");
      }
    };
    application_.InitInstance(Instance());
    object = CreateSolidBrush(RGB(1, 2, 3));
    V7WinApp::KeepGdiObject(object);
    Singleton<First>::Get();
    Singleton<Logger>::Get()->Enqueue(LogSource::General, LogLevel::Error, L"queued");
    Singleton<Second>::Get();

    Note("exit begins");
    application_.ExitInstance();
    Note("exit ends");
    EXPECT_THAT(events,
                ElementsAre("exit begins, object there, object kept, Logger there, handler there",
                            "stop begins, Logger there, handler there", "stop ends, Logger there, handler there",
                            "second destroyed, Logger there, handler there", "Logger destroyed, handler there",
                            "first destroyed, handler there", "exit ends"));
    EXPECT_THAT(machine.AllSent(), SizeIs(1)) << "What is queued is delivered before the Logger ends.";
    EXPECT_EQ(_get_invalid_parameter_handler(), OtherHandler);
    EXPECT_EQ(Filter(), CrashDumpFilter) << "The end of a process is when crashes are likely.";
  });
}

TEST_F(V7WinAppTest, ExitDoesNotCreateALoggerInOrderToStopIt) {
  InOwnProcess([this] {
    FakeLogMachine machine;
    machine.tracesLogger = true;  // each of its operations is told to the debugger, its construction first
    application_.InitInstance(Instance());
    Singleton<First>::Get();
    ASSERT_FALSE(Singleton<Logger>::Exists());
    application_.ExitInstance();
    EXPECT_THAT(events, ElementsAre("first destroyed, handler there")) << "There was no Logger at that time.";
    EXPECT_THAT(machine.DebuggerReports(), IsEmpty());
    EXPECT_EQ(machine.Happened().starts, 0);
  });
}

TEST_F(V7WinAppTest, ExitLeavesTheModulesHandlerWhereThereWasNoneBefore) {
  InOwnProcess([this] {
    _set_invalid_parameter_handler(nullptr);
    application_.InitInstance(Instance());
    application_.ExitInstance();
    EXPECT_EQ(_get_invalid_parameter_handler(), InvalidParameterHandler);
  });
}

TEST_F(V7WinAppTest, ASecondExitDoesNothing) {
  InOwnProcess([this] {
    const FakeLogMachine machine;
    application_.InitInstance(Instance());
    V7WinApp::KeepGdiObject(CreateSolidBrush(RGB(1, 2, 3)));
    Singleton<First>::Get();
    Singleton<Logger>::Get()->Enqueue(LogSource::General, LogLevel::Error, L"queued");
    application_.ExitInstance();
    ASSERT_THAT(events, SizeIs(1));

    // By now they may be those of somebody else.
    _set_invalid_parameter_handler(InvalidParameterHandler);
    application_.ExitInstance();
    EXPECT_EQ(_get_invalid_parameter_handler(), InvalidParameterHandler);
    EXPECT_THAT(events, SizeIs(1));
    EXPECT_THAT(machine.AllSent(), SizeIs(1));
  });
}

TEST_F(V7WinAppTest, TheGdiObjectIsDeletedByTheExit) {
  InOwnProcess([this] {
    application_.InitInstance(Instance());
    const size_t before = CountGdiObjects();
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    V7WinApp::KeepGdiObject(brush);
    EXPECT_EQ(V7WinApp::GdiObject(), brush);
    EXPECT_EQ(CountGdiObjects(), before + 1);
    application_.ExitInstance();
    EXPECT_EQ(V7WinApp::GdiObject(), nullptr);
    EXPECT_EQ(CountGdiObjects(), before);
    EXPECT_EQ(GetObjectType(brush), 0u);
  });
}

TEST_F(V7WinAppTest, TheGdiObjectIsDeletedWhenAnotherTakesItsPlace) {
  InOwnProcess([] {
    const size_t before = CountGdiObjects();
    HFONT first = CreateFontW(20, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    HFONT second = CreateFontW(30, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    V7WinApp::KeepGdiObject(first);
    V7WinApp::KeepGdiObject(second);
    EXPECT_EQ(GetObjectType(first), 0u);
    V7WinApp::KeepGdiObject(second);
    EXPECT_EQ(GetObjectType(second), DWORD{OBJ_FONT}) << "It is kept a second time.";
    EXPECT_EQ(V7WinApp::GdiObject(), second);
    V7WinApp::KeepGdiObject(nullptr);
    EXPECT_EQ(V7WinApp::GdiObject(), nullptr);
    EXPECT_EQ(CountGdiObjects(), before);
  });
}

TEST_F(V7WinAppTest, MayBeInitializedAndEndedWithoutAnythingBetween) {
  InOwnProcess([this] {
    const size_t objects = CountGdiObjects();
    application_.InitInstance(Instance());
    application_.ExitInstance();
    EXPECT_EQ(CountGdiObjects(), objects);
    EXPECT_EQ(_get_invalid_parameter_handler(), OtherHandler);
  });
}

}  // namespace
