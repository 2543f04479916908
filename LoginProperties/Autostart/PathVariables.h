#pragma once

#include <functional>
#include <string>
#include <string_view>

/// The folders that variables in an entry's texts stand for.
enum class VariableFolder { Windows, Profile, System, Desktop, Programs, ProgramFiles };

/// What path variables are replaced with. A folder that is not known is empty.
struct VariableOperations {
  std::function<std::wstring(VariableFolder)> folder;

  /// Replaces `variable` in `text` by `value`; by empty text only with `evenWhenEmpty`.
  std::function<void(std::wstring& text, std::wstring_view variable, std::wstring_view value, bool evenWhenEmpty)>
      substitute;
};

/// Replaces the variables in a directory. One whose folder is not known stays.
void ReplaceInDirectory(std::wstring& directory, const VariableOperations& operations);

/// The same for parameters. The mode of the browser is left out of them.
void ReplaceInParameters(std::wstring& parameters, const VariableOperations& operations);
