#ifndef BKOQ_TOOLS_REFERENCE_H_
#define BKOQ_TOOLS_REFERENCE_H_

#include <string>
#include <vector>

#include "tools/attributes.h"

namespace bkoq::tool {

// What the attributes of a new object have got by themselves, each as JSON.
std::vector<std::string> defaultsOf(const Family& family, const ObjectClass& own);

// An object with what is required of it, and with `members`, as JSON on one line.
std::string objectText(const ObjectClass& own, const std::string& members);
// A value on one line that is valid for the attribute: its sample if it has one.
std::string sampleOf(const Attribute& attribute);

// The objects that were asked for, by the word of a kind, the name of a family or of a class; all
// when none was. An object that there is not is left in `unknown`.
std::string attributesText(const std::vector<std::string>& objects, unsigned int width,
                           std::string& unknown);
std::string attributesJson(const std::vector<std::string>& objects, std::string& unknown);
// All names of objects, for messages.
std::vector<std::string> objectNames();

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_REFERENCE_H_
