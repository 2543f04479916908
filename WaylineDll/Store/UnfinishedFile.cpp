#include "WaylineDll/Store/UnfinishedFile.h"

#include <filesystem>
#include <random>

#include "NetUtilities/Text/Format.h"

using std::filesystem::path;

// The name differs from those that other programs choose at the same time.
UnfinishedFile::UnfinishedFile(const std::wstring& finalName)
    : finalName_(finalName), name_(Format(L"{}.{:08x}.new", finalName, std::random_device()())) {}

UnfinishedFile::~UnfinishedFile() {
  std::error_code ignored;
  for (const wchar_t* suffix : {L"", L"-journal"}) std::filesystem::remove(path(name_ + suffix), ignored);
}

std::error_code UnfinishedFile::AppearIfMissing() const {
  // A second name is never given to two files; renaming would replace one that has just come.
  std::error_code error;
  std::filesystem::create_hard_link(path(name_), path(finalName_), error);
  if (!error) return {};
  // Either the name is taken, or the file system has one name for each file.
  if (std::filesystem::exists(path(finalName_), error) || error) return error;
  return TakePlace();
}

std::error_code UnfinishedFile::TakePlace() const {
  std::error_code error;
  std::filesystem::rename(path(name_), path(finalName_), error);
  return error;
}
