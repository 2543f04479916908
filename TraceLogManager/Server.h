#pragma once

#include <windows.h>

/// Serves the client's processes until it is no longer needed. Gives the error that kept it from that.
HRESULT RunServer();
