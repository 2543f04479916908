#include "NetUtilities/Crash/CrashHandlers.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <chrono>

#include "NetUtilities/Crash/CrashDump.h"
#include "tests/support/LogCapture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Clock = std::chrono::steady_clock;

LONG WINAPI OtherFilter(EXCEPTION_POINTERS*) { return EXCEPTION_CONTINUE_SEARCH; }
void OtherHandler(const wchar_t*, const wchar_t*, const wchar_t*, unsigned, uintptr_t) {}
void OtherTerminate() {}

// Tests start with the handlers of another program; those of this one are back in the end.
class CrashHandlersTest : public testing::Test {
 protected:
  ~CrashHandlersTest() override {
    SetUnhandledExceptionFilter(filter_);
    _set_invalid_parameter_handler(handler_);
    std::set_terminate(terminate_);
  }

  static LPTOP_LEVEL_EXCEPTION_FILTER Filter() {
    LPTOP_LEVEL_EXCEPTION_FILTER filter = SetUnhandledExceptionFilter(nullptr);
    SetUnhandledExceptionFilter(filter);
    return filter;
  }

 private:
  LPTOP_LEVEL_EXCEPTION_FILTER filter_ = SetUnhandledExceptionFilter(OtherFilter);
  _invalid_parameter_handler handler_ = _set_invalid_parameter_handler(OtherHandler);
  std::terminate_handler terminate_ = std::set_terminate(OtherTerminate);
};

TEST_F(CrashHandlersTest, TakeThePlaceOfThoseThatAreThere) {
  CrashHandlers handlers;
  handlers.Install();
  EXPECT_EQ(Filter(), CrashDumpFilter);
  EXPECT_EQ(_get_invalid_parameter_handler(), InvalidParameterHandler);
  EXPECT_NE(std::get_terminate(), OtherTerminate);
}

TEST_F(CrashHandlersTest, AreNotInstalledByThemselves) {
  { const CrashHandlers handlers; }
  EXPECT_EQ(Filter(), OtherFilter);
  EXPECT_EQ(_get_invalid_parameter_handler(), OtherHandler);
  EXPECT_EQ(std::get_terminate(), OtherTerminate);
}

TEST_F(CrashHandlersTest, MakeWayAgainExceptForTheFilter) {
  CrashHandlers handlers;
  handlers.Install();
  handlers.Uninstall();
  EXPECT_EQ(Filter(), CrashDumpFilter);
  EXPECT_EQ(_get_invalid_parameter_handler(), OtherHandler);
  EXPECT_EQ(std::get_terminate(), OtherTerminate);
}

TEST_F(CrashHandlersTest, MakeWayAtTheEndOfTheirScope) {
  {
    CrashHandlers handlers;
    handlers.Install();
  }
  EXPECT_EQ(Filter(), CrashDumpFilter);
  EXPECT_EQ(_get_invalid_parameter_handler(), OtherHandler);
}

TEST_F(CrashHandlersTest, StayForInvalidParametersWhenThereWasNoHandlerBefore) {
  _set_invalid_parameter_handler(nullptr);
  CrashHandlers handlers;
  handlers.Install();
  handlers.Uninstall();
  EXPECT_EQ(_get_invalid_parameter_handler(), InvalidParameterHandler);
}

TEST_F(CrashHandlersTest, MakeWayOnlyOnce) {
  CrashHandlers handlers;
  handlers.Install();
  handlers.Uninstall();
  _set_invalid_parameter_handler(InvalidParameterHandler);
  std::set_terminate(nullptr);
  handlers.Uninstall();
  EXPECT_EQ(_get_invalid_parameter_handler(), InvalidParameterHandler);
  EXPECT_NE(std::get_terminate(), OtherTerminate);
}

// What was raised in a call of the handler for invalid parameters, which here goes on after it.
struct Raised {
  int count = 0;
  DWORD code = 0;
  DWORD flags = 0;
  DWORD parameters = 0;
  Clock::duration after{};  // since the call
  size_t messages = 0;      // logged by then
};

class InvalidParameterHandlerTest : public testing::Test {
 protected:
  InvalidParameterHandlerTest() : vectored_(AddVectoredExceptionHandler(1, Note)) {
    raised = {};
    log = &log_;
  }
  ~InvalidParameterHandlerTest() override { RemoveVectoredExceptionHandler(vectored_); }

  static void Call(const wchar_t* expression, const wchar_t* function, const wchar_t* file, unsigned line) {
    called = Clock::now();
    InvalidParameterHandler(expression, function, file, line, 0);
  }

  static LogCapture::Message Fatal(const wchar_t* text) { return {LogSource::General, LogLevel::Fatal, text}; }

  inline static Raised raised;
  LogCapture log_;

 private:
  static LONG CALLBACK Note(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode != kModuleException) return EXCEPTION_CONTINUE_SEARCH;
    raised = {raised.count + 1,        record.ExceptionCode,  record.ExceptionFlags,
              record.NumberParameters, Clock::now() - called, log->Messages().size()};
    return EXCEPTION_CONTINUE_EXECUTION;
  }

  inline static Clock::time_point called;
  inline static const LogCapture* log;
  void* vectored_;
};

TEST_F(InvalidParameterHandlerTest, RaisesTheModulesExceptionWhenTheLoggerHadTime) {
  Call(nullptr, nullptr, nullptr, 0);
  EXPECT_EQ(raised.count, 1);
  EXPECT_EQ(raised.code, 0xE0000001);
  EXPECT_EQ(raised.flags, 0u);
  EXPECT_EQ(raised.parameters, 0u);
  EXPECT_GE(raised.after, std::chrono::milliseconds(240));
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(InvalidParameterHandlerTest, LogsWhatTheDebugRuntimeKnows) {
  Call(L"size > 0", L"wcscpy_s", L"copy.cpp", 12);
  EXPECT_THAT(log_.Messages(),
              ElementsAre(Fatal(L"Invalid parameter detected in function wcscpy_s. File: copy.cpp Line: 12"),
                          Fatal(L"Expression: size > 0")));
  EXPECT_EQ(raised.messages, 2u) << "They come before the crash.";
}

TEST_F(InvalidParameterHandlerTest, LogsThePlaceOnlyWhenAllOfItIsKnown) {
  Call(nullptr, nullptr, L"copy.cpp", 12);
  Call(nullptr, L"wcscpy_s", nullptr, 12);
  Call(nullptr, L"wcscpy_s", L"copy.cpp", 0);
  EXPECT_THAT(log_.Messages(), IsEmpty());
  EXPECT_EQ(raised.count, 3);
}

TEST_F(InvalidParameterHandlerTest, LogsTheExpressionWithoutThePlace) {
  Call(L"size > 0", nullptr, nullptr, 0);
  EXPECT_THAT(log_.Messages(), ElementsAre(Fatal(L"Expression: size > 0")));
  EXPECT_EQ(raised.count, 1);
  EXPECT_EQ(raised.messages, 1u) << "It comes before the crash.";
}

}  // namespace
