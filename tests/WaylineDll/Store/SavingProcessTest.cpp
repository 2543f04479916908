// A real program that is ended while it saves, on the files of Windows.
#include <chrono>
#include <iostream>
#include <random>
#include <sstream>
#include <thread>

#include "tests/support/ProgramRun.h"
#include "tests/support/ThisProgram.h"
#include "tests/support/WaitUntil.h"
#include "tests/WaylineDll/Store/StoreTest.h"

namespace {

class SavingProcess : public StoreTest {};

// The last number of those that the program has printed, a line each.
long LastOf(const std::string& printed) {
  std::istringstream lines(printed.substr(0, printed.rfind('\n') + 1));
  long last = 0;
  while (lines >> last) {
  }
  return last;
}

}  // namespace

TEST_F(SavingProcess, ThatIsEndedLeavesTheOldOrTheNewDatabase) {
  constexpr int kEnds = 20;
  constexpr int kLongestMicroseconds = 60'000;  // of several saves
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::cout << "seed " << seed << '\n';
  std::mt19937 random(seed);
  std::uniform_int_distribution<> moment(0, kLongestMicroseconds);
  { ASSERT_EQ(SettingsStore().Open(file_), Failure()); }
  const std::wstring name = ThisProgram().replace_filename(L"SavingProgram.exe").wstring();
  long number = 0;
  int undone = 0;
  for (int end = 0; end < kEnds; ++end) {
    {
      RunningProgram program(name, {file_});
      ASSERT_TRUE(WaitUntil([&] { return LastOf(program.Output()) > number; })) << end;
      std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
      const long saved = LastOf(program.Output());
      EXPECT_GT(saved, number);
      number = saved;
    }
    undone += std::filesystem::exists(file_ + L"-journal") ? 1 : 0;
    { ASSERT_EQ(SettingsStore().Open(file_), Failure()) << end; }
    ASSERT_EQ(Sql("PRAGMA integrity_check"), "ok") << end;
    // The same in all profiles, and nothing that was saved is missing.
    const long stored = std::stol(Sql("SELECT UserId FROM Profiles WHERE ProfileId = 2001"));
    ASSERT_GE(stored, number) << end;
    ASSERT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId BETWEEN 2001 AND 2003 AND UserId = '" +
                  std::to_string(stored) + "' AND length(HelpdeskText) = 24000 + " + std::to_string(stored)),
              "3")
        << end;
    number = stored;
  }
  std::cout << number << " saves, and " << undone << " that were begun and undone\n";
}
