// What a setter adopts must live on the heap: a temporary must not compile.

#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

#include "tests/catalog/kinds.h"

namespace bkoq::test {
namespace {

// Whether Owner has the setter for an argument of exactly this kind, Object& or Object&&.
#define BKOQ_SETTER(Name, setter)                                                      \
  template <class Owner, class Argument, class = void>                                 \
  struct Name : std::false_type {};                                                    \
  template <class Owner, class Argument>                                               \
  struct Name<Owner, Argument,                                                         \
              decltype(void(std::declval<Owner&>().setter(std::declval<Argument>())))> \
      : std::true_type {};

BKOQ_SETTER(SetSchedule, setSchedule)
BKOQ_SETTER(SetPrintQueue, setPrintQueue)
BKOQ_SETTER(SetEMailInfo, setEMailInfo)
BKOQ_SETTER(SetFaxInfo, setFaxInfo)
BKOQ_SETTER(SetOpenFileInfo, setOpenFileInfo)
BKOQ_SETTER(SetDestination, setDestination)
BKOQ_SETTER(SetSource, setSource)
BKOQ_SETTER(SetJobMask, setJobMask)
BKOQ_SETTER(SetTapeXtension, setTapeXtension)

template <template <class...> class Setter, class Owner, class Object>
void expectAdopting() {
  EXPECT_TRUE((Setter<Owner, Object&>::value));
  EXPECT_FALSE((Setter<Owner, Object>::value));
  EXPECT_FALSE((Setter<Owner, const Object>::value));
}

TEST(AdoptingSetters, RefuseTemporaries) {
  expectAdopting<SetPrintQueue, BKQJob, BKQPrintQueue>();
  expectAdopting<SetEMailInfo, BKQJob, BKQInternetEMail>();
  expectAdopting<SetEMailInfo, BKQJob, BKQMHSEMail>();
  expectAdopting<SetFaxInfo, BKQJob, BKQFax>();
  expectAdopting<SetOpenFileInfo, BKQBackupJob, BKQOpenFileInfo>();
  expectAdopting<SetDestination, BKQBackupJob, BKQTapeNode>();
  expectAdopting<SetDestination, BKQCompareJob, BKQMacNode>();
  expectAdopting<SetDestination, BKQMergeJob, BKQMacNode>();
  expectAdopting<SetSource, BKQMergeJob, BKQTapeNode>();
  expectAdopting<SetSource, BKQScanJob, BKQTapeNode>();
  expectAdopting<SetJobMask, BKQRotationSchedule, BKQJobMask>();
  expectAdopting<SetJobMask, BKQCruiseSchedule, BKQJobMask>();
  expectAdopting<SetTapeXtension, BKQTape, BKQTapeXtension>();
}

TEST(AdoptingSetters, RefuseTemporarySchedules) {
#define BKOQ_EXPECT(kind, class_, code, word, schedule, ...) \
  expectAdopting<SetSchedule, class_, schedule>();
  BKOQ_JOB_KINDS(BKOQ_EXPECT)
#undef BKOQ_EXPECT
}

}  // namespace
}  // namespace bkoq::test
