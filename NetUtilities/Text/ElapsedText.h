#pragma once

#include <chrono>
#include <string>

/// How long something took, in whole units of the size that suits it: nanoseconds and microseconds up to 1000 of them
/// ("850ns", "420us"), milliseconds up to 1000 ("250ms"), and above that seconds to the millisecond ("1.500s").
std::wstring ElapsedText(std::chrono::nanoseconds elapsed);
