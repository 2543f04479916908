#include "NetUtilities/CommandLine/CommandLineProgram.h"

#include <exception>
#include <iostream>

#include "NetUtilities/Text/Utf8.h"

int Fail(const std::wstring& sentence) {
  std::cerr << ToUtf8(sentence) << '\n';
  return kFailed;
}

int AnswerOrRun(const std::wstring& program, const std::optional<CommandLineAnswer>& answer,
                const std::function<int()>& run) {
  if (answer) {
    (answer->isError ? std::cerr : std::cout) << answer->text;
    return answer->isError ? kBadCommandLine : kSuccess;
  }
  try {
    return run();
  } catch (const std::exception& exception) {
    return Fail(program + L" failed: " + FromUtf8(exception.what()) + L".");
  }
}
