#ifndef BKOQ_TESTS_SUPPORT_SANITIZERS_H_
#define BKOQ_TESTS_SUPPORT_SANITIZERS_H_

// BKOQ_WITH_ASAN is defined where AddressSanitizer is on: each compiler tells it in its own way.
#if defined(__SANITIZE_ADDRESS__)
#define BKOQ_WITH_ASAN
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BKOQ_WITH_ASAN
#endif
#endif

#endif  // BKOQ_TESTS_SUPPORT_SANITIZERS_H_
