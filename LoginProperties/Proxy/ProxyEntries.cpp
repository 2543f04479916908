#include "LoginProperties/Proxy/ProxyEntries.h"

#include <algorithm>
#include <utility>

#include "NetUtilities/Text/SplitNonEmpty.h"

void ProxyEntries::Load(std::wstring_view text) {
  entries_.clear();
  for (const std::wstring& piece : SplitNonEmpty(text, L";")) {
    const std::vector<std::wstring> parts = SplitNonEmpty(piece, L":");
    if (!parts.empty()) entries_.push_back({parts.front(), parts.size() > 1 ? parts.back() : std::wstring()});
  }
}

std::wstring ProxyEntries::Joined() const {
  std::wstring text;
  for (const auto& [address, port] : entries_) {
    if (!text.empty()) text += L';';
    text += address;
    if (!port.empty()) text.append(1, L':').append(port);
  }
  return text;
}

void ProxyEntries::Add(ProxyEntry entry) { entries_.push_back(std::move(entry)); }

void ProxyEntries::ChangeFirstLike(size_t row, ProxyEntry entry) {
  if (const auto found = FirstLike(row); found != entries_.end()) *found = std::move(entry);
}

void ProxyEntries::DeleteFirstLike(size_t row) {
  if (const auto found = FirstLike(row); found != entries_.end()) entries_.erase(found);
}

std::vector<ProxyEntry>::iterator ProxyEntries::FirstLike(size_t row) {
  return row < entries_.size() ? std::ranges::find(entries_, entries_[row]) : entries_.end();
}
