#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "WaylineDll/PropPageDialog.h"

/// A dialog or page that writes down which of its operations are called and returns what the test says; where
/// it says nothing, what `Base` does by itself is done. Once the window is there, the test's steps run one
/// after another, each from the message loop; a dialog that is still open after the last one is closed, so
/// that no test waits for ever.
template <typename Base>
class RecordingDialog : public Base {
 public:
  /// What DoModal returns when the steps have left the dialog open.
  static constexpr int kStillOpen = 4711;

  /// A message for OnMsg to write down; of the many others that come, it writes nothing down.
  static constexpr UINT kRecordedMessage = WM_APP + 1;

  explicit RecordingDialog(int templateId, HWND parent = nullptr)
      : Base(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(templateId), parent) {}

  std::vector<std::string> calls;  // such as "OnChar(120)"
  std::map<std::string, int> results;
  std::map<UINT, int> notifyResults;  // by notification code; they go before the result of OnNotify
  std::vector<std::function<void()>> steps;

  /// Sends a message to the dialog and returns what was called because of it.
  std::vector<std::string> CallsFor(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    calls.clear();
    SendMessageW(this->GetWindow(), message, wordParameter, longParameter);
    return std::exchange(calls, {});
  }

  /// Sends the command of a button that was clicked and returns what was called because of it.
  std::vector<std::string> CallsForClick(int button) {
    return CallsFor(WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(Control(button)));
  }

  HWND Control(int id) const { return GetDlgItem(this->GetWindow(), id); }

  template <typename... Arguments>
  static std::string Call(const char* operation, Arguments... arguments) {
    std::ostringstream text;
    [[maybe_unused]] const char* separator = "";
    text << operation << '(';
    ((text << std::exchange(separator, ", ") << arguments), ...);
    text << ')';
    return text.str();
  }

 protected:
  int SetWindowControls() override {
    const auto wanted = Record("SetWindowControls");
    return wanted ? *wanted : Base::SetWindowControls();
  }
  int ReadWindowControls() override {
    const auto wanted = Record("ReadWindowControls");
    return wanted ? *wanted : Base::ReadWindowControls();
  }
  int ValidateWindowControls() override {
    const auto wanted = Record("ValidateWindowControls");
    return wanted ? *wanted : Base::ValidateWindowControls();
  }
  int OnOk(int64_t parameter) override {
    const auto wanted = Record("OnOk", parameter);
    return wanted ? *wanted : Base::OnOk(parameter);
  }
  int OnInitDialog(int64_t parameter) override {
    stepsDone_ = 0;
    PostMessageW(this->GetWindow(), kNextStep, 0, 0);
    const auto wanted = Record("OnInitDialog", parameter);
    return wanted ? *wanted : Base::OnInitDialog(parameter);
  }
  int OnCancel(int64_t parameter) override {
    const auto wanted = Record("OnCancel", parameter);
    return wanted ? *wanted : Base::OnCancel(parameter);
  }
  int OnHelp(int64_t parameter) override {
    const auto wanted = Record("OnHelp", parameter);
    return wanted ? *wanted : Base::OnHelp(parameter);
  }
  int OnChar(int64_t parameter) override {
    const auto wanted = Record("OnChar", parameter);
    return wanted ? *wanted : Base::OnChar(parameter);
  }
  int OnDestroy(int64_t parameter) override {
    const auto wanted = Record("OnDestroy", parameter);
    return wanted ? *wanted : Base::OnDestroy(parameter);
  }
  int OnCommand(uint64_t command, int64_t control) override {
    // The focus comes and goes with windows; nobody asks for that.
    if (HIWORD(command) == EN_SETFOCUS || HIWORD(command) == EN_KILLFOCUS) return 0;
    const auto wanted = Record("OnCommand", command, control);
    return wanted ? *wanted : Base::OnCommand(command, control);
  }
  int OnNotify(uint64_t controlId, int64_t record) override {
    const auto wanted = Record("OnNotify", controlId, record);
    const auto special = notifyResults.find(reinterpret_cast<const NMHDR*>(record)->code);
    if (special != notifyResults.end()) return special->second;
    return wanted ? *wanted : Base::OnNotify(controlId, record);
  }
  int OnMsg(uint32_t message, uint64_t wordParameter, int64_t longParameter) override {
    if (message == kNextStep) {
      RunNextStep();
      return 1;
    }
    if (message != kRecordedMessage) return Base::OnMsg(message, wordParameter, longParameter);
    const auto wanted = Record("OnMsg", message, wordParameter, longParameter);
    return wanted ? *wanted : Base::OnMsg(message, wordParameter, longParameter);
  }

 private:
  static constexpr UINT kNextStep = WM_APP;

  // Writes the call down; returns the result that the test wants, if it wants one.
  template <typename... Arguments>
  std::optional<int> Record(const char* operation, Arguments... arguments) {
    calls.push_back(Call(operation, arguments...));
    const auto wanted = results.find(operation);
    return wanted != results.end() ? std::optional(wanted->second) : std::nullopt;
  }

  void RunNextStep() {
    const HWND window = this->GetWindow();
    if (stepsDone_ < steps.size()) {
      PostMessageW(window, kNextStep, 0, 0);
      steps[stepsDone_++]();
    } else if (const HWND sheet = GetParent(window); (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) != 0) {
      PostMessageW(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
    } else {
      EndDialog(window, kStillOpen);
    }
  }

  size_t stepsDone_ = 0;
};
