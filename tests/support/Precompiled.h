#pragma once

// What most tests include, of the platform and of libraries: compiled once for each tier. Tests include it themselves
// too, as if this were not there.

#ifdef _WIN32
#include <windows.h>

#include <commctrl.h>
#endif

#include <fmt/core.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <thread>
#include <vector>
