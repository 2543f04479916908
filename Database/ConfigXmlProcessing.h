#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Database/SQLite/SQLRecord.h"

/// How a configuration writes the value of a name; it tells which setter takes the value.
enum class ValueClass : uint32_t {
  Text = 1,
  Integer = 2,
  Boolean = 3,
  Enumeration = 4,  // one of a name's own words; never a column's class by itself
  NarrowText = 5,   // no setter takes it
};

/// A name that a configuration may set.
struct ValidName {
  std::wstring name;
  std::wstring defaultText;
  ValueClass valueClass;

  bool operator==(const ValidName&) const = default;
};

/// Orders texts without regard to the case of their letters.
struct LessNoCase {
  bool operator()(std::wstring_view left, std::wstring_view right) const;
};

/// The words that a name can have as its value, and the number that each stands for.
using EnumerationWords = std::map<std::wstring, int32_t, LessNoCase>;

/// Applies the names and values of a configuration to the records of one table. A class for a table derives from it and
/// adds the names, limits and words of that table; reading the configuration is the caller's business.
///
/// Setters change a record whose columns are looked up by name, in the exact case of letters. They return false when
/// they have stored nothing: `message` then says why in one line for the user, or is empty where there is nothing to
/// say. A value whose column is of another class than the setter is refused without a message.
class ConfigXmlProcessing {
 public:
  ConfigXmlProcessing() = default;
  virtual ~ConfigXmlProcessing() = default;
  ConfigXmlProcessing(const ConfigXmlProcessing&) = delete;
  ConfigXmlProcessing& operator=(const ConfigXmlProcessing&) = delete;

  /// Replaces the list of valid names: those of the table itself, then one for each column, in their order.
  virtual void StoreValidNames(std::vector<ValidName> tableNames, std::span<const ColumnBinding> columns);

  /// The valid names of the table.
  virtual const std::vector<ValidName>& GetValidNames() = 0;

  /// The words for the values of a name. Here: none.
  virtual EnumerationWords GetEnumerationWords(std::wstring_view name) const;

  // The limits, both allowed, for the integers of a name. Here: those of 32 bits.
  virtual int32_t GetLowestInteger(std::wstring_view name) const;
  virtual int32_t GetHighestInteger(std::wstring_view name) const;

  /// Stores the text; a column of one character takes the first UTF-16 unit, zero if there is none.
  virtual bool SetText(std::wstring_view name, SQLRecord& record, const std::wstring& value, std::wstring& message);

  /// Stores the decimal number at the start of the text, 0 for an empty one, in as many bits as the column has. A
  /// number beyond the limits of the name is refused without a message. Throws std::invalid_argument for text without
  /// a number and std::out_of_range for a number of more than 32 bits.
  virtual bool SetInteger(std::wstring_view name, SQLRecord& record, const std::wstring& value, std::wstring& message);

  /// Stores true for the words that StringToBool knows, false for everything else.
  virtual bool SetBoolean(std::wstring_view name, SQLRecord& record, const std::wstring& value, std::wstring& message);

  /// Stores the number that the word stands for, in as many bits as the column has. Words are compared without regard
  /// to case; the message for an unknown one lists all.
  virtual bool SetEnumeration(std::wstring_view name, SQLRecord& record, const std::wstring& value,
                              std::wstring& message);

  /// Takes a name that belongs to the table and not to a record; false when it is not accepted. Here: always, with
  /// value and message emptied.
  virtual bool SetTableValue(std::wstring_view name, std::wstring& value, std::wstring& message);

 protected:
  /// As last stored.
  const std::vector<ValidName>& StoredValidNames() const { return validNames_; }

 private:
  std::vector<ValidName> validNames_;
};
