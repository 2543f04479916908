#include "LoginProperties/Autostart/PathVariables.h"

#include "NetUtilities/Text/IgnoringCase.h"

namespace {

struct PathVariable {
  const wchar_t* inDirectory;
  const wchar_t* inParameters;
  VariableFolder folder;
};

constexpr PathVariable kVariables[] = {
    {L"%windir%", L"%Windir%", VariableFolder::Windows},
    {L"%userdir%", L"%UserDir%", VariableFolder::Profile},
    {L"%system%", L"%System%", VariableFolder::System},
    {L"%desktop%", L"%Desktop%", VariableFolder::Desktop},
    {L"%startMenuProg%", L"%StartMenuProg%", VariableFolder::Programs},
    {L"%programFiles%", L"%ProgramFiles%", VariableFolder::ProgramFiles},
};

void Replace(std::wstring& text, const wchar_t* PathVariable::*spelling, const VariableOperations& operations) {
  for (const PathVariable& variable : kVariables) {
    if (!ContainsNoCaseAscii(text, variable.*spelling)) continue;
    const std::wstring folder = operations.folder(variable.folder);
    if (!folder.empty()) operations.substitute(text, variable.*spelling, folder, false);
  }
}

}  // namespace

void ReplaceInDirectory(std::wstring& directory, const VariableOperations& operations) {
  Replace(directory, &PathVariable::inDirectory, operations);
}

void ReplaceInParameters(std::wstring& parameters, const VariableOperations& operations) {
  if (ContainsNoCaseAscii(parameters, L"BrowserMode")) operations.substitute(parameters, L"%BrowserMode%", L"", true);
  Replace(parameters, &PathVariable::inParameters, operations);
}
