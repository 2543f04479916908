#include "LoginProperties/Timeouts/TimeoutPresets.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "NetUtilities/Text/SplitNonEmpty.h"

namespace {

constexpr int64_t kNoLimit = 2147483647;

int64_t LimitOr(int64_t limit, int64_t otherwise) { return limit != 0 ? limit : otherwise; }

// As std::stoi; its exceptions say which conversion failed and how.
int ParseInt(const std::wstring& text) {
  try {
    return std::stoi(text);
  } catch (const std::invalid_argument&) {
    throw std::invalid_argument("invalid stoi argument");
  } catch (const std::out_of_range&) {
    throw std::out_of_range("stoi argument out of range");
  }
}

std::vector<int> ParseList(std::wstring_view list) {
  std::vector<int> values;
  for (const std::wstring& piece : SplitNonEmpty(list, L" ,;\t")) values.push_back(ParseInt(piece));
  return values;
}

}  // namespace

PresetLimits LimitsOf(const Profile& profile) {
  // A warning must leave this much of the inactivity limit.
  constexpr int64_t kWarningMargin = 30;
  return {
      .longestDuration = LimitOr(profile.GetSMSessionTime().count(), kNoLimit),
      .longestWarning = LimitOr(profile.GetSMIdleTime().count(), kNoLimit) - kWarningMargin,
      .longestPeriod = LimitOr(Profile::Seconds(profile.GetSMThresholdTime()).count(), kNoLimit),
      .fewestBytes = profile.GetSMThresholdBytes(),
  };
}

std::vector<Preset> DurationPresets(std::wstring_view list, int64_t longest, const DurationUnits& units) {
  std::vector<Preset> presets;
  for (const int value : ParseList(list)) {
    if (value > longest) continue;
    FormattedValue formatted = FormatDuration(value, units);
    if (formatted.magnitude != 0) {
      presets.push_back({std::move(formatted.text), static_cast<uint32_t>(formatted.magnitude)});
    }
  }
  return presets;
}

std::vector<Preset> BytePresets(std::wstring_view list, int64_t fewest, const ByteUnits& units) {
  std::vector<Preset> presets;
  for (const int value : ParseList(list)) {
    if (value < fewest || value <= 0) continue;
    presets.push_back({FormatByteCount(value, units).text, static_cast<uint32_t>(value)});
  }
  return presets;
}

int IndexForValue(const std::vector<uint32_t>& items, int64_t value) {
  constexpr int kIndexForNoValue = 1;
  const auto magnitude = static_cast<uint32_t>(std::abs(value));
  if (magnitude == 0) return kIndexForNoValue;
  const auto found = std::find_if(items.begin(), items.end(), [magnitude](uint32_t item) { return item >= magnitude; });
  const auto index = static_cast<int>(found - items.begin());
  return found != items.end() ? index : index - 1;
}
