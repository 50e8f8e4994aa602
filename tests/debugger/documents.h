#ifndef BKOQ_TESTS_DEBUGGER_DOCUMENTS_H_
#define BKOQ_TESTS_DEBUGGER_DOCUMENTS_H_

#include <cstddef>

#include "debugger/written_value.h"
#include "tools/attributes.h"

namespace bkoq::test {

// A job file's content that sets every attribute of the class and of all that it holds, each to a
// value of its own. Lists hold one element of each class that they take; of single parts the class
// goes with the seed, as the values do. Passwords and keys end with as many bytes more as given.
WrittenValue everyAttribute(const tool::ObjectClass& own, unsigned int seed,
                            std::size_t secretLength);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_DEBUGGER_DOCUMENTS_H_
