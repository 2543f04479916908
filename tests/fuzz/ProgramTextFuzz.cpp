// What programs are named by: command lines with variables, icons, web addresses, paths of files and of the registry.

#include <string>
#include <vector>

#include "LoginProperties/Autostart/WebAddress.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/LowerAscii.h"
#include "tests/fuzz/Require.h"
#include "WaylineDll/Programs/PathVariables.h"
#include "WaylineDll/Programs/ProgramRules.h"
#include "WaylineDll/Programs/RegistryPath.h"

namespace {

void CheckVariable(const std::wstring& text, const std::wstring& variable, const std::wstring& value) {
  const std::wstring lower = LowerAscii(text);
  const std::wstring lowerVariable = LowerAscii(variable);
  std::wstring expected;
  size_t done = 0;
  while (!variable.empty()) {
    const size_t at = lower.find(lowerVariable, done);
    if (at == std::wstring::npos) break;
    expected += text.substr(done, at - done) + value;
    done = at + variable.size();
  }
  expected += text.substr(done);
  Require(ReplaceVariable(text, variable, value) == expected);
}

void CheckAddress(const std::wstring& text) {
  const std::wstring given = text.substr(0, text.find(L'\0'));
  const std::wstring address = MakeUrl(given.c_str());
  Require(address.ends_with(given) && address.empty() == given.empty());
  Require(address.empty() || address.find(L"://") != std::wstring::npos);
  Require(MakeUrl(address.c_str()) == address);
}

void CheckPaths(const std::wstring& text) {
  const RegistryPath parts = SplitRegistryPath(text);
  Require(parts.root.find(L'\\') == std::wstring::npos && parts.value.find(L'\\') == std::wstring::npos);
  std::wstring together = parts.root;
  if (!parts.key.empty()) together += L'\\' + parts.key;
  if (text.find(L'\\') != std::wstring::npos) together += L'\\' + parts.value;
  // A key that has no name is left out, with its backslash.
  Require(together == text || (parts.key.empty() && text.starts_with(parts.root) && text.ends_with(parts.value)));

  Require(text.starts_with(FolderOfFile(text)));
  const std::wstring program = ProgramOfIcon(text);
  Require(text.find(program) != std::wstring::npos);
  Require(program.empty() || KindOfFile(program) == Program::Kind::Application);
  Require(text.find(WithoutQuotes(text)) != std::wstring::npos);
}

void CheckOffer(const std::wstring& first, const std::wstring& second) {
  const auto asIs = [](const std::wstring& name) { return ToUtf8(name); };
  const auto offered = ProgramsToOffer({{.name = L"b", .path = first}, {.name = L"a", .path = second}}, asIs);
  if (LowerAscii(first) == LowerAscii(second)) Require(offered.size() == 1);
  if (offered.size() == 2) Require(offered[0].name == L"a" && offered[0].id != offered[1].id);
  for (const Program& program : offered) Require(program.id > 2);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  const std::wstring variable = input.WideLine();
  const std::wstring value = input.WideLine();
  const std::wstring text = input.WideRest();
  CheckVariable(text, variable, value);
  CheckAddress(text);
  CheckPaths(text);
  CheckOffer(text, value);
  return 0;
}
