#pragma once

#include <filesystem>

// The client's folder below the folders of Windows for program data: <ProgramData>\Ostrel\Wayline.
inline constexpr wchar_t kVendorFolder[] = L"Ostrel";
inline constexpr wchar_t kProductFolder[] = L"Wayline";

/// The folder of settings and their like in the client's folder.
inline constexpr wchar_t kDataFolder[] = L"Data";

/// Creates a folder whose parent exists. Failing to shows later, when a file in it cannot be opened.
void CreateFolder(const std::filesystem::path& folder);

/// The client's folder below `base`; created if it is missing.
std::filesystem::path CreateProductFolder(const std::filesystem::path& base);
