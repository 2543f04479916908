#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cwctype>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "LoginProperties/Resources/PictureIds.h"
#include "tests/support/DialogTemplate.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

template <auto Free>
struct Freer {
  template <typename Handle>
  void operator()(Handle handle) const {
    Free(handle);
  }
};
using ModulePtr = std::unique_ptr<std::remove_pointer_t<HMODULE>, Freer<FreeLibrary>>;
using DcPtr = std::unique_ptr<std::remove_pointer_t<HDC>, Freer<DeleteDC>>;
using BitmapPtr = std::unique_ptr<std::remove_pointer_t<HBITMAP>, Freer<DeleteObject>>;
using IconPtr = std::unique_ptr<std::remove_pointer_t<HICON>, Freer<DestroyIcon>>;
using FontPtr = std::unique_ptr<std::remove_pointer_t<HFONT>, Freer<DeleteObject>>;

HMODULE Module() {
  static const ModulePtr module(
      LoadLibraryExW(L"Pavise.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
  return module.get();
}

// The bytes of a resource of the module; none when there is no such resource.
std::span<const std::byte> Resource(const wchar_t* type, WORD id) {
  const HRSRC resource = FindResourceW(Module(), MAKEINTRESOURCEW(id), type);
  if (!resource) return {};
  return {static_cast<const std::byte*>(LockResource(LoadResource(Module(), resource))),
          SizeofResource(Module(), resource)};
}

// What a group of icons begins with, and its entry for each size.
#pragma pack(push, 2)
struct IconGroupHeader {
  WORD reserved;
  WORD type;
  WORD count;
};
struct IconGroupEntry {
  BYTE width;
  BYTE height;
  BYTE colours;
  BYTE reserved;
  WORD planes;
  WORD bits;
  DWORD bytes;
  WORD id;
};
#pragma pack(pop)

// A block of the string table holds 16 strings, each behind its length; a length of 0 stands for no string.
BOOL CALLBACK AddStringsOfBlock(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR parameter) {
  constexpr unsigned kStringsPerBlock = 16;
  auto& strings = *reinterpret_cast<std::map<unsigned, std::wstring>*>(parameter);
  const HRSRC resource = FindResourceW(module, name, type);
  auto unit = static_cast<const wchar_t*>(LockResource(LoadResource(module, resource)));
  const auto firstId = static_cast<unsigned>(reinterpret_cast<ULONG_PTR>(name) - 1) * kStringsPerBlock;
  for (unsigned i = 0; i < kStringsPerBlock; ++i) {
    const std::size_t length = *unit++;
    if (length != 0) strings.emplace(firstId + i, std::wstring(unit, length));
    unit += length;
  }
  return TRUE;
}

std::map<unsigned, std::wstring> ModuleStrings() {
  std::map<unsigned, std::wstring> strings;
  EnumResourceNamesW(Module(), RT_STRING, AddStringsOfBlock, reinterpret_cast<LONG_PTR>(&strings));
  return strings;
}

struct ExpectedControl {
  std::uint32_t id;
  std::wstring windowClass;
  std::wstring text;
  // Without WS_CHILD and WS_VISIBLE, which all have, and without the WS_GROUP of a static control.
  std::uint32_t style;
  bool operator==(const ExpectedControl&) const = default;
};

void PrintTo(const ExpectedControl& control, std::ostream* out) {
  *out << control.id << " " << testing::PrintToString(control.windowClass) << " "
       << testing::PrintToString(control.text) << " style 0x" << std::hex << control.style << std::dec;
}

constexpr wchar_t kListViewClass[] = L"syslistview32";
constexpr wchar_t kTreeViewClass[] = L"systreeview32";

ExpectedControl Label(std::uint32_t id, const wchar_t* text, std::uint32_t style = 0) {
  return {id, L"static", text, SS_LEFT | style};
}
ExpectedControl Icon(std::uint32_t id, const wchar_t* resource) { return {id, L"static", resource, SS_ICON}; }
ExpectedControl Group(std::uint32_t id, const wchar_t* text = L"") { return {id, L"button", text, BS_GROUPBOX}; }
ExpectedControl Check(std::uint32_t id, const wchar_t* text, std::uint32_t style = 0) {
  return {id, L"button", text, BS_AUTOCHECKBOX | WS_TABSTOP | style};
}
ExpectedControl Radio(std::uint32_t id, const wchar_t* text, std::uint32_t style = 0) {
  return {id, L"button", text, BS_AUTORADIOBUTTON | style};
}
ExpectedControl Push(std::uint32_t id, const wchar_t* text, std::uint32_t style = 0) {
  return {id, L"button", text, BS_PUSHBUTTON | WS_TABSTOP | style};
}
ExpectedControl Edit(std::uint32_t id, std::uint32_t style = 0) {
  return {id, L"edit", L"", ES_LEFT | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP | style};
}
ExpectedControl DropDownList(std::uint32_t id, std::uint32_t style = 0) {
  return {id, L"combobox", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP | style};
}
ExpectedControl ListView(std::uint32_t id) {
  return {id, kListViewClass, L"", LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_BORDER | WS_TABSTOP};
}
ExpectedControl TreeView(std::uint32_t id) {
  return {id, kTreeViewClass, L"",
          TVS_SHOWSELALWAYS | TVS_NOTOOLTIPS | TVS_DISABLEDRAGDROP | WS_VSCROLL | WS_BORDER | WS_TABSTOP};
}

constexpr std::uint32_t kUserText = SS_ENDELLIPSIS | SS_NOPREFIX;
constexpr std::uint32_t kWrapped = BS_MULTILINE | BS_TOP;
constexpr std::uint32_t kFirstOfRadios = WS_GROUP | WS_TABSTOP;
constexpr std::uint32_t kPage = DS_SETFONT | WS_CHILD | WS_DISABLED | WS_CAPTION;
constexpr std::uint32_t kModal = DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr std::uint32_t kUnnamed = 0xffffffff;
constexpr std::uint32_t kOverrideCheck = 1036;

struct ExpectedDialog {
  const char* name;
  WORD id;
  std::wstring title;
  std::uint32_t style;
  int width;
  int height;
  std::vector<ExpectedControl> controls;  // in tab order
};

void PrintTo(const ExpectedDialog& dialog, std::ostream* out) { *out << dialog.name; }

const ExpectedDialog kPreferences = {"Preferences",
                                     126,
                                     L"Preferences",
                                     kPage,
                                     280,
                                     215,
                                     {Label(1172, L"Login profile"), DropDownList(7100, CBS_SORT), Group(1067),
                                      Check(1036, L"&Override defaults"), TreeView(1020)}};

const ExpectedDialog kProxy = {
    "Proxy",
    127,
    L"Proxy",
    kPage,
    280,
    215,
    {Label(1172, L"Login profile"), DropDownList(7100, CBS_SORT), Group(1066), Check(1036, L"&Override defaults"),
     Label(1039,
           L"Proxy settings entered here are passed on to Windows and eliminate the need to enter these "
           L"values in "
           L"Windows settings directly with each VPN connection"),
     ListView(1431), Group(1067, L"Setting"), Radio(1016, L"&Automatically update", kFirstOfRadios),
     Radio(1017, L"&Do not update"), Radio(1018, L"&Manually update"), Label(1025, L"Auto-Proxy URL"), Edit(1023),
     Push(1035, L"&Settings...")}};

const ExpectedDialog kProxySettings = {
    "ProxySettings",
    128,
    L"Program Settings",
    kModal,
    240,
    226,
    {Label(1027, L""), ListView(1020), Label(1025, L"Proxy address to use"), Edit(1023), Label(1026, L"Port"),
     Edit(1024), Push(1079, L"&Add"), Push(1080, L"&Change"), Push(1081, L"&Delete"),
     Push(IDOK, L"OK", BS_DEFPUSHBUTTON), Push(IDCANCEL, L"Cancel")}};

const ExpectedDialog kAutostart = {
    "Autostart",
    129,
    L"Autostart",
    kPage,
    282,
    215,
    {Label(1172, L"Login profile"), DropDownList(7100, CBS_SORT), Group(1066), Check(1036, L"&Override defaults"),
     TreeView(1173), Push(1041, L"&Add..."), Push(1117, L"&Change..."), Push(1031, L"&Remove"),
     Push(1014, L"^", BS_ICON), Push(1055, L"v", BS_ICON)}};

const ExpectedDialog kTimeouts = {
    "Timeouts",
    130,
    L"Timeouts",
    kPage,
    282,
    214,
    {Label(1172, L"Login profile"), DropDownList(7100, CBS_SORT), Group(1069), Check(1036, L"&Override defaults"),
     Group(1071), Check(1425, L"&Enable duration timeout"),
     Label(1427, L"Automatically disconnect after being connected for:"), DropDownList(1426), Group(1073),
     Check(1430, L"E&nable activity threshold timeout"), Label(1433, L"Automatically disconnect if less than:"),
     DropDownList(1431), Label(1435, L"are transferred over a period of:"), DropDownList(1434), Group(1070),
     Check(1428, L"&Display warning before timeout"),
     Label(1429, L"Before disconnecting due to a timeout, display a warning for:"), DropDownList(1111)}};

const ExpectedDialog kGeneral = {
    "General",
    131,
    L"General",
    kPage,
    282,
    215,
    {Group(1033, L"Profile Manager"),
     Icon(1076, L"#116"),
     Label(1036, L"You can add a new profile or switch to another profile."),
     Label(1034, L"Login profile"),
     DropDownList(7100, CBS_SORT),
     Push(1016, L"New..."),
     Push(1112, L"Rename"),
     Push(1049, L"Remove"),
     Group(1031, L"Network Services"),
     Icon(1077, L"#113"),
     Label(1050, L"You can modify your user ID and your network service."),
     Label(1037, L"Account:"),
     Label(1038, L"", kUserText),
     Label(1029, L"User ID:"),
     Label(1039, L"", kUserText),
     Label(1035, L"Network Service:"),
     Label(1040, L"", kUserText),
     Push(1014, L"Configure..."),
     Group(1030, L"Servers"),
     Icon(114, L"#114"),
     Label(1032, L"You can specify DNS, WINS, and domain suffix settings to use with this profile."),
     Push(1015, L"Configure...")}};

const ExpectedDialog kRenameProfile = {"RenameProfile",
                                       132,
                                       L"Rename Profile",
                                       kModal,
                                       188,
                                       77,
                                       {Label(kUnnamed, L"Enter the new profile name:"), Edit(1114),
                                        Push(IDOK, L"OK", BS_DEFPUSHBUTTON), Push(IDCANCEL, L"Cancel")}};

const ExpectedDialog kWiFiSwitching = {
    "WiFiSwitching",
    133,
    L"Wi-Fi Switching",
    kPage,
    281,
    214,
    {Label(1172, L"Login profile"), DropDownList(7100, CBS_SORT), Group(1072), Check(1036, L"&Override defaults"),
     Group(1069), Check(1037, L"&Automatically switch"), Group(1071),
     Check(1115, L"Automatically &switch to corvantwifi or partner hotspot when in range", kWrapped),
     Label(1119, L"Prompt to switch:"), Check(1118, L""), Label(1117, L"Time before switch (seconds):"),
     Edit(1121, ES_NUMBER), Label(1116, L"Minimum signal strength (%):"), Edit(1122, ES_NUMBER),
     Group(1073, L"Advanced &reconnect settings"),
     Radio(1126,
           L"If internet connection is lost, wait for VPN timeout to expire before automatically "
           L"reconnecting using "
           L"another available network",
           kWrapped | kFirstOfRadios),
     Radio(1125, L"If internet connection is lost, automatically reconnect using another available network",
           kWrapped)}};

const ExpectedDialog kAddProgram = {"AddProgram",
                                    1447,
                                    L"Configure an object to autostart",
                                    kModal,
                                    254,
                                    271,
                                    {Icon(1075, L"#123"),
                                     Label(1057, L"Select a program, web page, document, or folder to be opened."),
                                     Label(1485, L"", SS_ETCHEDHORZ),
                                     Label(1058, L"Name"),
                                     {1090, L"combobox", L"", CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL | WS_TABSTOP},
                                     Label(1059, L"When to start"),
                                     DropDownList(1054),
                                     Label(1052, L"Program or file name"),
                                     Edit(1449),
                                     Push(1453, L"Browse..."),
                                     Label(1061, L"Parameters"),
                                     Edit(1450),
                                     Label(1062, L"Default directory"),
                                     Edit(1451),
                                     Push(1056, L"Test"),
                                     Push(IDOK, L"OK"),
                                     Push(IDCANCEL, L"Cancel"),
                                     Push(IDHELP, L"Help"),
                                     Group(1094),
                                     Check(1093, L"Advanced options"),
                                     Label(1063, L"Initial size"),
                                     DropDownList(1452),
                                     Label(1064, L"When reconnecting"),
                                     DropDownList(1345),
                                     Label(1095, L"Connection options:"),
                                     DropDownList(1091),
                                     Label(1096, L"Delay options:"),
                                     DropDownList(1092)}};

std::optional<DialogTemplate> ModuleDialog(const ExpectedDialog& dialog) {
  return ParseDialogTemplate(Resource(RT_DIALOG, dialog.id));
}

bool IsGroup(const DialogControl& control) {
  return control.windowClass == L"button" && (control.style & BS_TYPEMASK) == BS_GROUPBOX;
}

bool IsRadioOrCheck(const DialogControl& control) {
  const auto type = control.style & BS_TYPEMASK;
  return control.windowClass == L"button" && (type == BS_AUTOCHECKBOX || type == BS_AUTORADIOBUTTON);
}

bool IsPush(const DialogControl& control) {
  return control.windowClass == L"button" && (control.style & BS_TYPEMASK) <= BS_DEFPUSHBUTTON;
}

bool IsLabel(const DialogControl& control) {
  return control.windowClass == L"static" && (control.style & SS_TYPEMASK) == SS_LEFT;
}

// A combo box takes the room of its closed field; the height in the template is that of its list.
RECT Place(const DialogControl& control) {
  constexpr int kClosedComboBox = 14;
  const int height = control.windowClass == L"combobox" ? kClosedComboBox : control.height;
  return {control.x, control.y, control.x + control.width, control.y + height};
}

std::wstring AccessKeys(const DialogTemplate& dialog) {
  std::wstring keys;
  for (const auto& control : dialog.controls) {
    const auto mark = control.text.find(L'&');
    if (mark != std::wstring::npos) keys += static_cast<wchar_t>(std::towlower(control.text.at(mark + 1)));
  }
  return keys;
}

// Measures texts in pixels as a dialog with the template's font shows them.
class TextMeasure {
 public:
  explicit TextMeasure(const DialogTemplate& dialog)
      : dc_(CreateCompatibleDC(nullptr)),
        font_(CreateFontW(-MulDiv(dialog.fontSize, GetDeviceCaps(dc_.get(), LOGPIXELSY), 72), 0, 0, 0, FW_NORMAL, 0, 0,
                          0, DEFAULT_CHARSET, 0, 0, 0, 0, dialog.fontName.c_str())) {
    previous_ = SelectObject(dc_.get(), font_.get());
    constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    SIZE letters;
    GetTextExtentPoint32W(dc_.get(), kLetters, 52, &letters);
    base_ = {(letters.cx / 26 + 1) / 2, letters.cy};
  }
  ~TextMeasure() { SelectObject(dc_.get(), previous_); }
  TextMeasure(const TextMeasure&) = delete;
  TextMeasure& operator=(const TextMeasure&) = delete;

  SIZE Pixels(SIZE dialogUnits) const {
    return {MulDiv(dialogUnits.cx, base_.cx, 4), MulDiv(dialogUnits.cy, base_.cy, 8)};
  }

  // The room that the text takes when its lines may be as wide as `width`.
  SIZE Extent(const std::wstring& text, LONG width, bool wrap) const {
    RECT room = {0, 0, width, 0};
    DrawTextW(dc_.get(), text.c_str(), static_cast<int>(text.size()), &room,
              DT_CALCRECT | (wrap ? DT_WORDBREAK : DT_SINGLELINE));
    return {room.right, room.bottom};
  }

 private:
  DcPtr dc_;
  FontPtr font_;
  HGDIOBJ previous_;
  SIZE base_;
};

}  // namespace

TEST(StringTable, HoldsExactlyTheTextsOfTheModule) {
  ASSERT_TRUE(Module());
  const std::map<unsigned, std::wstring> expected = {
      {1000, L"Not updated"},
      {1002, L"Leave"},
      {1003, L"Manual proxy"},
      {1004, L"Proxy Exceptions"},
      {1005, L"Manual"},
      {1008, L"Auto-proxy URL"},
      {1009, L"Automatically"},
      {1010, L"60,120,300,600,900,1200,1800"},
      {1011, L"bytes"},
      {1012, L"Show the reduced window instead of the histogram"},
      {1013, L"Kbytes"},
      {1014, L"Automatically connect if password saved"},
      {1016, L"Show the detailed message window"},
      {1017, L"Minimize the main window"},
      {1018, L"When disconnect is pressed"},
      {1019, L"When close or exit is selected"},
      {1020, L"When autoloading program closes"},
      {1021, L"Minimize main window to system tray instead of taskbar"},
      {1022, L"If primary DNS not available"},
      {1023, L"Please enter the signal strength percentage value between 10 and 90"},
      {1025,
       L"50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000, 50000, 100000, 200000, "
       L"500000,1000000,2000000,5000000"},
      {1026, L"When this program starts"},
      {1027, L"When connecting"},
      {1028, L"After connecting"},
      {1029, L"Confirm before disconnecting"},
      {1030, L"VPN Details"},
      {1031, L"Show popup warning"},
      {1032, L"Automatically connect if unexpectedly disconnected from a Wi-Fi connection"},
      {1037, L"%1 - Login Properties"},
      {1038, L"unlimited"},
      {1039, L"unknown"},
      {1041, L"(Your maximum inactivity time is %1.)"},
      {1042, L"A time value must be specified for a selected option."},
      {1043, L"Warning time must be less than idle time, threshold time and duration time."},
      {1044, L"Negotiate UDP encapsulation with VPN server for NAT traversal"},
      {1045, L"Warn each time a toll Wi-Fi hotspot is used"},
      {1048, L"Show the connect speed from the network if available"},
      {1050, L"Byte"},
      {1051, L"KByte"},
      {1057, L"When password will expire"},
      {1060, L"Before prompting for browser-based login"},
      {1061, L"Check if returning to a previous connection location"},
      {1082, L"Hotspot Browsing Settings"},
      {1083, L"Use Bing Maps"},
      {1084, L"Bypass AccessPoint Browser Accessibility"},
      {1097, L"Type"},
      {1098, L"Setting"},
      {1099, L"Value"},
      {1434, L"hours"},
      {1435, L"hour"},
      {1436, L"minutes"},
      {1437, L"minute"},
      {1438, L"seconds"},
      {1439, L"second"},
      {1441, L"120,300,600,1200,1800,3600,7200,14400,28800"},
      {1442, L"30,60,120,180,240,300"},
      {1443, L"You cannot remove the last profile."},
      {1445, L"Do you want to remove the definitions for %1?"},
      {1446, L"Ask before restarting~Do not restart~Always restart"},
      {1447, L"Normal~Maximized~Minimized"},
      {1448, L"Select a program or file to autostart"},
      {1449, L"Executable Files (*.EXE;*.BAT)~*.exe;*.bat~All Files (*.*)~*.*~"},
      {1450, L"You are currently connected with this login profile, so it cannot be removed."},
      {1451, L"You must enter a name for this entry."},
      {1452, L"You must enter a program or command to execute."},
      {1454, L"Do you want to remove the '%1' autostart entry?"},
      {1460, L"(Your maximum inactivity time will be determined at your next connection.)"},
      {1461, L"(none)~Disconnect if this program ends.~Prompt for disconnect if this program ends."},
      {1462,
       L"(none)|Wait 10 seconds before proceeding.|Wait 30 seconds before proceeding.|Wait 1 minute before "
       L"proceeding.|Wait 2 minutes before proceeding.|Wait 5 minutes before proceeding.|Wait 2 minutes or "
       L"until the VPN connection completes before proceeding.|Wait 5 minutes or until the VPN connection "
       L"completes before proceeding.|Wait 2 minutes before trying to connect.|Wait 5 minutes before trying "
       L"to connect."},
      {1463,
       L"This program has been pre-configured and set so that it is not removable and the settings may not "
       L"be modified."},
      {1477, L"VPN MTU Size"},
      {1478, L"Default (Recommended)"},
      {1479, L"1362"},
      {1480, L"1300"},
      {1481, L"1000"},
      {1482, L"700"},
      {1483, L"Perform VPN server health check."},
      {1485, L"Prompt to enter online mode if currently in offline mode."},
      {1486, L"Append domain and DNS suffix search list."},
      {1487, L"Use SSL Tunneling when a proxy is detected"},
      {1488, L"Use SSL Tunneling when an IPSec connection cannot be established."},
      {1489, L"Register VPN connection's address in DNS."},
      {1492, L"Use ephemeral source ports for IPSec."},
      {1501, L"Minimize main window to system tray"},
      {1502, L"Prompt if a third party credential provider is installed."},
      {1504, L"Enable additional adapter security (prevent multi-homing)"},
      {1505, L"Disable access to the local subnet while VPN connected."},
      {1506, L"Use Corvant VPN servers for SSL Tunneling only."},
      {1507, L"Number of IPSec attempts before failing over to SSL Tunneling."},
      {1508, L"Default (Recommended)"},
      {1509, L"1"},
      {1510, L"2"},
      {1511, L"3"},
      {1514, L"Prefer IPv6 "},
      {1518, L"Bypass Hardware Rendering"},
      {1520, L"Use Google Maps"},
      {1521, L"Certificates"},
      {1522, L"Use saved certificate."},
      {1523, L"VPN manual proxy settings"},
      {1524, L"VPN manual proxy exception settings"},
      {1525, L"MBytes"},
      {1526, L"MByte"},
  };
  EXPECT_THAT(ModuleStrings(), ElementsAreArray(expected));
}

class StateImages : public testing::Test {
 protected:
  void SetUp() override {
    bitmap_.reset(static_cast<HBITMAP>(
        LoadImageW(Module(), MAKEINTRESOURCEW(IDB_STATE_IMAGES), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    ASSERT_TRUE(bitmap_);
    BITMAP strip;
    ASSERT_EQ(GetObjectW(bitmap_.get(), sizeof strip, &strip), static_cast<int>(sizeof strip));
    ASSERT_EQ(strip.bmWidth, static_cast<LONG>(kWidth));
    ASSERT_EQ(strip.bmHeight, static_cast<LONG>(kHeight));
    ASSERT_EQ(strip.bmBitsPixel, 24);
    rowBytes_ = static_cast<std::size_t>(strip.bmWidthBytes);
    bytes_ = {static_cast<const BYTE*>(strip.bmBits), kHeight * rowBytes_};
  }

  std::span<const BYTE> Pixels(std::size_t x, std::size_t y, std::size_t count) const {
    return bytes_.subspan(y * rowBytes_ + x * 3, count * 3);
  }

  bool IsTransparent(std::size_t x, std::size_t y) const {
    return std::ranges::all_of(Pixels(x, y, 1), [](BYTE part) { return part == 255; });
  }

  std::vector<BYTE> Cell(std::size_t cell) const {
    std::vector<BYTE> pixels;
    for (std::size_t y = 0; y < kHeight; ++y) {
      const auto row = Pixels(cell * kCellWidth, y, kCellWidth);
      pixels.insert(pixels.end(), row.begin(), row.end());
    }
    return pixels;
  }

  static constexpr std::size_t kWidth = 242;
  static constexpr std::size_t kHeight = 16;
  static constexpr std::size_t kCellWidth = 16;

 private:
  BitmapPtr bitmap_;
  std::size_t rowBytes_ = 0;
  std::span<const BYTE> bytes_;
};

TEST_F(StateImages, FillTheCellsOfStatesAndHeadings) {
  std::set<std::size_t> filled;
  for (std::size_t x = 0; x < kWidth; ++x) {
    for (std::size_t y = 0; y < kHeight; ++y) {
      if (!IsTransparent(x, y)) filled.insert(x / kCellWidth);
    }
  }
  EXPECT_THAT(filled, ElementsAre(1, 2, 3, 4, 5, 7, 8, 9, 12, 13));
}

TEST_F(StateImages, TellOnFromOff) {
  EXPECT_NE(Cell(1), Cell(2));
  EXPECT_NE(Cell(7), Cell(8));
}

// A box or circle is light inside on every background, so that its mark is seen.
TEST_F(StateImages, HideWhatIsBehindABoxOrCircle) {
  for (const std::size_t cell : {1u, 2u, 7u, 8u}) {
    for (std::size_t y = 0; y < kHeight; ++y) {
      int edges = 0;
      for (std::size_t x = cell * kCellWidth + 1; x < (cell + 1) * kCellWidth; ++x) {
        if (IsTransparent(x, y) != IsTransparent(x - 1, y)) ++edges;
      }
      EXPECT_LE(edges, 2) << "cell " << cell << ", row " << y;
    }
  }
}

struct ExpectedIcon {
  const char* name;
  WORD id;
};

void PrintTo(const ExpectedIcon& icon, std::ostream* out) { *out << icon.name; }

class ModuleIcon : public testing::TestWithParam<ExpectedIcon> {};

INSTANTIATE_TEST_SUITE_P(Module, ModuleIcon,
                         testing::Values(ExpectedIcon{"Network", 113}, ExpectedIcon{"Servers", 114},
                                         ExpectedIcon{"Profile", 116}, ExpectedIcon{"Program", 123},
                                         ExpectedIcon{"MoveUp", 124}, ExpectedIcon{"MoveDown", 125}),
                         [](const auto& icon) { return std::string(icon.param.name); });

TEST_P(ModuleIcon, HasAPictureWithTransparencyInEachSize) {
  const auto group = Resource(RT_GROUP_ICON, GetParam().id);
  ASSERT_GE(group.size(), sizeof(IconGroupHeader));
  const auto& header = *reinterpret_cast<const IconGroupHeader*>(group.data());
  ASSERT_GE(group.size(), sizeof header + header.count * sizeof(IconGroupEntry));
  const std::span entries(reinterpret_cast<const IconGroupEntry*>(&header + 1), header.count);
  std::vector<int> sizes;
  for (const auto& entry : entries) {
    sizes.push_back(entry.width);
    EXPECT_EQ(entry.height, entry.width);
    EXPECT_EQ(entry.bits, 32) << sizes.back();
  }
  EXPECT_THAT(sizes, ElementsAre(16, 24, 32, 48));
}

TEST_P(ModuleIcon, IsLoadedInTheSizeThatIsAskedFor) {
  for (const int size : {16, 24, 32, 48}) {
    const IconPtr icon(
        static_cast<HICON>(LoadImageW(Module(), MAKEINTRESOURCEW(GetParam().id), IMAGE_ICON, size, size, 0)));
    ASSERT_TRUE(icon) << size;
    ICONINFO info;
    ASSERT_TRUE(GetIconInfo(icon.get(), &info));
    const BitmapPtr mask(info.hbmMask);
    const BitmapPtr colours(info.hbmColor);
    BITMAP picture;
    ASSERT_NE(GetObjectW(colours.get(), sizeof picture, &picture), 0);
    EXPECT_EQ(picture.bmWidth, size);
    EXPECT_EQ(picture.bmHeight, size);
  }
}

TEST(VersionResource, NamesProductAndFile) {
  const auto resource = Resource(RT_VERSION, VS_VERSION_INFO);
  ASSERT_FALSE(resource.empty());
  // A query may write into the block that it reads.
  std::vector<std::byte> version(resource.begin(), resource.end());
  const auto text = [&](const std::wstring& name) -> std::wstring {
    void* value = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(version.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &value, &length)) return L"";
    return static_cast<const wchar_t*>(value);
  };
  EXPECT_EQ(text(L"CompanyName"), L"Ostrel");
  EXPECT_EQ(text(L"ProductName"), L"Wayline");
  EXPECT_EQ(text(L"FileDescription"), L"Network access login properties");
  EXPECT_EQ(text(L"InternalName"), L"Pavise");
  EXPECT_EQ(text(L"OriginalFilename"), L"Pavise.dll");
  EXPECT_EQ(text(L"ProductVersion"), text(L"FileVersion"));

  void* value = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueW(version.data(), L"\\", &value, &length));
  const auto& numbers = *static_cast<const VS_FIXEDFILEINFO*>(value);
  EXPECT_EQ(numbers.dwFileType, static_cast<DWORD>(VFT_DLL));
  EXPECT_EQ(text(L"FileVersion"), std::to_wstring(HIWORD(numbers.dwFileVersionMS)) + L'.' +
                                      std::to_wstring(LOWORD(numbers.dwFileVersionMS)) + L'.' +
                                      std::to_wstring(HIWORD(numbers.dwFileVersionLS)) + L'.' +
                                      std::to_wstring(LOWORD(numbers.dwFileVersionLS)));
}

TEST(Manifest, AsksForCommonControlsSixUnderALibrarysNumber) {
  const auto manifest = Resource(RT_MANIFEST, 2);
  const std::string text(reinterpret_cast<const char*>(manifest.data()), manifest.size());
  EXPECT_THAT(text, HasSubstr("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
}

class Dialog : public testing::TestWithParam<ExpectedDialog> {
 protected:
  void SetUp() override {
    const auto dialog = ModuleDialog(GetParam());
    ASSERT_TRUE(dialog);
    dialog_ = *dialog;
  }

  DialogTemplate dialog_;
};

INSTANTIATE_TEST_SUITE_P(Module, Dialog,
                         testing::Values(kPreferences, kProxy, kProxySettings, kAutostart, kTimeouts, kGeneral,
                                         kRenameProfile, kWiFiSwitching, kAddProgram),
                         [](const auto& dialog) { return std::string(dialog.param.name); });

TEST_P(Dialog, HasItsTitleSizeAndFont) {
  EXPECT_EQ(dialog_.title, GetParam().title);
  EXPECT_EQ(dialog_.style, GetParam().style);
  EXPECT_EQ(dialog_.width, GetParam().width);
  EXPECT_EQ(dialog_.height, GetParam().height);
  EXPECT_EQ(dialog_.fontSize, 8);
  EXPECT_EQ(dialog_.fontName, L"Tahoma");
}

TEST_P(Dialog, HasItsControlsInTabOrder) {
  std::vector<ExpectedControl> controls;
  for (const auto& control : dialog_.controls) {
    EXPECT_EQ(control.style & (WS_CHILD | WS_VISIBLE), static_cast<std::uint32_t>(WS_CHILD | WS_VISIBLE)) << control.id;
    const std::uint32_t ignored = WS_CHILD | WS_VISIBLE | (control.windowClass == L"static" ? WS_GROUP : 0);
    controls.push_back({control.id, control.windowClass, control.text, control.style & ~ignored});
  }
  EXPECT_THAT(controls, ElementsAreArray(GetParam().controls));
}

TEST_P(Dialog, NamesOnlyIconsThatThereAre) {
  for (const auto& control : dialog_.controls) {
    if (control.windowClass != L"static" || (control.style & SS_TYPEMASK) != SS_ICON) continue;
    const auto id = static_cast<WORD>(std::stoi(control.text.substr(1)));  // behind a number sign
    EXPECT_FALSE(Resource(RT_GROUP_ICON, id).empty()) << id;
  }
}

TEST_P(Dialog, KeepsControlsApartAndInsideItsMargins) {
  constexpr int kMargin = 7;
  const RECT room = {kMargin, kMargin, dialog_.width - kMargin, dialog_.height - kMargin};
  for (const auto& control : dialog_.controls) {
    const RECT place = Place(control);
    RECT inside;
    EXPECT_TRUE(IntersectRect(&inside, &place, &room) && EqualRect(&inside, &place)) << control.id;
    for (const auto& other : dialog_.controls) {
      if (&other == &control || IsGroup(control) || IsGroup(other)) continue;
      const RECT otherPlace = Place(other);
      RECT common;
      EXPECT_FALSE(IntersectRect(&common, &place, &otherPlace)) << control.id << " and " << other.id;
    }
  }
}

TEST_P(Dialog, LeavesRoomForEveryText) {
  constexpr LONG kCheckMark = 18;  // pixels of the box or circle and the gap behind it
  constexpr LONG kPushFrame = 10;
  const TextMeasure measure(dialog_);
  for (const auto& control : dialog_.controls) {
    if (control.text.empty() || (!IsLabel(control) && !IsRadioOrCheck(control) && !IsPush(control))) continue;
    SIZE room = measure.Pixels({control.width, control.height});
    if (IsRadioOrCheck(control)) room.cx -= kCheckMark;
    if (IsPush(control)) room.cx -= kPushFrame;
    const SIZE text = measure.Extent(control.text, room.cx, IsLabel(control) || (control.style & BS_MULTILINE));
    EXPECT_LE(text.cx, room.cx) << control.id;
    EXPECT_LE(text.cy, room.cy) << control.id;
  }
}

TEST_P(Dialog, GivesEachAccessKeyOnce) {
  auto keys = AccessKeys(dialog_);
  std::ranges::sort(keys);
  EXPECT_EQ(std::ranges::adjacent_find(keys), keys.end()) << testing::PrintToString(keys);
}

// Screen readers name a control without a text of its own after the static text before it. The trees have no
// label: there the override box comes before them.
TEST_P(Dialog, PutsALabelBeforeEveryControlWithoutText) {
  for (std::size_t i = 0; i < dialog_.controls.size(); ++i) {
    const auto& control = dialog_.controls[i];
    if (!control.text.empty() || control.windowClass == L"static" || IsGroup(control)) continue;
    ASSERT_GT(i, 0u);
    const auto& before = dialog_.controls[i - 1];
    if (control.windowClass == kTreeViewClass) {
      EXPECT_EQ(before.id, kOverrideCheck);
    } else {
      EXPECT_TRUE(IsLabel(before)) << control.id;
    }
  }
}

class OverridePage : public Dialog {};

INSTANTIATE_TEST_SUITE_P(Module, OverridePage,
                         testing::Values(kPreferences, kProxy, kAutostart, kTimeouts, kWiFiSwitching),
                         [](const auto& dialog) { return std::string(dialog.param.name); });

// The override box enables and disables what follows it, so the selector and the page's frame come before it.
TEST_P(OverridePage, HasOnlySelectorAndFrameBeforeTheOverrideBox) {
  const auto& controls = dialog_.controls;
  ASSERT_GT(controls.size(), 4u);
  EXPECT_EQ(controls[0].id, 1172u);
  EXPECT_EQ(controls[1].id, 7100u);
  EXPECT_TRUE(IsGroup(controls[2]));
  EXPECT_EQ(controls[3].id, kOverrideCheck);
}

// The box stands on the top line of the frame, as its caption does on a plain group box.
TEST_P(OverridePage, ShowsTheOverrideBoxOnTheTopLineOfItsFrame) {
  const RECT frame = Place(dialog_.controls[2]);
  const RECT box = Place(dialog_.controls[3]);
  const LONG topLine = frame.top + 4;  // half the height of a caption
  EXPECT_LT(box.top, topLine);
  EXPECT_GT(box.bottom, topLine);
  EXPECT_GT(box.left, frame.left);
  EXPECT_LT(box.right, frame.right);
}
