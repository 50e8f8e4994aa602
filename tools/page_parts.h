#ifndef BKOQ_TOOLS_PAGE_PARTS_H_
#define BKOQ_TOOLS_PAGE_PARTS_H_

#include <string_view>

namespace bkoq::tool {

// The files of tools/page/, put into the program when it is built, and the hashes by which the
// page's content security policy lets a browser run nothing else.
extern const std::string_view kPageBody;
extern const std::string_view kPageStyle;
extern const std::string_view kPageScript;
extern const std::string_view kPageStyleHash;
extern const std::string_view kPageScriptHash;

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_PAGE_PARTS_H_
