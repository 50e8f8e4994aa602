// What becomes of an extension and of session end times in the previous layout.

#include <gtest/gtest.h>
#include <stdlib.h>

#include "tests/catalog/layouts.h"
#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

TEST(TapeOfPreviousLayout, CarriesTheSessionEndTimeItself) {
  struct Case {
    long own;  // the tape's session end time
    bool hasExtension;
    long extensions;       // the extension's
    unsigned int options;  // set when the extension is attached already
    uint32_t time;
    uint32_t recorded;  // options
  };
  for (const Case& c : {
           // An extension's time counts whatever it is, and its mark is taken out.
           Case{0, true, 1000, 0x8000000, 1000, 0},
           {2000, true, 1000, 0x8000000, 1000, 0},
           {2000, true, 0, 0x8000000, 0, 0},
           {2000, true, -5, 0x8000000, 0xfffffffb, 0},
           {0, true, 1000, 0xffffffff, 1000, 0xf7ffffff},
           {0, true, 1000, 0x3, 1000, 0x3},
           // Without one the tape's own counts when it is positive, and the mark stays.
           {2000, false, 0, 0, 2000, 0},
           {1, false, 0, 0x8000001, 1, 0x8000001},
           {0x7fffffff, false, 0, 0, 0x7fffffff, 0},
           {0, false, 0, 0, 0, 0},
           {-5, false, 0, 0, 0, 0},
           {-2147483647 - 1, false, 0, 0, 0, 0},
       }) {
    BKQTapeXtension extension(c.extensions);
    extension.setDBuser("dbuser");
    extension.setOptions(0x55);
    BKQTape tape;
    tape.setSessionEndTime(c.own);
    if (c.hasExtension) tape.setTapeXtension(extension);
    tape.setOptions(c.options);
    BKDTAPE_OLD record{};
    void* rec = &record;
    ASSERT_EQ(tape.convertToBK2_old(rec), 1);
    expectRows("tape", &record, 72,
               {
                   number(52, 4, c.recorded),  // ulOptions
                   number(64, 4, c.time),      // lSessionEndTime
               });
    EXPECT_EQ(tape.getOptions(), c.options);  // the tape's own stay
    EXPECT_EQ(tape.getSessionEndTime(), c.own);
  }
}

TEST(TapeOfPreviousLayout, ExtensionMadeByItsOptionLeavesNothing) {
  BKQTape tape;
  tape.setOptions(0x8000000);
  tape.setSessionEndTime(2000);
  BKDTAPE_OLD record{};
  void* rec = &record;
  ASSERT_EQ(tape.convertToBK2_old(rec), 1);
  expectRows("tape", &record, 72, {});
  EXPECT_EQ(tape.getOptions(), 0x8000000u);
  delete tape.getTapeXtension();
}

TEST(TapeOfPreviousLayout, CarriesTheWholeTapeID) {
  for (unsigned int id : {0x12345u, 0xffffffffu, 0x10000u}) {
    BKQTape tape;
    tape.setTapeID(id);
    BKDTAPE_OLD record{};
    void* rec = &record;
    ASSERT_EQ(tape.convertToBK2_old(rec), 1);
    expectRows("previous", &record, 72, {number(8, 4, id)});  // ulTapeID
    BKDTAPE current{};
    rec = &current;
    ASSERT_EQ(tape.convertToBK2(rec), 1);
    expectRows("current", &current, 72, {number(8, 2, id & 0xffff)});  // usTapeID
  }
}

}  // namespace
}  // namespace bkoq::test
