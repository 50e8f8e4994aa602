#ifndef BKOQ_TESTS_SUPPORT_FOREIGN_ATTACHMENTS_H_
#define BKOQ_TESTS_SUPPORT_FOREIGN_ATTACHMENTS_H_

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <functional>
#include <utility>

namespace bkoq::test {

// Schedule and e-mail classes of a client's own, which do in a flattening what the test says. The
// function gets the block inside the job record and its layout; its result is the conversion's.
using ForeignConversion = std::function<int(void* block, BkoqLayout layout)>;

class ForeignSchedule : public BKQSchedule {
 public:
  static constexpr std::size_t kBlockOffset = 56;  // where its block lies in the job record

  explicit ForeignSchedule(ForeignConversion conversion) : conversion_(std::move(conversion)) {}

  unsigned int getType() const override { return 9; }
  int convertToBK2(void*& schedBlock, void*& rotationBlock) override {
    rotationBlock_ = rotationBlock;
    return conversion_(schedBlock, BKOQ_LAYOUT_CURRENT);
  }
  int convertToBK2_old(void*& schedBlock, void*& rotationBlock) override {
    rotationBlock_ = rotationBlock;
    return conversion_(schedBlock, BKOQ_LAYOUT_PREVIOUS);
  }

  // The rotation block of the last conversion.
  void* rotationBlock() const { return rotationBlock_; }

 private:
  ForeignConversion conversion_;
  void* rotationBlock_ = nullptr;
};

class ForeignEMail : public BKQEMail {
 public:
  static constexpr std::size_t kBlockOffset = 156;

  explicit ForeignEMail(ForeignConversion conversion) : conversion_(std::move(conversion)) {}

  unsigned int emailType() const override { return 9; }
  int convertToBK2(void*& block) override { return conversion_(block, BKOQ_LAYOUT_CURRENT); }
  int convertToBK2_old(void*& block) override { return conversion_(block, BKOQ_LAYOUT_PREVIOUS); }

 private:
  ForeignConversion conversion_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_FOREIGN_ATTACHMENTS_H_
