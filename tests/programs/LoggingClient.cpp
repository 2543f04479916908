// A client that logs through a module as the product does, and no more than that, so that a test can have many of them.
//
//   LoggingClient NAME THREADS COUNT [OPTION...]
//
//   NAME      what each thread calls its messages, with the number of the thread behind it; both from 0
//   COUNT     how many messages each thread logs
//   OPTION    source=NUMBER   of the messages, in place of 1
//             level=NUMBER    of the messages, in place of 2
//             no-service      the module delivers the messages to nobody
//             keep-module     the process ends as soon as all has been logged, with the module loaded
//             stay            the process keeps its connection to the service, and goes on until somebody ends it
//
// Ends with 7 when nothing has ended it before.

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/programs/LoggingModule.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/WaitUntil.h"

namespace {

constexpr int kDone = 7;
constexpr int kFailed = 1;
constexpr int kNotUnderstood = 2;
constexpr wchar_t kModule[] = L"LoggingModule.dll";

class Options {
 public:
  explicit Options(std::vector<std::wstring_view> texts) : texts_(std::move(texts)) {}

  bool Has(std::wstring_view text) const { return std::ranges::find(texts_, text) != texts_.end(); }

  uint16_t Number(std::wstring_view name, uint16_t otherwise) const {
    for (const std::wstring_view text : texts_) {
      if (text.starts_with(name)) return static_cast<uint16_t>(std::stoi(std::wstring(text.substr(name.size()))));
    }
    return otherwise;
  }

 private:
  std::vector<std::wstring_view> texts_;
};

void LogInThreads(const LoadedModule& module, const std::wstring& name, int threadCount, int count,
                  const Options& options) {
  const uint16_t source = options.Number(L"source=", 1);
  const uint16_t level = options.Number(L"level=", 2);
  const auto log = module.Find<decltype(&LogNumbers)>("LogNumbers");
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back([=] { log(source, level, (name + L' ' + std::to_wstring(thread)).c_str(), count); });
  }
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc < 4) return kNotUnderstood;
  const Options options({argv + 4, argv + argc});
  {
    const LoadedModule module(kModule);
    if (module.Handle() == nullptr) return kFailed;
    if (options.Has(L"no-service")) module.Find<decltype(&SendLinesTo)>("SendLinesTo")([](const wchar_t*) {});
    module.Find<decltype(&HoldService)>("HoldService")(options.Has(L"stay"));
    LogInThreads(module, argv[1], std::stoi(argv[2]), std::stoi(argv[3]), options);
    if (options.Has(L"stay")) Sleep(INFINITE);
    if (options.Has(L"keep-module")) ExitProcess(kDone);
  }
  return WaitUntil([] { return GetModuleHandleW(kModule) == nullptr; }, std::chrono::hours(1)) ? kDone : kFailed;
}
