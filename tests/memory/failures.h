#ifndef BKOQ_TESTS_MEMORY_FAILURES_H_
#define BKOQ_TESTS_MEMORY_FAILURES_H_

// Makes every allocation of a flattening fail in turn. A script lists, in order, every allocation
// that the flattening makes, its size, and what is reported when it fails.

#include <bkoq/kit.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "examples/nightly_job.h"
#include "tests/catalog/layouts.h"
#include "tests/memory/wrap_malloc.h"
#include "tests/support/name_list.h"
#include "tests/support/parts.h"
#include "tests/support/rows.h"
#include "tests/support/state_values.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {

// One allocation. Without lines, its failure is silent: the flattening goes on and what would have
// pointed to the block is null.
struct Step {
  bool isRealloc;
  std::size_t size;
  std::string lines;
  bool keepsOut;       // the failure leaves `out` as the caller set it
  uint32_t count;      // the array's count after the failure, 0 when this is no array
  unsigned int nulls;  // fields that are null after a silent failure
  bool isFirst;        // of two texts: without it the first is empty
};

class Script {
 public:
  explicit Script(BkoqLayout layout) : layout_(layout) {}

  const std::vector<Step>& steps() const { return steps_; }
  BkoqLayout layout() const { return layout_; }
  bool isPrevious() const { return layout_ == BKOQ_LAYOUT_PREVIOUS; }
  // The name of a record in the layout's messages.
  std::string name(const char* record) const {
    return isPrevious() ? std::string(record) + "_OLD" : record;
  }

  // What reports a failure of the steps that `content` adds, besides what lies further out.
  void within(const char* part, const std::function<void()>& content) {
    const std::string outer = chain_;
    chain_ = std::string("Failed to convert ") + part + "\n" + outer;
    content();
    chain_ = outer;
  }

  // Copies of texts, each with its NUL.
  void texts(std::initializer_list<const char*> values) {
    for (const char* value : values) silent(std::string(value).size() + 1, 1);
  }
  // A text of which other fields are copies: they are null as well.
  void sharedText(const char* value, unsigned int copies) {
    silent(std::string(value).size() + 1, copies);
  }
  void silent(std::size_t size, unsigned int nulls = 1) {
    steps_.push_back({false, size, "", false, 0, nulls, false});
  }

  // A text that gets a second one after it.
  void firstText(std::size_t size) { steps_.push_back({false, size, "", false, 0, 0, true}); }

  void jobRecord() {
    steps_.push_back({false, 292, "Failed in malloc " + name("BKQJDATATRANSFER") + "\n" + chain_,
                      true, 0, 0, false});
  }
  // An element of an array, by its index.
  void element(const std::string& record, std::size_t size, uint32_t index) {
    steps_.push_back(
        {index != 0, size * (index + 1), failure(index != 0, record), false, index + 1, 0, false});
  }
  // A block that is no array, first allocated or made longer.
  void block(const char* name, std::size_t size, bool isRealloc) {
    steps_.push_back({isRealloc, size, failure(isRealloc, name), false, 0, 0, false});
  }

  void node(uint32_t index) { element(name("BKNODE"), 100, index); }
  void disk(uint32_t index) { element(name("BKDDISK"), 52, index); }
  void diskItem(uint32_t index) { element(name("BKDISKITEM"), 32, index); }
  void tape(uint32_t index) { element(name("BKDTAPE"), 72, index); }
  void tapeItem(uint32_t index) { element(name("BKTAPEITEM"), 32, index); }
  void filter(uint32_t index) { element(name("BKFILTER_FILE"), 32, index); }
  // A node's own filters have one name in both layouts.
  void nodeFilter(uint32_t index) { element("BKFILTER_FILE", 32, index); }
  void extension(std::initializer_list<const char*> values) {
    if (isPrevious()) return;
    block("BKDTAPEX", 64, false);
    texts(values);
  }
  void fileList(std::initializer_list<const char*> names) {
    std::size_t size = 0;
    for (const char* file : names) {
      const bool isRealloc = size != 0;
      size += std::string(file).size() + 1;
      block("File List", size, isRealloc);
    }
  }

 private:
  std::string failure(bool isRealloc, const std::string& record) const {
    return (isRealloc ? "Failed in realloc " : "Failed in malloc ") + record + "\n" + chain_;
  }

  BkoqLayout layout_;
  std::string chain_;
  std::vector<Step> steps_;
};

// An array that is lost: a count over a null pointer.
struct LostArray {
  uint32_t count;
  const char* countField;
  const char* pointerField;
};

// All texts of a record tree under the places where they hang, and the arrays that are lost.
struct TreeTexts {
  std::map<std::string, std::string> texts;
  std::map<std::string, LostArray> lost;
};

// One flattening of a job and what came of it.
class Flattening {
 public:
  using Convert = std::function<int(void*& out)>;

  Flattening(const Convert& convert, BkoqLayout layout, std::size_t failing, bool andAllAfter);
  // Frees the tree, whatever became of it, as a client does: the blocks of the tree and the session
  // passwords are all that there are, but for the one block that a failing realloc() lost.
  ~Flattening();
  Flattening(const Flattening&) = delete;
  Flattening& operator=(const Flattening&) = delete;

  Allocations allocations;
  BkoqLayout layout;
  int result = -1;
  std::string lines;
  void* record = nullptr;  // null when `out` was left as it was
  TreeTexts tree;

 private:
  // Hangs a lost array up again, so that what hangs from it is freed with the tree. False for a
  // block that is no array.
  bool putBack() const;

  char untouched_ = 0;
  std::vector<char*> passwords_;  // taken out of the state variables
};

// `unfinished` are the places that were unfinished when the flattening ended one step earlier, and
// become those of this failure: what has been filled stays filled.
void expectReported(const Flattening& failed, const Step& step, const Flattening& whole,
                    std::vector<std::string>& unfinished);

// Makes every allocation of the script fail in turn, alone and with all after it.
void failEveryAllocation(const Flattening::Convert& convert, const Script& script);

template <class L>
class Failures : public testing::Test {
 protected:
  template <class Job, class... Arguments>
  void failAll(Job& job, const std::function<void(Script&)>& write, Arguments... arguments) {
    Script script(L::kLayout);
    write(script);
    failEveryAllocation([&](void*& out) { return L::convert(job, out, arguments...); }, script);
  }

  TimeZone zone_{kFiveHoursWest};
  Keeper keeper_;
  BKQPrintQueue queue_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_MEMORY_FAILURES_H_
