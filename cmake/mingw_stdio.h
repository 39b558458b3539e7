// Included before every source that is compiled by MinGW. libstdc++ selects MinGW's own printf family, whose code is
// linked into each DLL and has x87 arithmetic; this selects the functions of the system's C runtime.
#include <bits/c++config.h>

#undef __USE_MINGW_ANSI_STDIO
#define __USE_MINGW_ANSI_STDIO 0
