/// @file
/// What is wrong with the user's input.
#pragma once

#include <stdexcept>

namespace analyze {

/// The user's input cannot be used; what() tells where and why.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace analyze
