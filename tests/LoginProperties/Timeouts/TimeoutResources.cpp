#include "tests/LoginProperties/Resources/ExpectedResources.h"

namespace {

const ExpectedResources kResources({
    .dialogs =
        {
            OverridePage("Timeouts", 130, L"Timeouts", {282, 214}, 1069,
                         {
                             Group(1071),
                             Check(1425, L"&Enable duration timeout"),
                             Label(1427, L"Automatically disconnect after being connected for:"),
                             DropDownList(1426),
                             Group(1073),
                             Check(1430, L"E&nable activity threshold timeout"),
                             Label(1433, L"Automatically disconnect if less than:"),
                             DropDownList(1431),
                             Label(1435, L"are transferred over a period of:"),
                             DropDownList(1434),
                             Group(1070),
                             Check(1428, L"&Display warning before timeout"),
                             Label(1429, L"Before disconnecting due to a timeout, display a warning for:"),
                             DropDownList(1111),
                         }),
        },
    .strings =
        {
            {1010, L"60,120,300,600,900,1200,1800"},
            {1011, L"bytes"},
            {1013, L"Kbytes"},
            {1025,
             L"50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000, 50000, "
             L"100000, 200000, 500000,1000000,2000000,5000000"},
            {1038, L"unlimited"},
            {1039, L"unknown"},
            {1041, L"(Your maximum inactivity time is %1.)"},
            {1042, L"A time value must be specified for a selected option."},
            {1043, L"Warning time must be less than idle time, threshold time and duration time."},
            {1050, L"Byte"},
            {1051, L"KByte"},
            {1434, L"hours"},
            {1435, L"hour"},
            {1436, L"minutes"},
            {1437, L"minute"},
            {1438, L"seconds"},
            {1439, L"second"},
            {1441, L"120,300,600,1200,1800,3600,7200,14400,28800"},
            {1442, L"30,60,120,180,240,300"},
            {1460, L"(Your maximum inactivity time will be determined at your next connection.)"},
            {1525, L"MBytes"},
            {1526, L"MByte"},
        },
});

}  // namespace
