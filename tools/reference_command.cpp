#include "tools/commands.h"
#include "tools/problems.h"
#include "tools/reference.h"

namespace bkoq::tool {

Status attributesCommand(const Request& request) {
  std::string unknown;
  const std::string text =
      request.json
          ? attributesJson(request.files, unknown)
          : attributesText(request.files, request.width != 0 ? request.width : width(), unknown);
  if (unknown.empty()) {
    print(text);
    return kDone;
  }
  const std::vector<std::string> names = objectNames();
  const std::string* nearest = nearestTo(unknown, names);
  std::string all;
  for (const std::string& name : names) all += (all.empty() ? "" : ", ") + name;
  return fail("there is no object \"" + unknown + "\" in a job file; " +
              (nearest != nullptr ? "did you mean \"" + *nearest + "\"?" : "it is one of " + all));
}

}  // namespace bkoq::tool
