#ifndef BKOQ_TESTS_SUPPORT_NAME_LIST_H_
#define BKOQ_TESTS_SUPPORT_NAME_LIST_H_

#include <bkoq/bkoq.h>

#include <deque>
#include <initializer_list>

namespace bkoq::test {

// A list of names as clients pass it to the conversions, with the texts that it refers to.
class NameList : public RWSlistCollectables {
 public:
  NameList(std::initializer_list<const char*> names) {
    for (const char* name : names) {
      texts_.emplace_back(name);
      insert(&texts_.back());
    }
  }

 private:
  std::deque<RWCollectableString> texts_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_NAME_LIST_H_
