#include "NetUtilities/Logger/TraceLogService.h"

#include <utility>

#include "NetUtilities/Logger/TraceLogPlatform.h"
#include "NetUtilities/Module/ComPointer.h"
#include "TraceLogManager/TraceLogManager.h"

TraceLogPlatform traceLogPlatform;

namespace {

class TraceLogService : public LogService {
 public:
  explicit TraceLogService(ComPointer<ITraceLogManager> manager) : manager_(std::move(manager)) {}

  int32_t GetGlobalLevel(uint16_t& level) override { return manager_->GetGlobalLogLevel(&level); }

  int32_t GetSourceLevel(uint32_t source, uint16_t& level) override {
    return manager_->GetSourceLogLevel(source, &level);
  }

  int32_t LogMessage(uint32_t source, uint16_t level, std::wstring_view text) override {
    const AutomationText copy(traceLogPlatform.allocateText(text.data(), static_cast<UINT>(text.size())));
    return copy ? manager_->LogMessage(source, level, copy.get()) : E_OUTOFMEMORY;
  }

 private:
  ComPointer<ITraceLogManager> manager_;
};

// A service that is just ending for want of clients turns one away that comes then; the next one starts it anew.
HRESULT CreateManager(void** object) {
  constexpr int kTries = 5;
  constexpr DWORD kPauseMilliseconds = 20;
  HRESULT result = E_FAIL;
  for (int tries = 0; tries < kTries && (result == E_FAIL || result == CO_E_SERVER_STOPPING); ++tries) {
    if (tries > 0) Sleep(kPauseMilliseconds);
    result = traceLogPlatform.createInstance(CLSID_TraceLogManager, nullptr, CLSCTX_LOCAL_SERVER, IID_IUnknown, object);
  }
  return result;
}

}  // namespace

std::unique_ptr<LogService> ConnectTraceLogManager(int32_t& result) {
  void* object = nullptr;
  result = CreateManager(&object);
  if (FAILED(result)) return nullptr;
  const ComPointer<IUnknown> unknown(static_cast<IUnknown*>(object));
  result = traceLogPlatform.run(unknown.get());
  if (FAILED(result)) return nullptr;
  result = unknown->QueryInterface(IID_ITraceLogManager, &object);
  if (FAILED(result)) return nullptr;
  return std::make_unique<TraceLogService>(ComPointer<ITraceLogManager>(static_cast<ITraceLogManager*>(object)));
}
