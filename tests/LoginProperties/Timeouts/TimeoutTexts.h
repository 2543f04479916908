#pragma once

#include "LoginProperties/Timeouts/TimeoutText.h"

inline const DurationUnits kDurationUnits = {L"hour", L"hours", L"minute", L"minutes", L"second", L"seconds"};
inline const ByteUnits kByteUnits = {L"Byte", L"bytes", L"KByte", L"Kbytes", L"MByte", L"MBytes"};

inline constexpr wchar_t kDurationList[] = L"120,300,600,1200,1800,3600,7200,14400,28800";
inline constexpr wchar_t kWarningList[] = L"30,60,120,180,240,300";
inline constexpr wchar_t kPeriodList[] = L"60,120,300,600,900,1200,1800";
inline constexpr wchar_t kByteList[] =
    L"50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000, 50000, 100000, 200000, 500000,1000000,2000000,5000000";
