#include <windows.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include "LoginProperties/LoginPropertiesContext.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/WaitUntil.h"

namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAre;

// A function or variable that one binary takes from another: by name, or by ordinal when the name is empty.
struct Symbol {
  std::string name;
  unsigned ordinal = 0;
  bool operator==(const Symbol&) const = default;
};

// The tables of a loaded binary.
class Binary {
 public:
  explicit Binary(HMODULE module) : base_(reinterpret_cast<const BYTE*>(module)) {}

  // Ordinals of what is exported.
  std::vector<unsigned> ExportedOrdinals() const {
    std::vector<unsigned> ordinals;
    const auto* const addresses = At<DWORD>(Exports().AddressOfFunctions);
    for (DWORD index = 0; index < Exports().NumberOfFunctions; ++index) {
      if (addresses[index] != 0) ordinals.push_back(Exports().Base + index);
    }
    return ordinals;
  }

  // What is exported by name, with its ordinal.
  std::vector<Symbol> ExportedNames() const {
    std::vector<Symbol> symbols;
    const auto* const names = At<DWORD>(Exports().AddressOfNames);
    const auto* const indices = At<WORD>(Exports().AddressOfNameOrdinals);
    for (DWORD index = 0; index < Exports().NumberOfNames; ++index) {
      symbols.push_back({At<char>(names[index]), Exports().Base + indices[index]});
    }
    return symbols;
  }

  // What is imported from a library, when the binary is linked.
  std::vector<Symbol> ImportsFrom(const std::string& library) const {
    std::vector<Symbol> symbols;
    for (const auto* from = Directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT); from->Name != 0; ++from) {
      if (At<char>(from->Name) != library) continue;
      const auto* entry = At<IMAGE_THUNK_DATA64>(from->OriginalFirstThunk);
      for (; entry->u1.AddressOfData != 0; ++entry) {
        if (IMAGE_SNAP_BY_ORDINAL64(entry->u1.Ordinal)) {
          symbols.push_back({"", static_cast<unsigned>(IMAGE_ORDINAL64(entry->u1.Ordinal))});
        } else {
          symbols.push_back({At<IMAGE_IMPORT_BY_NAME>(static_cast<DWORD>(entry->u1.AddressOfData))->Name, 0});
        }
      }
    }
    return symbols;
  }

 private:
  template <typename T>
  const T* At(DWORD offset) const {
    return reinterpret_cast<const T*>(base_ + offset);
  }

  template <typename T>
  const T* Directory(int index) const {
    const auto* const headers = At<IMAGE_NT_HEADERS64>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
    return At<T>(headers->OptionalHeader.DataDirectory[index].VirtualAddress);
  }

  const IMAGE_EXPORT_DIRECTORY& Exports() const {
    return *Directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
  }

  const BYTE* base_;
};

std::vector<std::string> NamesOf(const std::vector<Symbol>& symbols) {
  std::vector<std::string> names;
  for (const Symbol& symbol : symbols) names.push_back(symbol.name);
  return names;
}

template <typename Function>
Function FindByOrdinal(const LoadedModule& module, WORD ordinal) {
  return module.Find<Function>(reinterpret_cast<const char*>(ULONG_PTR{ordinal}));
}

constexpr unsigned kProductDisplayName = 8110;
constexpr unsigned kIsConnected = 2;

class ModuleExports : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(pavise.Handle(), nullptr);
    ASSERT_NE(wayline.Handle(), nullptr);
  }

  const LoadedModule pavise{L"Pavise.dll"};
  const LoadedModule wayline{L"WaylineDll.dll"};
};

TEST_F(ModuleExports, OfTheModuleAreTheEntryAndTheDialogClassesAndNothingElse) {
  const Binary binary(pavise.Handle());
  EXPECT_THAT(NamesOf(binary.ExportedNames()),
              UnorderedElementsAre("ShowLoginProperties", "_ZN10BaseDialogC1ERKS_", "_ZN10BaseDialogC2ERKS_",
                                   "_ZN10BaseDialogaSERKS_", "_ZN14PropPageDialogC1ERKS_", "_ZN14PropPageDialogC2ERKS_",
                                   "_ZN14PropPageDialogaSERKS_", "_ZNK10BaseDialogcvPFjP6HWND__jP15_PROPSHEETPAGEWEEv",
                                   "_ZNK10BaseDialogcvPFxP6HWND__jyxEEv", "_ZNK10BaseDialogcvxEv", "_ZTV10BaseDialog",
                                   "_ZTV14PropPageDialog"));
  EXPECT_EQ(binary.ExportedOrdinals().size(), binary.ExportedNames().size());
}

TEST_F(ModuleExports, OfTheModuleCanAllBeFound) {
  for (const std::string& name : NamesOf(Binary(pavise.Handle()).ExportedNames())) {
    EXPECT_NE(pavise.Find(name.c_str()), nullptr) << name;
  }
}

TEST_F(ModuleExports, ThereIsOneVirtualTableOfEachDialogClass) {
  for (const char* table : {"_ZTV10BaseDialog", "_ZTV14PropPageDialog"}) {
    EXPECT_EQ(pavise.Find(table), wayline.Find(table)) << table;
  }
}

TEST_F(ModuleExports, OfTheClientLibraryHaveTwoOrdinalsWithoutNames) {
  const Binary binary(wayline.Handle());
  EXPECT_THAT(binary.ExportedOrdinals(), IsSupersetOf({kIsConnected, kProductDisplayName}));
  for (const Symbol& symbol : binary.ExportedNames()) {
    EXPECT_NE(symbol.ordinal, kIsConnected) << symbol.name;
    EXPECT_NE(symbol.ordinal, kProductDisplayName) << symbol.name;
  }
}

TEST_F(ModuleExports, OfTheClientLibraryWorkByOrdinal) {
  const auto productDisplayName = FindByOrdinal<std::wstring (*)(bool)>(wayline, kProductDisplayName);
  const auto isConnected = FindByOrdinal<uint32_t (*)()>(wayline, kIsConnected);
  ASSERT_NE(productDisplayName, nullptr);
  ASSERT_NE(isConnected, nullptr);
  EXPECT_EQ(productDisplayName(false), L"Wayline");
  EXPECT_EQ(isConnected(), 0u) << "There is no connection without settings.";
}

TEST_F(ModuleExports, OfTheClientLibraryHaveWhatTheModuleBindsAtRunTime) {
  EXPECT_THAT(
      NamesOf(Binary(wayline.Handle()).ExportedNames()),
      IsSupersetOf(
          {"_Z12LoadStringDbB5cxx118ModuleIdjb",
           "_Z18LoadStringWithSubSB5cxx118ModuleIdjbRKSt6vectorISt17basic_string_viewIwSt11char_traitsIwEESaIS4_EE",
           "_Z24GetActiveProfileIdExoprtv", "_Z24GetActiveProxyLocationIdv",
           "_Z29UpdateActiveProfilePreference12PreferenceIdb", "_Z11GetFSMStatev"}));
}

TEST_F(ModuleExports, TheModuleImportsTheTwoOrdinalsByOrdinal) {
  const auto imports = Binary(pavise.Handle()).ImportsFrom("WaylineDll.dll");
  EXPECT_THAT(imports, Contains(Symbol{"", kProductDisplayName}));
  EXPECT_THAT(NamesOf(imports), Not(Contains("_Z21GetProductDisplayNameB5cxx11b")));
  EXPECT_THAT(NamesOf(imports), Not(Contains("_Z11IsConnectedv")));
}

// A text of the version resource of a file; nothing when the file has none.
std::optional<std::wstring> VersionText(const std::filesystem::path& file, const std::wstring& name) {
  DWORD ignored = 0;
  std::vector<BYTE> data(GetFileVersionInfoSizeW(file.c_str(), &ignored));
  if (GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) == FALSE) return std::nullopt;
  void* text = nullptr;
  UINT length = 0;
  if (VerQueryValueW(data.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &text, &length) == FALSE) {
    return std::nullopt;
  }
  return static_cast<const wchar_t*>(text);
}

TEST_F(ModuleExports, EveryBinaryHasAVersion) {
  wchar_t file[MAX_PATH];
  const std::filesystem::path folder =
      std::filesystem::path(file, file + GetModuleFileNameW(pavise.Handle(), file, MAX_PATH)).parent_path();
  for (const wchar_t* name : {L"Pavise.dll", L"WaylineDll.dll", L"Wayline.exe"}) {
    EXPECT_EQ(VersionText(folder / name, L"OriginalFilename"), name);
    EXPECT_EQ(VersionText(folder / name, L"ProductName"), L"Wayline");
    EXPECT_EQ(VersionText(folder / name, L"ProductVersion"), VersionText(folder / L"Pavise.dll", L"FileVersion"));
  }
}

// Waits for the sheet and cancels it; whether it came.
bool CancelSheet() {
  HWND sheet = nullptr;
  const bool shown = WaitUntil([&sheet] {
    sheet = FindWindowW(nullptr, L"Wayline - Login Properties");
    return sheet != nullptr && IsWindowVisible(sheet) != FALSE;
  });
  return shown && PostMessageW(sheet, WM_COMMAND, IDCANCEL, 0) != FALSE;
}

// Shows the sheet of the module and cancels it.
void UseModule(const LoadedModule& pavise, SheetMode mode) {
  constexpr uint32_t kProfile = 2001;
  LoginPropertiesContext context;
  context.resourceInstance = pavise.Handle();
  context.mode = mode;
  context.currentProfile = std::make_shared<Profile>(kProfile);
  context.currentProfile->SetName(L"Work");
  context.profiles.emplace(kProfile, context.currentProfile);
  const auto show = pavise.Find<INT_PTR (*)(LoginPropertiesContext*)>("ShowLoginProperties");
  ASSERT_NE(show, nullptr);
  auto user = std::async(std::launch::async, CancelSheet);
  EXPECT_EQ(show(&context), 0);
  EXPECT_TRUE(user.get()) << "The sheet did not appear.";
}

TEST(ModuleLife, TheModuleIsGoneAfterItWasUsedAndUnloaded) {
  // The process ends well only when nothing of the module is called after it was unloaded.
  const RegisteredService service;
  InOwnProcess([] {
    for (const SheetMode mode : {SheetMode::Full, SheetMode::TimeoutsOnly}) {
      {
        const LoadedModule pavise(L"Pavise.dll");
        ASSERT_NE(pavise.Handle(), nullptr);
        UseModule(pavise, mode);
      }
      EXPECT_TRUE(WaitUntil([] { return GetModuleHandleW(L"Pavise.dll") == nullptr; }));
    }
  });
}

}  // namespace
