#pragma once

// Marks what WaylineDll.dll offers to those who link it. A class carries its mark only while the library itself is
// built: its users define the copy operations of the dialog classes, which an imported class does not allow.
#ifdef WAYLINE_EXPORTS
#define WAYLINE_API __declspec(dllexport)
#define WAYLINE_CLASS __declspec(dllexport)
#else
#define WAYLINE_API __declspec(dllimport)
#define WAYLINE_CLASS
#endif
