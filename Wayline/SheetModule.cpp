#include "Wayline/SheetModule.h"

#include <filesystem>

#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Format.h"

Failure SheetModule::Load() {
  const std::filesystem::path program = Singleton<PathData>::Get()->GetExecutablePath();
  const std::wstring file = (program.parent_path() / L"Pavise.dll").wstring();
  library_.reset(LoadLibraryW(file.c_str()));
  const FARPROC entry = library_ ? GetProcAddress(library_.get(), "ShowLoginProperties") : nullptr;
  if (entry == nullptr) {
    return Format(L"The module \"{}\" cannot be loaded.{}", file, ErrorSuffix(static_cast<int32_t>(GetLastError())));
  }
  showLoginProperties_ = reinterpret_cast<decltype(showLoginProperties_)>(reinterpret_cast<void*>(entry));
  return {};
}
