#pragma once

// Includes the Windows header without the parts that are not needed, and without the macros that would rename
// this program's functions. Calls with wide characters are made by their full names.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif

#include <windows.h>

#undef CopyFile
#undef CreateFile
#undef DeleteFile
#undef GetDriveType
#undef GetFileAttributes
#undef GetProfileString
#undef LoadString
#undef WriteProfileString
