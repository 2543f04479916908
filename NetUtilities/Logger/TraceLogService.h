#pragma once

#include <cstdint>
#include <memory>

#include "NetUtilities/Logger/LogService.h"

/// Connects to the client's logging service, an out-of-process COM server, from a thread of the multithreaded apartment
/// to which the result then belongs. Null on failure; `result` is the HRESULT.
std::unique_ptr<LogService> ConnectTraceLogManager(int32_t& result);
