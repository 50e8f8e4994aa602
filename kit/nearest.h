#ifndef BKOQ_KIT_NEAREST_H_
#define BKOQ_KIT_NEAREST_H_

#include <string_view>
#include <vector>

namespace bkoq::kit {

// Of `words` the place of the one that was probably meant; their number when none is near. The kit
// and the command both ask here; the command compiles this file into itself.
std::size_t nearestOf(std::string_view word, const std::vector<std::string_view>& words);

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_NEAREST_H_
