#pragma once

#include <functional>
#include <string>

/// How the process of InOwnProcess is started.
struct OwnProcess {
  std::wstring program = {};  // the file to run, a copy of this program; empty for this program itself
  std::wstring desktop = {};  // the startup desktop; empty for that of this process
};

/// Runs `body` in a process of its own, for what a process determines only once. The current test runs in
/// that process a second time, so a test may call this once; what fails there fails the test here too.
void InOwnProcess(const std::function<void()>& body, const OwnProcess& settings = {});
