#pragma once

#include <atomic>

/// Says which call of a scenario fails. A test runs its scenario again and again, with the first call failing, then
/// the second, and so on, until one run ends without the fault:
///
///     for (int call = 1; ; ++call) {
///       plan.Arm(call, mode);
///       ...  // the scenario, whose substituted functions fail when plan.Fails()
///       if (!plan.WasHit()) break;
///     }
///
/// Any thread may make the calls; Arm is for when none does.
class FaultPlan {
 public:
  enum class Mode {
    Once,        // the one call fails
    FromThenOn,  // the call fails, and so do all that follow
  };

  /// Begins to count anew, with the fault at the `call`-th call, from 1 on. Unless armed, no call fails.
  void Arm(int call, Mode mode) {
    mode_ = mode;
    fault_ = call;
    calls_ = 0;
  }

  /// Counts a call, and tells whether it fails.
  bool Fails() {
    const int call = ++calls_;
    return fault_ != 0 && (call == fault_ || (mode_ == Mode::FromThenOn && call > fault_));
  }

  /// How many calls there were since Arm.
  int Calls() const { return calls_; }

  /// True when a call has failed since Arm.
  bool WasHit() const { return fault_ != 0 && calls_ >= fault_; }

 private:
  std::atomic<Mode> mode_ = Mode::Once;
  std::atomic<int> fault_ = 0;
  std::atomic<int> calls_ = 0;
};
