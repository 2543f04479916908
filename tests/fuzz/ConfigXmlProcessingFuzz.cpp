// Names and values of a configuration: what is accepted is stored as the value says, what is refused changes nothing.

#include <array>
#include <optional>
#include <stdexcept>
#include <vector>

#include "Database/Profiles/Profiles.h"
#include "NetUtilities/Text/StringToBool.h"
#include "NetUtilities/Text/Utf16.h"
#include "tests/Database/SQLite/EveryKind.h"
#include "tests/Database/SQLite/MemberText.h"
#include "tests/fuzz/DecimalReference.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"

namespace {

// A table with limits and words from the input.
struct Limited : Profiles {
  int32_t GetLowestInteger(std::wstring_view /*name*/) const override { return lowest; }
  int32_t GetHighestInteger(std::wstring_view /*name*/) const override { return highest; }
  EnumerationWords GetEnumerationWords(std::wstring_view /*name*/) const override { return words; }

  int32_t lowest = 0;
  int32_t highest = 0;
  EnumerationWords words;
};

std::vector<std::wstring> Values(const SQLRecord& record) {
  std::vector<std::wstring> values;
  for (const ColumnBinding& column : record.GetBindings()) values.push_back(MemberText(record, column));
  return values;
}

// The number as the column's member holds it.
std::wstring StoredNumber(const ColumnBinding& column, int32_t number) {
  return column.kind == ColumnKind::Integer16 ? std::to_wstring(static_cast<uint16_t>(number))
                                              : std::to_wstring(number);
}

bool IsInteger(ColumnKind kind) {
  return kind != ColumnKind::Text && kind != ColumnKind::Character && kind != ColumnKind::Boolean &&
         kind != ColumnKind::NarrowText;
}

// What a setter should store in the column; nothing where it should refuse.
using Stored = std::optional<std::wstring>;

Stored TextStored(const ColumnBinding& column, const std::wstring& value) {
  if (column.kind == ColumnKind::Text) return value;
  if (column.kind != ColumnKind::Character) return std::nullopt;
  return std::wstring(1, static_cast<wchar_t>(value.empty() ? u'\0' : ToUtf16(value).front()));
}

Stored BooleanStored(const ColumnBinding& column, const std::wstring& value) {
  if (column.kind != ColumnKind::Boolean) return std::nullopt;
  return StringToBool(value) ? L"true" : L"false";
}

Stored IntegerStored(const Limited& table, const ColumnBinding& column, const std::wstring& value) {
  const DecimalReference number{std::wstring_view(value)};
  if (!IsInteger(column.kind) || number.value < table.lowest || number.value > table.highest) return std::nullopt;
  return StoredNumber(column, static_cast<int32_t>(number.value));
}

Stored EnumerationStored(const Limited& table, const ColumnBinding& column, const std::wstring& value) {
  if (!IsInteger(column.kind)) return std::nullopt;
  for (const auto& [word, number] : table.words) {
    if (!LessNoCase()(word, value) && !LessNoCase()(value, word)) return StoredNumber(column, number);
  }
  return std::nullopt;
}

void CheckTableValue(Limited& table, const std::wstring& name, const std::wstring& value) {
  std::wstring given = value;
  std::wstring message = L"from before";
  const bool accepted = table.SetTableValue(name, given, message);
  Require(given == value);
  if (name == L"Default") {
    Require(accepted && table.IsDefault() == StringToBool(value));
  } else if (name == L"UseDigitalCertificates") {
    const std::array<std::wstring_view, 3> words = {L"None", L"LocalStore", L"SmartCardOnly"};
    const auto source = static_cast<size_t>(table.GetCertificateSource());
    Require(table.AreCertificatesSet() == accepted && words.at(source) == (accepted ? value : L"None"));
  } else {
    Require(!accepted && message == L"Unknown name '" + name);
  }
  if (accepted) Require(message.empty());
}

void CheckSetter(unsigned setter, Limited& table, SQLRecord& record, const std::wstring& name,
                 const std::wstring& value) {
  using Setter = bool (ConfigXmlProcessing::*)(std::wstring_view, SQLRecord&, const std::wstring&, std::wstring&);
  constexpr std::array<Setter, 4> kSetters = {&ConfigXmlProcessing::SetText, &ConfigXmlProcessing::SetInteger,
                                              &ConfigXmlProcessing::SetBoolean, &ConfigXmlProcessing::SetEnumeration};
  std::vector<std::wstring> values = Values(record);
  size_t index = 0;
  while (index < values.size() && record.GetBindings()[index].name != name) ++index;
  const ColumnBinding* const column = index < values.size() ? &record.GetBindings()[index] : nullptr;
  Stored stored;
  bool throwsInvalid = false;
  bool throwsRange = false;
  if (column != nullptr) {
    if (setter == 0) stored = TextStored(*column, value);
    if (setter == 1) stored = IntegerStored(table, *column, value);
    if (setter == 2) stored = BooleanStored(*column, value);
    if (setter == 3) stored = EnumerationStored(table, *column, value);
    if (setter == 1 && IsInteger(column->kind) && !value.empty()) {
      const DecimalReference number{std::wstring_view(value)};
      throwsInvalid = !number.hasDigits;
      throwsRange = !number.Fits<int32_t>();
    }
  }

  std::wstring message = L"from before";
  try {
    const bool accepted = (table.*kSetters[setter])(name, record, value, message);
    Require(!throwsInvalid && !throwsRange && accepted == stored.has_value());
    if (accepted) values[index] = *stored;
    if (accepted) Require(message.empty());
    if (column == nullptr) Require(message == L"unknown name '" + name + L"'");
    if (setter == 3 && column != nullptr && IsInteger(column->kind) && !accepted) {
      Require(message.starts_with(L"unknown value '" + value + L"' here are the valid values "));
    }
  } catch (const std::invalid_argument&) {
    Require(throwsInvalid);
  } catch (const std::out_of_range&) {
    Require(throwsRange);
  }
  Require(Values(record) == values);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  const unsigned setter = input.Byte() % 5;
  const uint8_t column = input.Byte();
  Limited table;
  table.lowest = input.Number<int32_t>();
  table.highest = input.Number<int32_t>();
  EveryKind everyKind;
  Profile profile(1);
  SQLRecord& record = column < 128 ? static_cast<SQLRecord&>(everyKind) : profile;
  std::wstring name = input.WideLine();
  // Most names should be those of columns.
  if (const size_t index = column % 128; name.empty() && index < record.GetBindings().size()) {
    name = record.GetBindings()[index].name;
  }
  for (unsigned word = input.Byte() % 4; word > 0; --word)
    table.words.emplace(input.WideLine(), input.Number<int32_t>());
  const std::wstring value = input.WideRest();
  if (setter == 4) {
    CheckTableValue(table, name, value);
  } else {
    CheckSetter(setter, table, record, name, value);
  }
  return 0;
}
