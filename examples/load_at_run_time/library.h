// Loading of a shared library by its name. There is one source per platform: library_windows.cpp,
// library_posix.cpp.
#pragma once

// What the zul library is called here.
extern const char* const kLibraryName;

// A function of any type; cast it to its own before the call.
using AnyFunction = void (*)();

// The library, or null. It stays loaded for the life of the process: it has a handler for traps in place.
void* LoadByName(const char* name);

// An exported function by the name in the library's list of exports, or null.
AnyFunction FindExport(void* library, const char* name);
