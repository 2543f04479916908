#include "tests/LoginProperties/Resources/ExpectedResources.h"

#include <gtest/gtest.h>

#include <iterator>
#include <utility>

namespace {

// Made by the first object that registers, whichever file that is in.
ExpectedResources::Lists& All() {
  static ExpectedResources::Lists all;
  return all;
}

}  // namespace

void PrintTo(const ExpectedControl& control, std::ostream* out) {
  *out << control.id << " " << testing::PrintToString(control.windowClass) << " "
       << testing::PrintToString(control.text) << " style 0x" << std::hex << control.style << std::dec;
}

void PrintTo(const ExpectedDialog& dialog, std::ostream* out) { *out << dialog.name; }

void PrintTo(const ExpectedIcon& icon, std::ostream* out) { *out << icon.name; }

ExpectedResources::ExpectedResources(Lists lists) {
  std::ranges::move(lists.dialogs, std::back_inserter(All().dialogs));
  std::ranges::move(lists.icons, std::back_inserter(All().icons));
  All().strings.merge(lists.strings);
}

const std::vector<ExpectedDialog>& ExpectedResources::Dialogs() { return All().dialogs; }

const std::vector<ExpectedIcon>& ExpectedResources::Icons() { return All().icons; }

const std::multimap<unsigned, std::wstring>& ExpectedResources::Strings() { return All().strings; }

ExpectedDialog Page(const char* name, WORD id, const wchar_t* title, SIZE size, std::vector<ExpectedControl> controls) {
  constexpr std::uint32_t kStyle = DS_SETFONT | WS_CHILD | WS_DISABLED | WS_CAPTION;
  return {name, id, title, kStyle, size, std::move(controls)};
}

ExpectedDialog OverridePage(const char* name, WORD id, const wchar_t* title, SIZE size, std::uint32_t frame,
                            const std::vector<ExpectedControl>& controls) {
  std::vector<ExpectedControl> all = {Label(kProfileLabel, L"Login profile"), Selector(), Group(frame),
                                      Check(kOverrideBox, L"&Override defaults")};
  all.insert(all.end(), controls.begin(), controls.end());
  ExpectedDialog page = Page(name, id, title, size, std::move(all));
  page.hasOverrideBox = true;
  return page;
}

ExpectedDialog ModalDialog(const char* name, WORD id, const wchar_t* title, SIZE size,
                           std::vector<ExpectedControl> controls) {
  constexpr std::uint32_t kStyle = DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU;
  return {name, id, title, kStyle, size, std::move(controls)};
}

ExpectedControl Label(std::uint32_t id, const wchar_t* text, std::uint32_t style) {
  return {id, L"static", text, SS_LEFT | style};
}

ExpectedControl Icon(std::uint32_t id, WORD icon) { return {id, L"static", L'#' + std::to_wstring(icon), SS_ICON}; }

ExpectedControl Group(std::uint32_t id, const wchar_t* text) { return {id, L"button", text, BS_GROUPBOX}; }

ExpectedControl Check(std::uint32_t id, const wchar_t* text, std::uint32_t style) {
  return {id, L"button", text, BS_AUTOCHECKBOX | WS_TABSTOP | style};
}

ExpectedControl Radio(std::uint32_t id, const wchar_t* text, std::uint32_t style) {
  return {id, L"button", text, BS_AUTORADIOBUTTON | style};
}

ExpectedControl Push(std::uint32_t id, const wchar_t* text, std::uint32_t style) {
  return {id, L"button", text, BS_PUSHBUTTON | WS_TABSTOP | style};
}

ExpectedControl Edit(std::uint32_t id, std::uint32_t style) {
  return {id, L"edit", L"", ES_LEFT | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP | style};
}

ExpectedControl ComboBox(std::uint32_t id) {
  return {id, L"combobox", L"", CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL | WS_TABSTOP};
}

ExpectedControl DropDownList(std::uint32_t id, std::uint32_t style) {
  return {id, L"combobox", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP | style};
}

ExpectedControl ListView(std::uint32_t id) {
  return {id, L"syslistview32", L"", LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_BORDER | WS_TABSTOP};
}

ExpectedControl TreeView(std::uint32_t id) {
  return {id, kTreeViewClass, L"",
          TVS_SHOWSELALWAYS | TVS_NOTOOLTIPS | TVS_DISABLEDRAGDROP | WS_VSCROLL | WS_BORDER | WS_TABSTOP};
}

ExpectedControl Selector() { return DropDownList(kProfileSelector, CBS_SORT); }
