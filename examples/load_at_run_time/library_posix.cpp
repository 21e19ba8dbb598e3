#include "library.h"

#include <dlfcn.h>

const char* const kLibraryName = "libzul.so";

// Looks in the program's run path, LD_LIBRARY_PATH and the system's folders.
void* LoadByName(const char* name) {
    return dlopen(name, RTLD_NOW);
}

AnyFunction FindExport(void* library, const char* name) {
    return reinterpret_cast<AnyFunction>(dlsym(library, name));
}
