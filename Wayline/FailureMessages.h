#pragma once

#include <functional>
#include <string>
#include <vector>

#include "WaylineDll/SettingsTables.h"

// What goes wrong is told to the person in message boxes, titled with the product's name: nobody sees the console of a
// program that was started with a click.

/// Attempts something until it succeeds, or the person who is told why it failed cancels. The last failure.
/// `whenCancelled` is a sentence that tells what cancelling means, if it costs the person something.
Failure AttemptUntilCancelled(const std::function<Failure()>& attempt, const std::wstring& whenCancelled = {});

/// Tells of a failure after which there is nothing to choose. Logs nothing: the log may be what failed.
void TellFailure(const std::wstring& sentence);

/// Tells what was lost, if anything was.
void TellLost(const std::vector<std::wstring>& sentences);
