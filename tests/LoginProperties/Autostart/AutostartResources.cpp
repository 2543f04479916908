#include "tests/LoginProperties/Resources/ExpectedResources.h"

namespace {

constexpr WORD kProgramIcon = 123;

const ExpectedResources kResources({
    .dialogs =
        {
            OverridePage("Autostart", 129, L"Autostart", {282, 215}, 1066,
                         {
                             TreeView(1173),
                             Push(1041, L"&Add..."),
                             Push(1117, L"&Change..."),
                             Push(1031, L"&Remove"),
                             Push(1014, L"^", BS_ICON),
                             Push(1055, L"v", BS_ICON),
                         }),
            ModalDialog("AddProgram", 1447, L"Configure an object to autostart", {254, 271},
                        {
                            Icon(1075, kProgramIcon),
                            Label(1057, L"Select a program, web page, document, or folder to be opened."),
                            Label(1485, L"", SS_ETCHEDHORZ),
                            Label(1058, L"Name"),
                            ComboBox(1090),
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
                            DropDownList(1092),
                        }),
        },
    .icons = {{"Program", kProgramIcon}, {"MoveUp", 124}, {"MoveDown", 125}},
    .strings =
        {
            {1446, L"Ask before restarting~Do not restart~Always restart"},
            {1447, L"Normal~Maximized~Minimized"},
            {1448, L"Select a program or file to autostart"},
            {1449, L"Executable Files (*.EXE;*.BAT)~*.exe;*.bat~All Files (*.*)~*.*~"},
            {1451, L"You must enter a name for this entry."},
            {1452, L"You must enter a program or command to execute."},
            {1454, L"Do you want to remove the '%1' autostart entry?"},
            {1461, L"(none)~Disconnect if this program ends.~Prompt for disconnect if this program ends."},
            {1462,
             L"(none)|Wait 10 seconds before proceeding.|"
             L"Wait 30 seconds before proceeding.|Wait 1 minute before proceeding.|"
             L"Wait 2 minutes before proceeding.|Wait 5 minutes before proceeding.|"
             L"Wait 2 minutes or until the VPN connection completes before proceeding.|"
             L"Wait 5 minutes or until the VPN connection completes before proceeding.|"
             L"Wait 2 minutes before trying to connect.|Wait 5 minutes before trying to connect."},
            {1463,
             L"This program has been pre-configured and set so that it is not removable and the "
             L"settings may not be modified."},
            {1604,
             L"The path of this file is too long. Choose one with at most 259 characters, or move the file to another "
             L"folder."},
            {1605, L"The files cannot be shown. Type the path of the file instead. (Error %1)"},
        },
});

}  // namespace
