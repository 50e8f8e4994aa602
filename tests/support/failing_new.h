#ifndef BKOQ_TESTS_SUPPORT_FAILING_NEW_H_
#define BKOQ_TESTS_SUPPORT_FAILING_NEW_H_

namespace bkoq::test {

// While one of these lives, the `nth` allocation that may answer null (`new (std::nothrow)`) fails,
// counted from 1; with kFromThenOn, all after it fail, too.
class FailingNew {
 public:
  enum Mode { kOnce, kFromThenOn };

  explicit FailingNew(unsigned int nth, Mode mode = kFromThenOn);
  ~FailingNew();
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;

  // Whether there were as many allocations.
  bool hasFailed() const;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_FAILING_NEW_H_
