#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

struct ExpectedControl {
  std::uint32_t id;
  std::wstring windowClass;
  std::wstring text;
  // Without WS_CHILD and WS_VISIBLE, which all have, and without the WS_GROUP of a static control.
  std::uint32_t style;
  bool operator==(const ExpectedControl&) const = default;
};

void PrintTo(const ExpectedControl& control, std::ostream* out);

struct ExpectedDialog {
  std::string name;
  WORD id;
  std::wstring title;
  std::uint32_t style;
  SIZE size;
  std::vector<ExpectedControl> controls;  // in tab order
  bool hasOverrideBox = false;
};

void PrintTo(const ExpectedDialog& dialog, std::ostream* out);

struct ExpectedIcon {
  std::string name;
  WORD id;
};

void PrintTo(const ExpectedIcon& icon, std::ostream* out);

/// What a folder of the module brings into its resources. The folder of its tests says so with one object at namespace
/// scope; the module has what all of them together say, and nothing else.
class ExpectedResources {
 public:
  struct Lists {
    std::vector<ExpectedDialog> dialogs{};
    std::vector<ExpectedIcon> icons{};
    std::multimap<unsigned, std::wstring> strings{};
  };

  explicit ExpectedResources(Lists lists);

  static const std::vector<ExpectedDialog>& Dialogs();
  static const std::vector<ExpectedIcon>& Icons();
  static const std::multimap<unsigned, std::wstring>& Strings();
};

// Dialogs in the styles that the module has.

ExpectedDialog Page(const char* name, WORD id, const wchar_t* title, SIZE size, std::vector<ExpectedControl> controls);

/// A page with the controls for the profile and, in a frame, the override box before its own.
ExpectedDialog OverridePage(const char* name, WORD id, const wchar_t* title, SIZE size, std::uint32_t frame,
                            const std::vector<ExpectedControl>& controls);

ExpectedDialog ModalDialog(const char* name, WORD id, const wchar_t* title, SIZE size,
                           std::vector<ExpectedControl> controls);

// Controls.

ExpectedControl Label(std::uint32_t id, const wchar_t* text, std::uint32_t style = 0);
ExpectedControl Icon(std::uint32_t id, WORD icon);
ExpectedControl Group(std::uint32_t id, const wchar_t* text = L"");
ExpectedControl Check(std::uint32_t id, const wchar_t* text, std::uint32_t style = 0);
ExpectedControl Radio(std::uint32_t id, const wchar_t* text, std::uint32_t style = 0);
ExpectedControl Push(std::uint32_t id, const wchar_t* text, std::uint32_t style = 0);
ExpectedControl Edit(std::uint32_t id, std::uint32_t style = 0);
ExpectedControl ComboBox(std::uint32_t id);
ExpectedControl DropDownList(std::uint32_t id, std::uint32_t style = 0);
ExpectedControl ListView(std::uint32_t id);
ExpectedControl TreeView(std::uint32_t id);

/// The selector of the profile.
ExpectedControl Selector();

inline constexpr wchar_t kTreeViewClass[] = L"systreeview32";
inline constexpr std::uint32_t kUserText = SS_ENDELLIPSIS | SS_NOPREFIX;
inline constexpr std::uint32_t kWrapped = BS_MULTILINE | BS_TOP;
inline constexpr std::uint32_t kFirstOfRadios = WS_GROUP | WS_TABSTOP;
inline constexpr std::uint32_t kUnnamed = 0xffffffff;

// Controls that several pages have.
inline constexpr std::uint32_t kOverrideBox = 1036;
inline constexpr std::uint32_t kProfileLabel = 1172;
inline constexpr std::uint32_t kProfileSelector = 7100;
