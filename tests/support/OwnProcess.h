#pragma once

#include <chrono>
#include <functional>
#include <string>

/// How the process of InOwnProcess is started.
struct OwnProcess {
  std::wstring program = {};  // the file to run, a copy of this program; empty for this program itself
  std::wstring desktop = {};  // the startup desktop; empty for that of this process
  std::string note = {};      // what OwnProcessNote gives there
  unsigned long end = 0;      // the exit code; other than 0 the process ends in the middle of `body`
};

/// Runs `body` in a process of its own, for what a process determines only once. The current test runs in
/// that process a second time, so a test may call this once; what fails there fails the test here too.
void InOwnProcess(const std::function<void()>& body, const OwnProcess& settings = {});

/// True in such a process.
bool IsOwnProcess();

/// In such a process: the note of its settings.
std::string OwnProcessNote();

/// As InOwnProcess, in `count` processes at once. `body` gets the number of its process, from 0. Those that run longer
/// than `limit` are ended, and the test fails.
void InOwnProcesses(int count, const std::function<void(int)>& body,
                    std::chrono::seconds limit = std::chrono::seconds(30));
