#pragma once

#include <map>
#include <string>

/// Looks for many files. Each drive is asked once only where it lies, which takes longer than looking for a file.
class FileCheck {
 public:
  /// Whether a file or folder is there, as far as that can be said at once: what lies on another machine counts as
  /// being there.
  bool IsThere(const std::wstring& path);

 private:
  bool IsRemote(const std::wstring& path);

  std::map<wchar_t, bool> remoteDrives_;
};
