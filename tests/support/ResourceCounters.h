#pragma once

#include <cstddef>

// What this process holds of the system's resources. Wine always answers 0 to GetGuiResources and
// GetProcessHandleCount, so that these look for themselves.

/// Open kernel handles.
size_t CountKernelHandles();

/// Windows of all threads, child windows included.
size_t CountWindows();

/// GDI objects.
size_t CountGdiObjects();
