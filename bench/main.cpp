#include "bench.h"

int main(int argc, char** argv) {
    return zul::bench::Run(argc, argv, zul::bench::kExports);
}
