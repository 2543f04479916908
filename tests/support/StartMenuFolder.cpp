#include "tests/support/StartMenuFolder.h"

#include <shlguid.h>
#include <shlobj.h>

#include <fstream>
#include <stdexcept>
#include <system_error>

#include "NetUtilities/Files/KnownFolder.h"
#include "NetUtilities/Module/ComApartment.h"
#include "NetUtilities/Module/ComPointer.h"
#include "tests/support/FileBytes.h"

namespace {

void Require(bool done, const char* sentence) {
  if (!done) throw std::runtime_error(sentence);
}

// A number as the text of a link stores it.
std::string BytesOf(int number) {
  std::string bytes;
  for (const char digit : std::to_string(number)) bytes += {digit, '\0'};
  return bytes;
}

}  // namespace

StartMenuFolder::StartMenuFolder(const KNOWNFOLDERID& menu) {
  std::wstring folder;
  LookUpKnownFolder(menu, KF_FLAG_CREATE, folder);
  path_ = std::filesystem::path(folder) / L"Pavise test";
  std::filesystem::create_directories(path_);
}

StartMenuFolder::~StartMenuFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void StartMenuFolder::AddLink(const std::wstring& name, const std::wstring& target,
                              const std::wstring& parameters) const {
  const ComApartment apartment;
  void* object = nullptr;
  CoCreateInstance(__uuidof(ShellLink), nullptr, CLSCTX_INPROC_SERVER, __uuidof(IShellLinkW), &object);
  Require(object != nullptr, "The system makes no links.");
  const ComPointer<IShellLinkW> link(static_cast<IShellLinkW*>(object));
  link->SetPath(target.c_str());
  link->SetArguments(parameters.c_str());
  object = nullptr;
  link->QueryInterface(__uuidof(IPersistFile), &object);
  Require(object != nullptr, "A link cannot be stored.");
  const ComPointer<IPersistFile> file(static_cast<IPersistFile*>(object));
  Require(file->Save((path_ / (name + L".lnk")).c_str(), TRUE) == S_OK, "A link was not stored.");
}

void StartMenuFolder::AddLinks(const std::wstring& name, const std::wstring& target, int count) const {
  constexpr int kFirst = 1000;
  AddLink(name, target, std::to_wstring(kFirst));
  const std::string first = FileBytes(path_ / (name + L".lnk"));
  const size_t place = first.find(BytesOf(kFirst));
  Require(place != std::string::npos, "A link does not have its parameters.");
  for (int number = 1; number < count; ++number) {
    const std::string parameters = BytesOf(kFirst + number);
    std::string link = first;
    link.replace(place, parameters.size(), parameters);
    AddFile(name + std::to_wstring(number) + L".lnk", link);
  }
}

void StartMenuFolder::AddFile(const std::wstring& name, const std::string& bytes) const {
  std::filesystem::create_directories((path_ / name).parent_path());
  std::ofstream(path_ / name, std::ios::binary) << bytes;
}
