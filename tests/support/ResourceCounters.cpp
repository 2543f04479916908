#include "tests/support/ResourceCounters.h"

#include <windows.h>

#include <winternl.h>

#include <cstdint>
#include <vector>

extern "C" PEB* NTAPI RtlGetCurrentPeb();

namespace {

// Layouts that the headers leave out.
struct HandleEntry {
  uint16_t processId;
  uint16_t backTraceIndex;
  uint8_t objectType;
  uint8_t attributes;
  uint16_t handle;
  void* object;
  uint32_t access;
};

struct GdiEntry {
  uint64_t object;
  uint32_t owner;
  uint16_t unique;
  uint8_t type;  // 0 where the entry is free
  uint8_t flags;
  uint64_t userPointer;
};

BOOL CALLBACK CountChild(HWND, LPARAM count) {
  ++*reinterpret_cast<size_t*>(count);
  return TRUE;
}

BOOL CALLBACK CountOwnWindow(HWND window, LPARAM count) {
  DWORD processId = 0;
  GetWindowThreadProcessId(window, &processId);
  if (processId != GetCurrentProcessId()) return TRUE;
  ++*reinterpret_cast<size_t*>(count);
  EnumChildWindows(window, CountChild, count);
  return TRUE;
}

}  // namespace

size_t CountKernelHandles() {
  constexpr auto kSystemHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
  constexpr NTSTATUS kBufferTooSmall = static_cast<NTSTATUS>(0xC0000004);
  std::vector<uint64_t> buffer(1 << 14);
  ULONG needed = 0;
  while (NtQuerySystemInformation(kSystemHandleInformation, buffer.data(),
                                  static_cast<ULONG>(buffer.size() * sizeof(uint64_t)), &needed) == kBufferTooSmall) {
    buffer.resize(buffer.size() * 2);
  }
  const auto total = static_cast<size_t>(*reinterpret_cast<const uint32_t*>(buffer.data()));
  const auto* const entries = reinterpret_cast<const HandleEntry*>(buffer.data() + 1);
  size_t own = 0;
  for (size_t index = 0; index < total; ++index) {
    if (entries[index].processId == static_cast<uint16_t>(GetCurrentProcessId())) ++own;
  }
  return own;
}

size_t CountWindows() {
  size_t count = 0;
  EnumWindows(CountOwnWindow, reinterpret_cast<LPARAM>(&count));
  return count;
}

size_t CountGdiObjects() {
  constexpr size_t kGdiTableOffset = 0xF8;  // of the 64-bit process environment block
  constexpr size_t kGdiTableSize = 0x4000;
  const auto* const environment = reinterpret_cast<const uint8_t*>(RtlGetCurrentPeb());
  const auto* const table = *reinterpret_cast<const GdiEntry* const*>(environment + kGdiTableOffset);
  size_t count = 0;
  for (size_t index = 0; index < kGdiTableSize; ++index) {
    if (table[index].type != 0) ++count;
  }
  return count;
}
