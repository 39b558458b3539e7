// DLL entry point: disables thread attach and detach notifications, nothing else.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(module);
    return TRUE;
}
