// Writes down how it was started, into the file that the environment variable PAVISE_LAUNCH_RECORD names. A word and a
// text in each line:
//
//   command    the whole command line
//   argument   one of its arguments, without the program
//   directory  the current directory
//   show       how its first window is to be shown, SW_...; default when that is left to it
//   parent     the process that has started it
//   variable   the environment variable PAVISE_LAUNCH_TEST

#include <windows.h>

#include <tlhelp32.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Text/Utf8.h"

namespace {

std::wstring Variable(const wchar_t* name) {
  wchar_t text[1024] = L"";
  const DWORD length = GetEnvironmentVariableW(name, text, 1024);
  return {text, length < 1024 ? length : 0};
}

std::wstring Show() {
  STARTUPINFOW info{};
  GetStartupInfoW(&info);
  return (info.dwFlags & STARTF_USESHOWWINDOW) != 0 ? std::to_wstring(info.wShowWindow) : L"default";
}

DWORD ParentId() {
  const Handle processes = OwnUnlessInvalid(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL found = Process32FirstW(processes.get(), &entry); found != FALSE;
       found = Process32NextW(processes.get(), &entry)) {
    if (entry.th32ProcessID == GetCurrentProcessId()) return entry.th32ParentProcessID;
  }
  return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  const std::filesystem::path record = Variable(L"PAVISE_LAUNCH_RECORD");
  if (record.empty()) return 2;
  std::filesystem::path unfinished = record;
  unfinished += L".unfinished";
  {
    std::ofstream stream(unfinished, std::ios::binary);
    stream << "command " << ToUtf8(GetCommandLineW()) << '\n';
    for (int index = 1; index < argc; ++index) stream << "argument " << ToUtf8(argv[index]) << '\n';
    stream << "directory " << ToUtf8(std::filesystem::current_path().wstring()) << '\n';
    stream << "show " << ToUtf8(Show()) << '\n';
    stream << "parent " << ParentId() << '\n';
    stream << "variable " << ToUtf8(Variable(L"PAVISE_LAUNCH_TEST")) << '\n';
  }
  std::filesystem::rename(unfinished, record);
  return 0;
}
