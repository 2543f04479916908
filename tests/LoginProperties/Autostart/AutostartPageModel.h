#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/ui/OtherConnection.h"

/// What a user can see on the "Autostart" page and what is to be saved, said without the code of the page. The lines of
/// the tree are counted from 0, phases and entries alike.
class AutostartPageModel {
 public:
  /// As the sheet is opened on the settings of a database.
  explicit AutostartPageModel(const std::wstring& file);

  uint32_t ChosenId() const { return chosen_; }
  bool Overrides() const { return overrides_.at(chosen_); }

  /// Titles of the phases, and names of the entries with a blank in front.
  std::vector<std::wstring> Lines();

  /// The line that is selected; -1 when none is.
  int SelectedLine();

  bool IsEntrySelected();
  bool IsModifiable();
  bool CanMoveUp();
  bool CanMoveDown();
  std::wstring SelectedName();
  std::wstring SelectedPhaseTitle();

  /// All phases in order.
  std::vector<std::wstring> PhaseTitles();

  void Choose(uint32_t profile) { chosen_ = profile; }

  /// The page comes to the front, or shows another profile.
  void ShowPage();
  void ClickOverride();
  void SelectLine(int line);
  void SelectNothing() { selected_ = 0; }

  /// The selected record's phase is offered; another one may be chosen.
  void Add(const std::wstring& name, const std::wstring& program, const std::optional<std::wstring>& phaseTitle);
  void Change(const std::wstring& name, const std::wstring& program, const std::optional<std::wstring>& phaseTitle);
  void Remove();
  void MoveUp();
  void MoveDown();

  /// What saving is to do to the database.
  std::string Statements() const;

 private:
  struct Record {
    int number = 0;  // of its place among equal ones; no other record has it
    Row row;
    Row loaded;  // empty for one that was added
    bool stored = false;
    bool removed = false;

    int Phase() const { return std::stoi(row.at("Phase")); }
    int Order() const { return std::stoi(row.at("ItemOrder")); }
    bool IsEntry() const { return row.at("RecordType") == "2"; }
    void Place(int phase, int order);
  };
  using List = std::vector<Record>;
  using Shown = std::vector<Record*>;

  List Load(uint32_t profile);
  List& ListOf(uint32_t profile);
  Shown ShownList();
  Record* Selected();
  Shown Group(int phase, const Record* except = nullptr);
  std::vector<int> Phases();
  int PhaseOfTitle(const std::wstring& title);
  void NumberAnewIfEqual(int phase);
  static std::string Insertion(const Record& record, uint32_t profile);

  std::wstring file_;
  uint32_t chosen_ = 0;
  std::map<uint32_t, uint32_t> links_;
  std::map<uint32_t, bool> overrides_;
  std::map<uint32_t, bool> overrodeBefore_;
  std::map<uint32_t, List> lists_;
  int selected_ = 0;  // the number of a record; 0 for none
  int lastNumber_ = 0;
};
