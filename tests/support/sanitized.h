// ZUL_TEST_SANITIZED: compiled with the address sanitizer, which makes everything many times slower.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define ZUL_TEST_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZUL_TEST_SANITIZED 1
#endif
#endif
