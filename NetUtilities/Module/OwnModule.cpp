#include "NetUtilities/Module/OwnModule.h"

#include <array>
#include <filesystem>

// The linker's name for the start of the module.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier,readability-identifier-naming)

HMODULE OwnModule() { return reinterpret_cast<HMODULE>(&__ImageBase); }

std::wstring ModuleFileName(HMODULE module) {
  std::array<wchar_t, MAX_PATH> file{};
  const DWORD length = GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size()));
  return std::filesystem::path(file.data(), file.data() + length).filename().wstring();
}

std::wstring OwnModuleBaseName() { return std::filesystem::path(ModuleFileName(OwnModule())).stem().wstring(); }
