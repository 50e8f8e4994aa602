#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

#include "examples/nightly_job.h"
#include "tests/support/free_records.h"
#include "tests/support/nightly_records.h"
#include "tests/support/parts.h"

namespace bkoq::test {

// The nightly backup of the examples, on every path that a client can take it.

namespace {

class NightlyBackupTest : public testing::Test {
 protected:
  NightlyBackupTest() {
    setenv("TZ", "EST5", 1);
    tzset();
  }
  ~NightlyBackupTest() override { freeSessionPasswords(); }

  NightlyBackup nightly_;
};

void flattenAndCheck(BKQJob& job, Origin origin) {
  void* out = nullptr;
  ASSERT_EQ(job.convertToBK2(out), 1);
  checkNightlyRecords(out, BKOQ_LAYOUT_CURRENT, origin);
  freeJobRecord(static_cast<BKQJDATATRANSFER*>(out));
  freeSessionPasswords();

  out = nullptr;
  ASSERT_EQ(job.convertToBK2_old(out), 1);
  checkNightlyRecords(out, BKOQ_LAYOUT_PREVIOUS, origin);
  freeJobRecord(static_cast<BKQJDATATRANSFER_OLD*>(out));
  freeSessionPasswords();
}

TEST_F(NightlyBackupTest, FlattensInBothLayouts) {
  flattenAndCheck(nightly_.job(), Origin::kFilled);
}

TEST_F(NightlyBackupTest, FlattensTheSameAgain) {
  flattenAndCheck(nightly_.job(), Origin::kFilled);
  flattenAndCheck(nightly_.job(), Origin::kFilled);
}

TEST_F(NightlyBackupTest, CloneFlattensDoubled) {
  BKQBackupJob* clone = nightly_.job().clone();
  ASSERT_NE(clone, nullptr);
  flattenAndCheck(*clone, Origin::kCloned);
  // The source stays as it was.
  flattenAndCheck(nightly_.job(), Origin::kFilled);
  deleteClone(clone, nightly_.job());
  flattenAndCheck(nightly_.job(), Origin::kFilled);
}

}  // namespace
}  // namespace bkoq::test
