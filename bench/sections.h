#ifndef BKOQ_BENCH_SECTIONS_H_
#define BKOQ_BENCH_SECTIONS_H_

namespace bkoq::bench {

// The parts of the benchmark, each of which prints its rows.

// sections.cpp: one flattening against the floor.
void measureSteady();
void measureFirst();
void measureGrowth();
void measureCounts();
void measureInstructions();

// side_sections.cpp: against FlatBuffers, and what is not a flattening of texts.
void measurePeer();
void measureTimeFilters();
void measurePaging();
void measureBuilding();
void measureCloning();
void measureDiff();

// whole_sections.cpp: all of a client's work, from its plain structures on, and its floor.
void measureWhole();
void measureWholeFirst();
void measureBare();
void measureInPlace();

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_SECTIONS_H_
