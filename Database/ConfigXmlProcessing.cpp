#include "Database/ConfigXmlProcessing.h"

#include <algorithm>
#include <cwctype>
#include <limits>
#include <utility>

#include "NetUtilities/Text/StringToBool.h"
#include "NetUtilities/Text/Utf16.h"

namespace {

wchar_t Lower(wchar_t character) { return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(character))); }

ValueClass ClassOf(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::Text:
    case ColumnKind::Character:
      return ValueClass::Text;
    case ColumnKind::Boolean:
      return ValueClass::Boolean;
    case ColumnKind::NarrowText:
      return ValueClass::NarrowText;
    case ColumnKind::Integer32:
    case ColumnKind::Integer64:
    case ColumnKind::Key:
    case ColumnKind::ParentKey:
    case ColumnKind::Integer16:
      break;
  }
  return ValueClass::Integer;
}

const ColumnBinding* FindColumn(std::wstring_view name, const SQLRecord& record, std::wstring& message) {
  const auto columns = record.GetBindings();
  const auto column = std::ranges::find(columns, name, &ColumnBinding::name);
  if (column != columns.end()) {
    message.clear();
    return &*column;
  }
  message = L"unknown name '";
  message.append(name).append(L"'");
  return nullptr;
}

}  // namespace

bool LessNoCase::operator()(std::wstring_view left, std::wstring_view right) const {
  return std::ranges::lexicographical_compare(left, right, {}, Lower, Lower);
}

void ConfigXmlProcessing::StoreValidNames(std::vector<ValidName> tableNames, std::span<const ColumnBinding> columns) {
  validNames_ = std::move(tableNames);
  for (const ColumnBinding& column : columns) {
    validNames_.push_back({std::wstring(column.name), {}, ClassOf(column.kind)});
  }
}

EnumerationWords ConfigXmlProcessing::GetEnumerationWords(std::wstring_view /*name*/) const { return {}; }

int32_t ConfigXmlProcessing::GetLowestInteger(std::wstring_view /*name*/) const {
  return std::numeric_limits<int32_t>::min();
}

int32_t ConfigXmlProcessing::GetHighestInteger(std::wstring_view /*name*/) const {
  return std::numeric_limits<int32_t>::max();
}

bool ConfigXmlProcessing::SetText(std::wstring_view name, SQLRecord& record, const std::wstring& value,
                                  std::wstring& message) {
  const ColumnBinding* const column = FindColumn(name, record, message);
  if (column == nullptr) return false;
  if (column->kind == ColumnKind::Text) {
    column->write(record, value);
    return true;
  }
  if (column->kind == ColumnKind::Character) {
    const std::u16string units = ToUtf16(value);
    column->write(record, int64_t{units.empty() ? u'\0' : units.front()});
    return true;
  }
  return false;
}

bool ConfigXmlProcessing::SetInteger(std::wstring_view name, SQLRecord& record, const std::wstring& value,
                                     std::wstring& message) {
  const ColumnBinding* const column = FindColumn(name, record, message);
  if (column == nullptr || ClassOf(column->kind) != ValueClass::Integer) return false;
  const int32_t number = value.empty() ? 0 : std::stoi(value);
  if (number < GetLowestInteger(name) || number > GetHighestInteger(name)) return false;
  column->write(record, int64_t{number});
  return true;
}

bool ConfigXmlProcessing::SetBoolean(std::wstring_view name, SQLRecord& record, const std::wstring& value,
                                     std::wstring& message) {
  const ColumnBinding* const column = FindColumn(name, record, message);
  if (column == nullptr || column->kind != ColumnKind::Boolean) return false;
  column->write(record, int64_t{StringToBool(value)});
  return true;
}

bool ConfigXmlProcessing::SetEnumeration(std::wstring_view name, SQLRecord& record, const std::wstring& value,
                                         std::wstring& message) {
  const ColumnBinding* const column = FindColumn(name, record, message);
  if (column == nullptr || ClassOf(column->kind) != ValueClass::Integer) return false;
  const EnumerationWords words = GetEnumerationWords(name);
  if (const auto word = words.find(value); word != words.end()) {
    column->write(record, int64_t{word->second});
    return true;
  }
  message = L"unknown value '" + value + L"' here are the valid values ";
  std::wstring_view separator;
  for (const auto& [word, number] : words) {
    message.append(separator).append(word);
    separator = L", ";
  }
  return false;
}

bool ConfigXmlProcessing::SetTableValue(std::wstring_view /*name*/, std::wstring& value, std::wstring& message) {
  value.clear();
  message.clear();
  return false;
}
