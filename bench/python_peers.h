#pragma once

namespace zul::bench {

// The seconds of processor time of one call of a function of python_peers.py, which runs as a process beside this one.
double SecondsInPython(const char* function, int rows, int columns);

}  // namespace zul::bench
