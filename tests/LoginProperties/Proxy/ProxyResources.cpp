#include "tests/LoginProperties/Resources/ExpectedResources.h"

namespace {

const ExpectedResources kResources({
    .dialogs =
        {
            OverridePage("Proxy", 127, L"Proxy", {280, 215}, 1066,
                         {
                             Label(1039,
                                   L"Proxy settings entered here are passed on to Windows and eliminate the need to "
                                   L"enter these values in Windows settings directly with each VPN connection"),
                             ListView(1431),
                             Group(1067, L"Setting"),
                             Radio(1016, L"&Automatically update", kFirstOfRadios),
                             Radio(1017, L"&Do not update"),
                             Radio(1018, L"&Manually update"),
                             Label(1025, L"Auto-Proxy URL"),
                             Edit(1023),
                             Push(1035, L"&Settings..."),
                         }),
            ModalDialog("ProxySettings", 128, L"Program Settings", {240, 226},
                        {
                            Label(1027, L""),
                            ListView(1020),
                            Label(1025, L"Proxy address to use"),
                            Edit(1023),
                            Label(1026, L"Port"),
                            Edit(1024),
                            Push(1079, L"&Add"),
                            Push(1080, L"&Change"),
                            Push(1081, L"&Delete"),
                            Push(IDOK, L"OK", BS_DEFPUSHBUTTON),
                            Push(IDCANCEL, L"Cancel"),
                        }),
        },
    .strings =
        {
            {1000, L"Not updated"},
            {1002, L"Leave"},
            {1003, L"Manual proxy"},
            {1004, L"Proxy Exceptions"},
            {1005, L"Manual"},
            {1008, L"Auto-proxy URL"},
            {1009, L"Automatically"},
            {1097, L"Type"},
            {1098, L"Setting"},
            {1099, L"Value"},
            {1523, L"VPN manual proxy settings"},
            {1524, L"VPN manual proxy exception settings"},
            {1601, L"unknown"},
            {1602, L"Proxy Address"},
            {1603, L"Port"},
        },
});

}  // namespace
