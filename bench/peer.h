#ifndef BKOQ_BENCH_PEER_H_
#define BKOQ_BENCH_PEER_H_

#include <flatbuffers/detached_buffer.h>

#include <memory>

#include "bench/content.h"

namespace bkoq::bench {

namespace peer {
struct JobT;
}

// What a job's records carry as one block by FlatBuffers, from the plain structures.
flatbuffers::DetachedBuffer packPlain(const Job& job);

// The objects that FlatBuffers' compiler generates, for the same content, packed in the same way.
class PeerModel {
 public:
  explicit PeerModel(const Job& content);
  ~PeerModel();
  PeerModel(const PeerModel&) = delete;
  PeerModel& operator=(const PeerModel&) = delete;

  flatbuffers::DetachedBuffer pack() const;

 private:
  std::unique_ptr<peer::JobT> job_;
};

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_PEER_H_
