#include "library.h"

#include <windows.h>

const char* const kLibraryName = "zul.dll";

// Looks in the folder of the program first.
void* LoadByName(const char* name) {
    return LoadLibraryA(name);
}

AnyFunction FindExport(void* library, const char* name) {
    return reinterpret_cast<AnyFunction>(GetProcAddress(static_cast<HMODULE>(library), name));
}
