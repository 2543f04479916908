#include "LoginProperties/ClientLibrary.h"

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Format.h"

namespace {

constexpr wchar_t kLibraryFile[] = L"WaylineDll.dll";

// Logs `message` and what the system says of the error `code`, where there is one.
void LogMissing(const std::wstring& message, DWORD code) {
  Log(LogLevel::Error, code != 0 ? message + SystemErrorText(code) : message);
  // A message that follows from this one tells of the same error, not of one that logging came across.
  SetLastError(code);
}

}  // namespace

ClientLibrary::~ClientLibrary() {
  if (module_ != nullptr) loader_.free(module_);
}

ClientLibrary& ClientLibrary::Get() {
  static ClientLibrary library;
  return library;
}

std::wstring ClientLibrary::LoadStringDb(ModuleId module, unsigned id, bool reserved) {
  if (module_ == nullptr) Bind();
  if (functions_.loadStringDb == nullptr) {
    LogMissing(L"LoadString_Db function not loaded from module", GetLastError());
    return {};
  }
  return functions_.loadStringDb(module, id, reserved);
}

void ClientLibrary::Bind() {
  module_ = loader_.load(kLibraryFile);
  if (module_ == nullptr) {
    const DWORD code = GetLastError();
    LogMissing(Format(L"Unable to load Library {}", kLibraryFile), code);
    return;
  }
  Find(functions_.loadStringDb, "_Z12LoadStringDbB5cxx118ModuleIdjb",
       Format(L"Unable to find LoadString_Db in {}", kLibraryFile));
  Find(functions_.loadStringWithSubS,
       "_Z18LoadStringWithSubSB5cxx118ModuleIdjbRKSt6vectorISt17basic_string_viewIwSt11char_traitsIwEESaIS4_EE",
       Format(L"Unable to find LoadStringWithSubS in {}", kLibraryFile));
  Find(functions_.getActiveProfileId, "_Z24GetActiveProfileIdExoprtv",
       Format(L"Unable to find GetActiveProfileId in {}", kLibraryFile));
  Find(functions_.getActiveProxyLocationId, "_Z24GetActiveProxyLocationIdv",
       Format(L"Unable to find GetActiveProxyLocationId in {}", kLibraryFile));
  Find(functions_.updateActiveProfilePreference, "_Z29UpdateActiveProfilePreference12PreferenceIdb",
       Format(L"Unable to find UpdateActivePreference in {}", kLibraryFile));
  Find(functions_.getFSMState, "_Z11GetFSMStatev", Format(L"Unable to find GetFSMState in {}", kLibraryFile));
}

template <typename Function>
void ClientLibrary::Find(Function& function, const char* symbol, const std::wstring& messageWhenMissing) {
  const FARPROC found = loader_.find(module_, symbol);
  if (found == nullptr) {
    LogMissing(messageWhenMissing, GetLastError());
    return;
  }
  // Through void*: the compiler warns of conversions between function types.
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}
