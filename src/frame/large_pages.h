#pragma once

#include <cstddef>

namespace zul::frame {

// Memory that is written to soon had better lie in large pages, for which there are fewer translations of addresses
// to look up and fewer faults. A hint, which systems without such pages, and one that has none left, pass over.
void PreferLargePages(void* memory, std::size_t bytes);

}  // namespace zul::frame
