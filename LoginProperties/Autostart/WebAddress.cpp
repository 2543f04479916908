#include "LoginProperties/Autostart/WebAddress.h"

std::wstring MakeUrl(const wchar_t* text) {
  std::wstring address = text != nullptr ? text : L"";
  if (!address.empty() && address.find(L"://") == std::wstring::npos) address.insert(0, L"http://");
  return address;
}
