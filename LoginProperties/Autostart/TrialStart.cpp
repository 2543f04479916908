#include "LoginProperties/Autostart/TrialStart.h"

#include <shlwapi.h>

#include <string_view>

#include "LoginProperties/Autostart/DefaultBrowser.h"
#include "LoginProperties/Autostart/LaunchApp.h"
#include "LoginProperties/Autostart/PathVariables.h"
#include "LoginProperties/Autostart/ProgramChoice.h"
#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Trim.h"
#include "WaylineDll/Messages.h"
#include "WaylineDll/Programs.h"
#include "WaylineDll/StringDb.h"

namespace {

// Strings of the client library.
constexpr unsigned kFileNotFound = 78;
constexpr unsigned kDefaultBrowserName = 174;

std::wstring KnownFolderOf(VariableFolder folder) {
  const auto paths = Singleton<PathData>::Get();
  if (!paths) return {};
  switch (folder) {
    case VariableFolder::Windows:
      return paths->GetWindowsFolder();
    case VariableFolder::Profile:
      return paths->GetProfileFolder();
    case VariableFolder::System:
      return paths->GetSystemFolder();
    case VariableFolder::Desktop:
      return paths->GetDesktopFolder();
    case VariableFolder::Programs:
      return paths->GetProgramsFolder();
    case VariableFolder::ProgramFiles:
      return paths->GetProgramFilesFolder();
  }
  return {};
}

// Completes a command to the file that it means, by itself or in the directory; the system's error when there is none.
DWORD FindFile(std::wstring& command, const std::wstring& directory) {
  if (command.empty()) return ERROR_FILE_NOT_FOUND;
  if (PathFileExistsW(command.c_str()) != FALSE) return ERROR_SUCCESS;
  const DWORD error = GetLastError();
  const std::wstring path = PathIn(directory, command);
  if (PathFileExistsW(path.c_str()) == FALSE) return error;
  command = path;
  return ERROR_SUCCESS;
}

}  // namespace

bool IsDefaultBrowserEntry(const std::wstring& name) {
  return IsDefaultBrowserName(name, LoadStringDb(ModuleId::ClientLibrary, kDefaultBrowserName, false));
}

void StartOnTrial(HWND owner, EntryTexts texts, int initialSize) {
  texts.program = Trim(texts.program);
  texts.directory = Trim(texts.directory);
  if (texts.program.empty()) return;
  const VariableOperations operations{KnownFolderOf, SubstituteCommandLineStringS};
  ReplaceInParameters(texts.parameters, operations);
  ReplaceInDirectory(texts.directory, operations);

  RegAppItem app;
  if (IsDefaultBrowserEntry(texts.name)) {
    app = GetDefaultBrowserApp();
  } else {
    app.command = texts.program;
  }
  // What is activated has no file.
  if (app.urlTemplate.empty()) {
    if (const DWORD error = FindFile(app.command, texts.directory); error != ERROR_SUCCESS) {
      DisplayMessage(owner, ModuleId::ClientLibrary, kFileNotFound, SystemErrorText(error), texts.program);
      return;
    }
  }
  const wchar_t* const directory = texts.directory.empty() ? nullptr : texts.directory.c_str();
  LaunchApp(app, ShowCommandOf(initialSize), texts.parameters.c_str(), directory);
}
