#pragma once

#include <string>
#include <system_error>

/// A database file that is made under a name of its own beside its final one, where it appears complete or not at all.
/// Connections to it are closed before it gets its name, and before this object goes, which removes what did not.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(const std::wstring& finalName);
  ~UnfinishedFile();
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  /// Its name until it is finished.
  const std::wstring& Name() const { return name_; }

  /// Gives it its final name, unless there is a file of that name: that one stays, and all is well too.
  std::error_code AppearIfMissing() const;

  /// Gives it its final name, in place of the file that had it.
  std::error_code TakePlace() const;

 private:
  std::wstring finalName_;
  std::wstring name_;
};
