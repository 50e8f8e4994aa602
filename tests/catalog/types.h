#ifndef BKOQ_TESTS_CATALOG_TYPES_H_
#define BKOQ_TESTS_CATALOG_TYPES_H_

// Layouts and kinds as lists of types, for typed tests.

#include <gtest/gtest.h>

#include "tests/catalog/kinds.h"
#include "tests/catalog/layouts.h"

namespace bkoq::test {

using Layouts = testing::Types<CurrentLayout, PreviousLayout>;

template <class None, class... Classes>
struct TypesAfter {
  using Types = testing::Types<Classes...>;
};
#define BKOQ_NEXT(kind, class_, ...) , class_
using JobTypes = TypesAfter<void BKOQ_JOB_KINDS(BKOQ_NEXT)>::Types;
using NodeTypes = TypesAfter<void BKOQ_NODE_KINDS(BKOQ_NEXT)>::Types;
#undef BKOQ_NEXT

// The backups among the kinds of jobs.
#define BKOQ_IF_Plain(class_)
#define BKOQ_IF_Backup(class_) , class_
#define BKOQ_IF_Restore(class_)
#define BKOQ_IF_Verify(class_)
#define BKOQ_IF_Compare(class_)
#define BKOQ_IF_Merge(class_)
#define BKOQ_IF_Scan(class_)
#define BKOQ_NEXT(kind, class_, code, word, schedule, family, names) BKOQ_IF_##family(class_)
using BackupTypes = TypesAfter<void BKOQ_JOB_KINDS(BKOQ_NEXT)>::Types;
#undef BKOQ_NEXT

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_CATALOG_TYPES_H_
