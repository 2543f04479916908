#include "tests/LoginProperties/Resources/ExpectedResources.h"

namespace {

constexpr WORD kNetworkIcon = 113;
constexpr WORD kServersIcon = 114;
constexpr WORD kProfileIcon = 116;

const ExpectedResources kResources({
    .dialogs =
        {
            Page("General", 131, L"General", {282, 215},
                 {
                     Group(1033, L"Profile Manager"),
                     Icon(1076, kProfileIcon),
                     Label(1036, L"You can add a new profile or switch to another profile."),
                     Label(1034, L"Login profile"),
                     Selector(),
                     Push(1016, L"New..."),
                     Push(1112, L"Rename"),
                     Push(1049, L"Remove"),
                     Group(1031, L"Network Services"),
                     Icon(1077, kNetworkIcon),
                     Label(1050, L"You can modify your user ID and your network service."),
                     Label(1037, L"Account:"),
                     Label(1038, L"", kUserText),
                     Label(1029, L"User ID:"),
                     Label(1039, L"", kUserText),
                     Label(1035, L"Network Service:"),
                     Label(1040, L"", kUserText),
                     Push(1014, L"Configure..."),
                     Group(1030, L"Servers"),
                     Icon(114, kServersIcon),
                     Label(1032, L"You can specify DNS, WINS, and domain suffix settings to use with this profile."),
                     Push(1015, L"Configure..."),
                 }),
            ModalDialog("RenameProfile", 132, L"Rename Profile", {188, 77},
                        {
                            Label(kUnnamed, L"Enter the new profile name:"),
                            Edit(1114),
                            Push(IDOK, L"OK", BS_DEFPUSHBUTTON),
                            Push(IDCANCEL, L"Cancel"),
                        }),
        },
    .icons = {{"Network", kNetworkIcon}, {"Servers", kServersIcon}, {"Profile", kProfileIcon}},
    .strings =
        {
            {1443, L"You cannot remove the last profile."},
            {1445, L"Do you want to remove the definitions for %1?"},
            {1450, L"You are currently connected with this login profile, so it cannot be removed."},
            {1600, L"%1 cannot be removed. These profiles follow its settings:\n\n%2"},
        },
});

}  // namespace
