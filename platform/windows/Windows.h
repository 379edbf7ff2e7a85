#pragma once

// The system's header without what nobody here needs, and without the macros that would rename our own
// functions: the wide calls are made by their full names.

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
