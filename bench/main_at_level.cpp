#include "bench.h"

int main(int argc, char** argv) {
    return zul::bench::RunAtLevel(argc, argv, zul::bench::kExports);
}
