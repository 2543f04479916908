#include "WaylineDll/Store/UnfinishedFile.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>

#include "NetUtilities/Text/Format.h"

using std::filesystem::path;

namespace {

// Gives a file another name, and does not replace the one that has it.
std::error_code Rename(const path& from, const path& to) {
  std::error_code error;
#ifdef _WIN32
  // That of std::filesystem replaces.
  if (_wrename(from.c_str(), to.c_str()) != 0) error.assign(errno, std::generic_category());
#else
  // Renaming replaces, but a second name does not.
  std::filesystem::create_hard_link(from, to, error);
  // The file may lie where a file has one name only.
  std::error_code ignored;
  if (error && !std::filesystem::exists(to, ignored)) std::filesystem::rename(from, to, error);
#endif
  return error;
}

}  // namespace

// The name differs from those that other programs choose at the same time.
UnfinishedFile::UnfinishedFile(const std::wstring& finalName)
    : finalName_(finalName), name_(Format(L"{}.{:08x}.new", finalName, std::random_device()())) {}

UnfinishedFile::~UnfinishedFile() {
  std::error_code ignored;
  for (const wchar_t* suffix : {L"", L"-journal"}) std::filesystem::remove(path(name_ + suffix), ignored);
}

std::error_code UnfinishedFile::AppearIfMissing() const {
  const std::error_code error = Rename(path(name_), path(finalName_));
  if (!error) return {};
  // Who was faster has made the file.
  std::error_code ignored;
  return std::filesystem::exists(path(finalName_), ignored) ? std::error_code() : error;
}

std::error_code UnfinishedFile::TakePlace() const {
  std::error_code error;
  std::filesystem::rename(path(name_), path(finalName_), error);
  return error;
}
