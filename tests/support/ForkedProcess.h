#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <sys/wait.h>

// Not on Windows, which cannot copy a process.

/// How a copy of this process has ended.
enum class ForkedEnd {
  Succeeded,
  Failed,  // an expectation, or in another way
  Killed,
};

/// Does `work` in a copy of this process and waits for its end.
inline ForkedEnd DoInForkedProcess(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    try {
      work();
    } catch (...) {
      ADD_FAILURE() << "An exception was thrown.";
    }
    std::_Exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) return ForkedEnd::Failed;
  if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) return ForkedEnd::Killed;
  return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS ? ForkedEnd::Succeeded : ForkedEnd::Failed;
}
