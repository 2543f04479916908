#include "tests/LoginProperties/Resources/ExpectedResources.h"

namespace {

const ExpectedResources kResources({
    .dialogs =
        {
            OverridePage(
                "WiFiSwitching", 133, L"Wi-Fi Switching", {281, 214}, 1072,
                {
                    Group(1069),
                    Check(1037, L"&Automatically switch"),
                    Group(1071),
                    Check(1115, L"Automatically &switch to corvantwifi or partner hotspot when in range", kWrapped),
                    Label(1119, L"Prompt to switch:"),
                    Check(1118, L""),
                    Label(1117, L"Time before switch (seconds):"),
                    Edit(1121, ES_NUMBER),
                    Label(1116, L"Minimum signal strength (%):"),
                    Edit(1122, ES_NUMBER),
                    Group(1073, L"Advanced &reconnect settings"),
                    Radio(1126,
                          L"If internet connection is lost, wait for VPN timeout to expire before "
                          L"automatically reconnecting using another available network",
                          kWrapped | kFirstOfRadios),
                    Radio(1125,
                          L"If internet connection is lost, automatically reconnect using another available network",
                          kWrapped),
                }),
        },
    .strings =
        {
            {1023, L"Please enter the signal strength percentage value between 10 and 90"},
        },
});

}  // namespace
