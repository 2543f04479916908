#include "LoginProperties/Autostart/ProgramChoice.h"

#include <algorithm>

#include "NetUtilities/Text/IgnoringCase.h"

uint32_t ValueOfOwnName(const AutoStartItem::Fields& entry) { return static_cast<uint32_t>(entry.recordType); }

const Program* FindProgram(const std::vector<Program>& programs, uint32_t value) {
  const auto found = std::ranges::find(programs, value, &Program::id);
  return found != programs.end() ? &*found : nullptr;
}

std::optional<ProgramTexts> TextsOf(const Program& program, const ProgramOperations& operations) {
  if (program.kind == Program::Kind::Web) return ProgramTexts{operations.defaultBrowser(), program.parameters, L""};
  if (program.path.empty()) return std::nullopt;
  return ProgramTexts{program.path, program.parameters, operations.installFolder(program.path)};
}

bool IsDefaultBrowserName(std::wstring_view name, std::wstring_view browserName) {
  return !name.empty() && std::ranges::equal(name, browserName, {}, LowerWide, LowerWide);
}
