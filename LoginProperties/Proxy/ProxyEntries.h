#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A proxy, or an address that needs none.
struct ProxyEntry {
  std::wstring address;
  std::wstring port;  // may be empty

  bool operator==(const ProxyEntry&) const = default;
};

/// The entries of a manual proxy list or exception list, in their order. Equal ones may occur more than once. Blanks
/// belong to the texts.
class ProxyEntries {
 public:
  /// Takes the place of all entries: those of a text with ";" between them, and ":" between the parts of each. An entry
  /// has its first part as address and, if there is another, its last one as port; empty parts do not count.
  void Load(std::wstring_view text);

  /// The text that Load would take.
  std::wstring Joined() const;

  const std::vector<ProxyEntry>& All() const { return entries_; }

  /// Adds an entry at the end.
  void Add(ProxyEntry entry);

  /// Puts another entry in place of the first that is equal to the one at `row`. Nothing happens if no entry is there.
  void ChangeFirstLike(size_t row, ProxyEntry entry);

  /// Deletes the first entry that is equal to the one at `row`. Nothing happens if no entry is there.
  void DeleteFirstLike(size_t row);

 private:
  std::vector<ProxyEntry>::iterator FirstLike(size_t row);

  std::vector<ProxyEntry> entries_;
};
