// What becomes of the connection to the logging service when COM fails. What works is tested with the real service.

#include "NetUtilities/Logger/TraceLogService.h"

#include <gmock/gmock.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Logger/TraceLogPlatform.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/DebugRecorder.h"
#include "tests/support/FaultPlan.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"
#include "TraceLogManager/TraceLogManager.h"

namespace {

using testing::ElementsAre;

FaultPlan plan;

// What the steps of a connection fail with, in order.
constexpr std::array<HRESULT, 3> kFailures = {REGDB_E_CLASSNOTREG, CO_E_SERVER_EXEC_FAILURE, E_NOINTERFACE};

// The service, in this process. It counts who holds it, and only notes what it gets.
class Manager final : public ITraceLogManager {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (plan.Fails()) return kFailures[2];
    EXPECT_TRUE(IsEqualIID(id, IID_ITraceLogManager));
    *object = this;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }

  HRESULT STDMETHODCALLTYPE GetGlobalLogLevel(unsigned short* level) override { return *level = 3, result; }
  HRESULT STDMETHODCALLTYPE GetSourceLogLevel(ULONG source, unsigned short* level) override {
    return *level = static_cast<unsigned short>(source % 5), result;
  }
  HRESULT STDMETHODCALLTYPE LogMessage(ULONG, unsigned short, BSTR text) override {
    texts.emplace_back(text, SysStringLen(text));
    return result;
  }

  // Nobody calls these.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetSourceCount(ULONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetSourceName(ULONG, BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetGlobalLogLevel(unsigned short) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetLogFolder(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetSourceLogLevel(ULONG, unsigned short) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetLogFile(BSTR*) override { return E_NOTIMPL; }

  ULONG references = 0;
  HRESULT result = S_OK;  // of what the module calls
  std::vector<std::wstring> texts;
};

class TraceLogServiceTest : public testing::Test {
 protected:
  TraceLogServiceTest() {
    manager = &manager_;
    plan.Arm(0, FaultPlan::Mode::Once);
    platform_->createInstance = [](REFCLSID id, LPUNKNOWN outer, DWORD context, REFIID interfaceId,
                                   LPVOID* object) -> HRESULT {
      EXPECT_TRUE(IsEqualCLSID(id, CLSID_TraceLogManager));
      EXPECT_EQ(outer, nullptr);
      EXPECT_EQ(context, DWORD{CLSCTX_LOCAL_SERVER});
      EXPECT_TRUE(IsEqualIID(interfaceId, IID_IUnknown));
      if (plan.Fails()) return kFailures[0];
      manager->AddRef();
      *object = static_cast<IUnknown*>(manager);
      return S_OK;
    };
    platform_->run = [](LPUNKNOWN object) -> HRESULT {
      EXPECT_EQ(object, static_cast<IUnknown*>(manager));
      return plan.Fails() ? kFailures[1] : S_OK;
    };
  }

  static std::unique_ptr<LogService> Connect() {
    int32_t result = E_UNEXPECTED;
    auto service = ConnectTraceLogManager(result);
    EXPECT_EQ(result, S_OK);
    return service;
  }

  inline static Manager* manager;
  Manager manager_;
  const Substituted<TraceLogPlatform> platform_{traceLogPlatform};
};

TEST_F(TraceLogServiceTest, AServiceThatIsJustEndingIsAskedAgain) {
  for (const HRESULT ending : {E_FAIL, CO_E_SERVER_STOPPING}) {
    static HRESULT answer;
    static int calls;
    answer = ending;
    calls = 0;
    platform_->createInstance = [](REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID* object) -> HRESULT {
      if (++calls < 3) return answer;
      manager->AddRef();
      *object = static_cast<IUnknown*>(manager);
      return S_OK;
    };
    EXPECT_NE(Connect(), nullptr);
    EXPECT_EQ(calls, 3);
    calls = -100;
    int32_t result = S_OK;
    EXPECT_EQ(ConnectTraceLogManager(result), nullptr) << "not for ever";
    EXPECT_EQ(result, ending);
  }
}

// One for each step, and for each whether later ones would fail, too.
class TraceLogServiceFaults : public TraceLogServiceTest, public testing::WithParamInterface<FaultPlan::Mode> {};

TEST_P(TraceLogServiceFaults, OfAnyStepEndTheConnectionAndReleaseWhatThereWas) {
  for (size_t step = 0; step < kFailures.size(); ++step) {
    SCOPED_TRACE(step);
    plan.Arm(static_cast<int>(step) + 1, GetParam());
    int32_t result = E_UNEXPECTED;
    EXPECT_EQ(ConnectTraceLogManager(result), nullptr);
    EXPECT_EQ(result, kFailures[step]);
    EXPECT_EQ(plan.Calls(), static_cast<int>(step) + 1) << "Nothing is tried after it.";
    EXPECT_EQ(manager_.references, 0u);
  }
  plan.Arm(static_cast<int>(kFailures.size()) + 1, GetParam());
  auto service = Connect();
  EXPECT_FALSE(plan.WasHit());
  ASSERT_NE(service, nullptr);
  EXPECT_EQ(manager_.references, 1u);
  service.reset();
  EXPECT_EQ(manager_.references, 0u);
}

TEST_P(TraceLogServiceFaults, OfAnyStepAreToldToTheDebugger) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.SetDword(kDebugOutputValue, 1);
  InOwnProcess([this] {
    DebugRecorder debugger;
    for (size_t step = 0; step < kFailures.size(); ++step) {
      SCOPED_TRACE(step);
      plan.Arm(static_cast<int>(step) + 1, GetParam());
      LogFilter filter;
      const auto logger = std::make_shared<Logger>(filter);
      EXPECT_TRUE(logger->Initialize());
      logger->Stop();
      EXPECT_THAT(debugger.Take(), ElementsAre("TARN: Unable to Create Instance of TraceLogManager!" +
                                               ToUtf8(ErrorSuffix(kFailures[step])) + "\n"));
      EXPECT_EQ(manager_.references, 0u);
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Fault, TraceLogServiceFaults,
                         testing::Values(FaultPlan::Mode::Once, FaultPlan::Mode::FromThenOn),
                         [](const auto& mode) { return mode.param == FaultPlan::Mode::Once ? "Once" : "FromThenOn"; });

TEST_F(TraceLogServiceTest, AMessageWithoutMemoryIsNotSentAndTheNextOneIs) {
  platform_->allocateText = [](const OLECHAR* text, UINT length) -> BSTR {
    return plan.Fails() ? nullptr : SysAllocStringLen(text, length);
  };
  const auto service = Connect();
  plan.Arm(2, FaultPlan::Mode::Once);
  EXPECT_EQ(service->LogMessage(1, 2, L"first"), S_OK);
  EXPECT_EQ(service->LogMessage(1, 2, L"second"), E_OUTOFMEMORY);
  EXPECT_EQ(service->LogMessage(1, 2, L"third"), S_OK);
  EXPECT_THAT(manager_.texts, ElementsAre(L"first", L"third"));
}

TEST_F(TraceLogServiceTest, ReturnsWhatTheServiceReturns) {
  const auto service = Connect();
  uint16_t level = 0;
  for (const HRESULT result : {S_OK, E_FAIL, RPC_E_DISCONNECTED}) {
    manager_.result = result;
    EXPECT_EQ(service->GetGlobalLevel(level), result);
    EXPECT_EQ(service->GetSourceLevel(28, level), result);
    EXPECT_EQ(service->LogMessage(28, 2, L"x"), result);
  }
}

TEST_F(TraceLogServiceTest, ALoggerWithoutComReportsItAndAsksForNoService) {
  static std::vector<std::wstring> reports;
  reports.clear();
  const Substituted machine(logPlatform);
  machine->enterServiceThread = [] { return int32_t{E_OUTOFMEMORY}; };
  machine->reportToFile = [](std::wstring_view line) { reports.emplace_back(line); };
  LogFilter filter;
  const auto logger = std::make_shared<Logger>(filter);
  plan.Arm(1, FaultPlan::Mode::Once);
  logger->Initialize();
  logger->Stop();
  EXPECT_THAT(reports,
              ElementsAre(L"Error: Unable to initialize COM for the TraceLogManager!" + ErrorSuffix(E_OUTOFMEMORY)));
  EXPECT_FALSE(plan.WasHit());
}

TEST(TraceLogServiceThread, IsOfTheMultithreadedApartmentOrNone) {
  std::jthread([] {
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    EXPECT_EQ(logPlatform.enterServiceThread(), RPC_E_CHANGED_MODE);
    CoUninitialize();
  }).join();
  std::jthread([] {
    EXPECT_EQ(logPlatform.enterServiceThread(), S_OK);
    EXPECT_EQ(logPlatform.enterServiceThread(), S_FALSE) << "It is so already.";
    logPlatform.leaveServiceThread();
    logPlatform.leaveServiceThread();
  }).join();
}

}  // namespace
