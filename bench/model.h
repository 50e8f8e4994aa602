#ifndef BKOQ_BENCH_MODEL_H_
#define BKOQ_BENCH_MODEL_H_

#include <bkoq/bkoq.h>

#include <memory>
#include <vector>

#include "bench/content.h"

namespace bkoq::bench {

// The library's objects for a job's content, built as a client builds them.
class Model {
 public:
  explicit Model(const Job& content);
  Model(const Model&) = delete;
  Model& operator=(const Model&) = delete;
  ~Model();

  BKQBackupJob& job() { return *job_; }
  // The job record; null when the library says that it failed.
  void* flatten();

 private:
  // Keeps an object: those that the library holds by address it never deletes.
  template <class Object>
  Object& keep(Object* object) {
    objects_.emplace_back(object);
    return *object;
  }
  BKQNode& makeNode(const Node& content);
  BKQDisk& makeDisk(const Disk& content);
  BKQTape& makeTape(const Tape& content);
  BKQFilter& makeFilter(const Filter& content);

  std::vector<std::unique_ptr<RWCollectable>> objects_;
  std::unique_ptr<BKQBackupJob> job_;
};

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_MODEL_H_
