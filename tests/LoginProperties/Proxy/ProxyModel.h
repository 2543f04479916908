#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Database/Profiles/Profile.h"
#include "tests/ui/OtherConnection.h"

/// What a user can see on the "Proxy" page and what is to be saved, said without the code of the page. Settings are
/// numbered by their rows.
class ProxyModel {
 public:
  using Texts = std::array<std::wstring, 3>;

  /// A list of addresses with their ports, as the dialog edits it.
  class List {
   public:
    explicit List(const std::wstring& text);

    std::wstring Joined() const;
    std::vector<std::vector<std::wstring>> Rows() const;

    void Add(const std::wstring& address, const std::wstring& port);
    void Change(size_t row, const std::wstring& address, const std::wstring& port);
    void Delete(size_t row);

   private:
    std::vector<std::pair<std::wstring, std::wstring>> entries_;
  };

  ProxyModel(const ProfileTable& profiles, const std::wstring& file);

  uint32_t ChosenId() const { return chosen_; }
  size_t Row() const { return row_; }
  bool Overrides() const { return Chosen().overrides; }
  wchar_t Mode(size_t row) const { return Chosen().modes[row]; }
  bool CanEnter() const { return Overrides() && Mode(row_) == L'm'; }
  wchar_t CheckedMode() const { return checked_; }
  const std::wstring& Url() const { return url_; }
  std::vector<std::vector<std::wstring>> Rows() const;

  /// The page comes to the front, or another one does.
  void ShowPage();
  void LeavePage();

  /// Another profile is chosen, on the page or on another one.
  void Choose(uint32_t profile) { chosen_ = profile; }

  void ClickOverride();
  void SelectRow(size_t row);
  void ChooseMode(wchar_t mode);
  void TypeUrl(const std::wstring& url) { url_ = url; }

  const std::wstring& ListText() const { return Chosen().manual[row_]; }
  void StoreList(const std::wstring& text);

  /// What saving makes of the database, as statements.
  std::string Statements() const;

 private:
  struct State {
    bool overrides = false;
    std::array<wchar_t, 3> modes{};
    std::optional<std::array<wchar_t, 3>> first;  // once it was shown
    Texts automatic;
    Texts manual;
    bool operator==(const State&) const = default;
  };

  const State& Chosen() const { return states_.at(chosen_); }
  State& Chosen() { return states_.at(chosen_); }
  void ShowRow();

  std::map<uint32_t, State> states_;
  std::map<uint32_t, State> loaded_;
  uint32_t chosen_ = 0;
  size_t row_ = 0;
  wchar_t checked_ = 0;  // the mode that a radio button shows; none at first
  std::wstring url_;
};

/// The first units of a text, and no half character.
std::wstring FirstUnits(const std::wstring& text, size_t longest);
