#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "NetUtilities/Module/Handle.h"

/// Receives what this process sends to the debugger, as a debug monitor does. A message is there as soon as it was
/// sent; who sends the next one before it was received waits for seconds.
class DebugMonitor {
 public:
  DebugMonitor()
      : ready_(CreateEventW(nullptr, FALSE, TRUE, L"DBWIN_BUFFER_READY")),
        sent_(CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_DATA_READY")),
        section_(
            CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Message), L"DBWIN_BUFFER")),
        message_(static_cast<const Message*>(MapViewOfFile(section_.get(), FILE_MAP_READ, 0, 0, 0))) {}

  /// The message that was sent last, waited for if there is none yet; nothing when none came.
  std::optional<std::string> Receive(DWORD limitMilliseconds = 0) {
    if (WaitForSingleObject(sent_.get(), limitMilliseconds) != WAIT_OBJECT_0) return std::nullopt;
    std::string text = message_->text;
    SetEvent(ready_.get());
    return text;
  }

 private:
  struct Message {
    DWORD processId;
    char text[4096 - sizeof(DWORD)];
  };

  Handle ready_;
  Handle sent_;
  Handle section_;
  Owner<const Message*, UnmapViewOfFile> message_;
};
