#ifndef BKOQ_TESTS_FUZZ_SESSION_H_
#define BKOQ_TESTS_FUZZ_SESSION_H_

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/catalog/forms.h"
#include "tests/catalog/kinds.h"
#include "tests/fuzz/require.h"
#include "tests/random/attributes.h"
#include "tests/support/parts.h"

namespace bkoq::test {

// Enough for every pair of calls to meet, little enough to be quick.
constexpr unsigned int kMostCalls = 300;
constexpr unsigned int kMostObjects = 12;  // of a kind
constexpr unsigned int kMostCopies = 2;    // each doubles lists three levels deep

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  bool isEmpty() const { return at_ >= size_; }
  std::uint8_t byte() { return at_ < size_ ? data_[at_++] : 0; }
  unsigned int below(unsigned int bound) { return bound == 0 ? 0 : byte() % bound; }
  std::uint32_t number() {
    const std::uint8_t first = byte();
    if (first < 0xf0) return first;
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | byte();
    return value;
  }
  std::string text() {
    static const char* const kTexts[] = {"", "/", "//", "/usr", "A", "Registry", "a:b", "//x"};
    const std::uint8_t first = byte();
    if (first < 0xc0) return kTexts[first % 8];
    std::string result;
    for (int left = first & 0x1f; left > 0; --left) {
      const char c = static_cast<char>(byte());
      if (c == '\0') break;
      result += c;
    }
    if (first == 0xff) result.append(1000, 'x');
    return result;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

// Sets the attribute of this number, if the class has so many, and asks for it.
template <class Object>
class OneAttribute {
 public:
  OneAttribute(Input& input, Object& object, unsigned int number)
      : input_(input), object_(object), left_(number) {}

  template <class Value, class Getter, class Class, class Parameter>
  void operator()(const char* /*name*/, Attribute<Value>& /*attribute*/, Getter getter,
                  void (Class::*setter)(Parameter)) {
    if (left_-- != 0) return;
    if constexpr (std::is_same<Value, Text>::value) {
      const std::string text = input_.text();
      (object_.*setter)(text.empty() ? nullptr : text.c_str());
      const RWCString& got = (object_.*getter)();
      FUZZ_REQUIRE(got.length() == text.size() && text == got.data());
    } else {
      const auto value = static_cast<Parameter>(input_.number());
      (object_.*setter)(value);
      FUZZ_REQUIRE((object_.*getter)() == value);
    }
  }

 private:
  Input& input_;
  Object& object_;
  unsigned int left_;
};

// A sequence of calls of the public classes, as the bytes of the input choose them.
class Session {
 public:
  Session(const std::uint8_t* data, std::size_t size) : input_(data, size) {}
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void run() {
    for (unsigned int calls = 0; calls < kMostCalls && !input_.isEmpty(); ++calls) step();
    for (const auto& each : jobs_) flatten(*each);
  }

 private:
  struct Job {
    BKQJob* job = nullptr;
    BKQBackupJob* backup = nullptr;
    BKQRestoreJob* restore = nullptr;
    BKQVerifyJob* verify = nullptr;
    BKQCompareJob* compare = nullptr;
    BKQMergeJob* merge = nullptr;
    BKQScanJob* scan = nullptr;
    bool isCopied = false;  // or a copy: it shares nodes
  };

  template <class Object>
  Object* pick(std::vector<Object*>& objects) {
    return objects.empty() ? nullptr
                           : objects[input_.below(static_cast<unsigned int>(objects.size()))];
  }
  template <class Object>
  void add(std::vector<Object*>& objects, Object* object) {
    objects.push_back(object);
    kept_.insert(object);
  }
  template <class Plan, class Object, class Each>
  void set(Object& object, Each each) {
    Plan plan;
    OneAttribute<Object> visitor(input_, object, input_.below(24));
    each(plan, visitor);
  }
  template <class Collection, class Owner, class Base>
  void page(Owner& owner, void (Base::*reset)(),
            unsigned int (Base::*enumerate)(Collection*&, unsigned int), unsigned int entries) {
    if (input_.below(2) == 0) (owner.*reset)();
    const unsigned int n = input_.below(4);
    Collection* collection = nullptr;
    const unsigned int count = (owner.*enumerate)(collection, n);
    FUZZ_REQUIRE(collection != nullptr && collection->entries() == count && count <= entries);
    if constexpr (std::is_same<Owner, BKQDiskItem>::value) collection->clearAndDestroy();
    delete collection;
  }

  RWCollectableTime time() {
    return RWCollectableTime(2177452800ul +
                             static_cast<unsigned long>(input_.number() & 0x7ffffff));
  }

  void step();
  void makeFilter();
  void makeNode();
  void makeJob();
  void makeSchedule(Job& job);
  void setAttribute();
  void join();
  void takeApart();
  void enumerate();
  void attach(Job& job);
  void copy(Job& job);
  void flatten(Job& job);
  static JobFamily familyOf(const Job& job);
  void addJob(BKQJob* job);
  bool isInOneListOnce(BKQNode* node);

  Input input_;
  std::vector<BKQFilter*> filters_;
  std::vector<BKQDiskItem*> items_;
  std::vector<BKQDisk*> disks_;
  std::vector<BKQTapeItem*> tapeItems_;
  std::vector<BKQTape*> tapes_;
  std::vector<BKQDiskNode*> diskNodes_;
  std::vector<BKQTapeNode*> tapeNodes_;
  std::vector<BKQRestoreNode*> restoreNodes_;
  std::vector<std::unique_ptr<Job>> jobs_;
  std::set<RWCollectable*> kept_;
  std::vector<BKQSchedule*> abandoned_;
  std::vector<std::unique_ptr<BKQEMail>> abandonedEMails_;
  std::vector<std::unique_ptr<BKQFax>> abandonedFaxes_;
  std::vector<std::unique_ptr<BKQPrintQueue>> printQueues_;
  std::vector<std::unique_ptr<BKQOpenFileInfo>> openFiles_;
  std::map<BKQNode*, unsigned int> uses_;  // entries of a node in lists of jobs
  unsigned int copies_ = 0;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_FUZZ_SESSION_H_
