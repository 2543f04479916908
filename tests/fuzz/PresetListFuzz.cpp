// Lists of time-outs: what a list shows can be read back, and what the page stores is what was chosen.

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "LoginProperties/Timeouts/TimeoutPresets.h"
#include "LoginProperties/Timeouts/TimeoutRules.h"
#include "tests/fuzz/DecimalReference.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"

namespace {

const DurationUnits kDurationUnits = {L"hour", L"hours", L"minute", L"minutes", L"second", L"seconds"};
const ByteUnits kByteUnits = {L"Byte", L"Bytes", L"KByte", L"KBytes", L"MByte", L"MBytes"};

// Takes "12 hours" off the text, with blanks in front of the number up to this width; the number, or nothing when the
// text begins otherwise.
std::optional<int64_t> TakePart(std::wstring_view& text, size_t width, const std::wstring& singular,
                                const std::wstring& plural) {
  const std::wstring_view whole = text;
  const size_t blanks = std::min(whole.find_first_not_of(L' '), whole.size());
  size_t at = blanks;
  int64_t number = 0;
  while (at < whole.size() && whole[at] >= L'0' && whole[at] <= L'9') number = number * 10 + (whole[at++] - L'0');
  if (at == blanks || at < width || (blanks > 0 && at != width)) return std::nullopt;
  const std::wstring unit = L" " + (number < 2 ? singular : plural);
  if (!whole.substr(at).starts_with(unit)) return std::nullopt;
  text.remove_prefix(at + unit.size());
  return number;
}

int64_t Magnitude(int64_t value) { return value < 0 ? -value : value; }

void CheckDuration(int64_t seconds) {
  const FormattedValue formatted = FormatDuration(seconds, kDurationUnits);
  Require(formatted.magnitude == Magnitude(seconds));
  std::wstring_view text = formatted.text;
  const int64_t hours = TakePart(text, 2, kDurationUnits.hour, kDurationUnits.hours).value_or(0);
  const int64_t minutes = TakePart(text, 2, kDurationUnits.minute, kDurationUnits.minutes).value_or(0);
  const int64_t rest = TakePart(text, 2, kDurationUnits.second, kDurationUnits.seconds).value_or(0);
  Require(text.empty() && minutes < 60 && rest < 60);
  Require(hours * 3600 + minutes * 60 + rest == formatted.magnitude);
}

void CheckByteCount(int64_t bytes) {
  const FormattedValue formatted = FormatByteCount(bytes, kByteUnits);
  Require(formatted.magnitude == Magnitude(bytes));
  std::wstring_view text = formatted.text;
  if (const auto count = TakePart(text, 3, kByteUnits.byte, kByteUnits.bytes)) {
    Require(*count == formatted.magnitude && *count < 1000);
  } else if (const auto thousands = TakePart(text, 3, kByteUnits.kilobyte, kByteUnits.kilobytes)) {
    Require(*thousands == formatted.magnitude / 1000 && *thousands >= 1 && *thousands < 1000);
  } else {
    const auto millions = TakePart(text, 3, kByteUnits.megabyte, kByteUnits.megabytes);
    Require(millions && *millions == formatted.magnitude / 1000000 && *millions >= 1);
  }
  Require(text.empty());
}

enum class Refusal { None, NoNumber, OutOfRange };

// The numbers of a list, up to the first that is none.
Refusal Numbers(const std::wstring& list, std::vector<int64_t>& numbers) {
  for (size_t start = 0; start < list.size();) {
    const size_t end = std::min(list.find_first_of(L" ,;\t", start), list.size());
    if (end > start) {
      const DecimalReference number{std::wstring_view(list).substr(start, end - start)};
      if (!number.hasDigits) return Refusal::NoNumber;
      if (!number.Fits<int32_t>()) return Refusal::OutOfRange;
      numbers.push_back(static_cast<int64_t>(number.value));
    }
    start = end + 1;
  }
  return Refusal::None;
}

template <typename MakePresets, typename Text>
void CheckList(const std::wstring& list, MakePresets makePresets, std::vector<int64_t> kept, Refusal refusal,
               Text text) {
  try {
    const std::vector<Preset> presets = makePresets(list);
    Require(refusal == Refusal::None && presets.size() == kept.size());
    for (size_t index = 0; index < kept.size(); ++index) {
      Require(presets[index].value == static_cast<uint32_t>(Magnitude(kept[index])));
      Require(presets[index].text == text(kept[index]));
    }
  } catch (const std::invalid_argument&) {
    Require(refusal == Refusal::NoNumber);
  } catch (const std::out_of_range&) {
    Require(refusal == Refusal::OutOfRange);
  }
}

void CheckLists(FuzzInput& input) {
  const int64_t limit = input.Number<int32_t>();
  const int64_t value = input.Number<int32_t>();
  const std::wstring list = input.WideRest();
  std::vector<int64_t> numbers;
  const Refusal refusal = Numbers(list, numbers);

  std::vector<int64_t> durations = numbers;
  std::erase_if(durations, [limit](int64_t number) { return number > limit || number == 0; });
  CheckList(
      list, [limit](const std::wstring& text) { return DurationPresets(text, limit, kDurationUnits); }, durations,
      refusal, [](int64_t number) { return FormatDuration(number, kDurationUnits).text; });
  std::vector<int64_t> bytes = numbers;
  std::erase_if(bytes, [limit](int64_t number) { return number < limit || number <= 0; });
  CheckList(
      list, [limit](const std::wstring& text) { return BytePresets(text, limit, kByteUnits); }, bytes, refusal,
      [](int64_t number) { return FormatByteCount(number, kByteUnits).text; });

  for (const int64_t number : numbers) {
    CheckDuration(number);
    CheckByteCount(number);
  }
  const std::vector<uint32_t> items(numbers.begin(), numbers.end());
  const int index = IndexForValue(items, value);
  const auto wanted = static_cast<uint32_t>(Magnitude(value));
  if (wanted == 0) {
    Require(index == 1);
  } else {
    const auto count = static_cast<int>(items.size());
    Require(index >= -1 && index < std::max(count, 1) && (index >= 0 || count == 0));
    for (int before = 0; before < index; ++before) Require(items[static_cast<size_t>(before)] < wanted);
    if (index >= 0 && index < count - 1) Require(items[static_cast<size_t>(index)] >= wanted);
  }
}

std::optional<uint32_t> Choice(FuzzInput& input) {
  const auto value = input.Number<uint32_t>();
  return input.Byte() % 4 == 0 ? std::nullopt : std::optional(value);
}

void CheckRules(FuzzInput& input) {
  Profile profile(2001);
  ProfileColumns& columns = profile.Columns();
  for (int32_t* const member :
       {&columns.warnTime, &columns.durationTime, &columns.thresholdTimeOut, &columns.thresholdBytes,
        &columns.smIdleTime, &columns.smSessionTime, &columns.smThresholdTime, &columns.smThresholdBytes}) {
    *member = input.Number<int32_t>();
  }
  columns.thresholdOnOff = input.Byte() % 2 != 0;

  const PresetLimits limits = LimitsOf(profile);
  Require(limits.longestDuration == (columns.smSessionTime != 0 ? columns.smSessionTime : 2147483647));
  Require(limits.longestPeriod == (columns.smThresholdTime != 0 ? int64_t{columns.smThresholdTime} * 60 : 2147483647));
  Require(limits.fewestBytes == columns.smThresholdBytes);
  const ShownTimeouts shown = PrepareTimeouts(profile);
  Require(shown.warning != 0 && shown.duration != 0 && shown.thresholdPeriod != 0);
  Require(shown.warningOn ? shown.warning > 0 : shown.warning < 0 || shown.warning == 60);

  ChosenTimeouts chosen;
  chosen.durationOn = input.Byte() % 2 != 0;
  chosen.thresholdOn = input.Byte() % 2 != 0;
  chosen.warningOn = input.Byte() % 2 != 0;
  chosen.duration = Choice(input);
  chosen.thresholdBytes = Choice(input);
  chosen.thresholdPeriod = Choice(input);
  chosen.warning = Choice(input);
  const std::optional<TimeoutProblem> problem = StoreTimeouts(chosen, profile);
  const bool missing = (chosen.durationOn && !chosen.duration) ||
                       (chosen.thresholdOn && (!chosen.thresholdBytes || !chosen.thresholdPeriod)) ||
                       (chosen.warningOn && !chosen.warning);
  Require(missing == (problem && problem->kind == TimeoutProblem::Kind::ValueMissing));
  if (!chosen.durationOn) Require(columns.durationTime == 0);
  if (!chosen.thresholdOn) Require(columns.thresholdTimeOut == 0 && columns.thresholdBytes == 0);
  if (missing) return;
  if (chosen.warningOn) Require(columns.warnTime == static_cast<int32_t>(*chosen.warning));
  const auto tooShort = [&columns](int32_t limit) { return limit > 0 && limit <= columns.warnTime; };
  Require(problem.has_value() ==
          (tooShort(columns.smIdleTime) || tooShort(columns.durationTime) || tooShort(columns.thresholdTimeOut)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  if (input.Byte() % 4 == 0) {
    CheckRules(input);
  } else {
    CheckLists(input);
  }
  return 0;
}
