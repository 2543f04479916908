#include "NetUtilities/Files/KnownFolder.h"

#include "NetUtilities/Files/PathPlatform.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Text/ErrorText.h"

HRESULT LookUpKnownFolder(const KNOWNFOLDERID& folder, DWORD flags, std::wstring& out) {
  wchar_t* text = nullptr;
  const HRESULT result = pathPlatform.knownFolderPath(folder, flags, nullptr, &text);
  const TaskMemory<wchar_t> owner(text);
  out = SUCCEEDED(result) ? text : L"";
  return result;
}

std::wstring KnownFolder(const KNOWNFOLDERID& folder, DWORD flags, const wchar_t* failure) {
  std::wstring text;
  const HRESULT result = LookUpKnownFolder(folder, flags, text);
  if (FAILED(result)) Log(LogLevel::Error, failure + ErrorSuffix(result));
  return text;
}
