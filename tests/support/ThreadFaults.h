#pragma once

extern "C" {

/// Lets the calls by which the module starts threads fail: the `call`-th from now on, from 1, and all after it unless
/// only `once`.
__declspec(dllexport) void PlanThreadFault(int call, bool once);

/// True when one has failed since.
__declspec(dllexport) bool WasThreadFaultHit();

}  // extern "C"
