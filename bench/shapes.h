#ifndef BKOQ_BENCH_SHAPES_H_
#define BKOQ_BENCH_SHAPES_H_

#include <cstdint>
#include <string>
#include <vector>

#include "bench/content.h"

namespace bkoq::bench {

// A job that grows in one direction. What is counted as its elements is what there are many of.
struct Shape {
  const char* name;
  Job (*make)(unsigned int elements);
};

// Three machines of two disks of three items each, four job filters, one tape.
Job typicalJob();

// The shapes that are measured at every size; none has time filters.
const std::vector<Shape>& growingShapes();
// Time filters of the job for 10 machines, and the same number of entries as filters of one
// machine. Their bounds are read in the zone in force.
Job jobTimeFilters(unsigned int elements);
Job nodeTimeFilters(unsigned int elements);

// What a record holds for a moment in seconds since 1901, in the zone in force.
std::int32_t asRecorded(std::uint32_t seconds);

// The job of a shape by its name, for programs that get it on the command line; "typical job" takes
// no size. False when there is no such shape.
bool makeJob(const std::string& shape, unsigned int elements, Job& out);

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_SHAPES_H_
