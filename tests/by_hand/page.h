#ifndef BKOQ_TESTS_BY_HAND_PAGE_H_
#define BKOQ_TESTS_BY_HAND_PAGE_H_

#include <cstddef>

namespace bkoq::test {

// Checks a record against a page that was worked out by hand: its bytes as they lie in memory, from
// the first to the last, one field a line, with the reason after a bar.
//
//     0  07 00              | a restore job
//     2  00*10              | ten bytes that nothing writes
//    12  -> "night" 00      | a pointer to a block of exactly these bytes
//    16  -> block           | a pointer to what another page shows
//    20  null
//
// A number in front is the offset at which the line begins; bytes are hexadecimal. A page that
// leaves a byte out, or says a wrong offset, fails as well as a record that differs.
void expectPage(const void* record, std::size_t size, const char* page);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_BY_HAND_PAGE_H_
