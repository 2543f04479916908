// Proxy lists: what is loaded, edited and joined is what a plain list of pairs would hold.

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "LoginProperties/Proxy/ProxyEntries.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"

namespace {

using Pair = std::pair<std::wstring, std::wstring>;

// Character by character, with what has been read of the entry so far.
std::vector<Pair> LoadPairs(const std::wstring& text) {
  std::vector<Pair> pairs;
  std::wstring first;
  std::wstring last;
  std::wstring part;
  const auto endPart = [&] {
    if (part.empty()) return;
    (first.empty() ? first : last) = part;
    part.clear();
  };
  const auto endEntry = [&] {
    endPart();
    if (!first.empty()) pairs.emplace_back(first, last);
    first.clear();
    last.clear();
  };
  for (const wchar_t character : text) {
    if (character == L';') {
      endEntry();
    } else if (character == L':') {
      endPart();
    } else {
      part += character;
    }
  }
  endEntry();
  return pairs;
}

std::vector<Pair> PairsOf(const ProxyEntries& entries) {
  std::vector<Pair> pairs;
  for (const auto& [address, port] : entries.All()) pairs.emplace_back(address, port);
  return pairs;
}

bool IsPlain(const std::wstring& text) { return text.find_first_of(L";:") == std::wstring::npos; }

void CheckJoined(const ProxyEntries& entries) {
  ProxyEntries again;
  again.Load(entries.Joined());
  const std::vector<Pair> pairs = PairsOf(entries);
  Require(PairsOf(again) == LoadPairs(entries.Joined()));
  const bool plain = std::ranges::all_of(
      pairs, [](const Pair& pair) { return !pair.first.empty() && IsPlain(pair.first) && IsPlain(pair.second); });
  if (!plain) return;
  Require(PairsOf(again) == pairs && again.Joined() == entries.Joined());
}

// The first pair that is equal to the one at `row`; there is one.
std::vector<Pair>::iterator FirstLike(std::vector<Pair>& pairs, size_t row) {
  const Pair wanted = pairs[row];
  for (auto pair = pairs.begin();; ++pair) {
    if (*pair == wanted) return pair;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  const std::wstring text = input.WideLine();
  ProxyEntries entries;
  entries.Load(text);
  std::vector<Pair> pairs = LoadPairs(text);
  Require(PairsOf(entries) == pairs);
  while (!input.IsAtEnd()) {
    const unsigned step = input.Byte() % 3;
    const size_t row = input.Byte() % 8;
    const Pair entry = step == 2 ? Pair() : Pair{input.WideLine(), input.WideLine()};
    switch (step) {
      case 0:
        entries.Add({entry.first, entry.second});
        pairs.push_back(entry);
        break;
      case 1:
        entries.ChangeFirstLike(row, {entry.first, entry.second});
        if (row < pairs.size()) *FirstLike(pairs, row) = entry;
        break;
      default:
        entries.DeleteFirstLike(row);
        if (row < pairs.size()) pairs.erase(FirstLike(pairs, row));
    }
    Require(PairsOf(entries) == pairs);
    CheckJoined(entries);
  }
  return 0;
}
