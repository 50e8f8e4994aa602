#ifndef BKOQ_TOOLS_COMMANDS_H_
#define BKOQ_TOOLS_COMMANDS_H_

#include <optional>
#include <string>
#include <vector>

#include "tools/flattening.h"
#include "tools/output.h"

namespace bkoq::tool {

// What the options of a command line ask for.
struct Request {
  std::vector<std::string> files;
  std::string layout;  // "current", "previous", "both"; empty when it is not given
  Selection selection;
  std::string image;  // where to write one
  bool json = false;
  std::string jsonForm;  // of trees: "full" or "plain"
  bool showSecrets = false;
  bool annotate = false;
  bool html = false;
  std::string output;  // where to write a page
  std::string field;
  std::string at;
  std::string only;
  unsigned int depth = 0;
  unsigned int width = 0;
  bool salvage = false;
  std::vector<std::string> onlyPaths;  // of differences
  std::vector<std::string> ignoredPaths;
  bool layouts = false;
  std::string record;
  BkoqLayout recordLayout = BKOQ_LAYOUT_CURRENT;
  bool compare = false;
  bool c = false;
  bool magic = false;
  bool kaitai = false;
  std::string kind;
  bool all = false;
  std::string attribute;
  bool why = false;
  unsigned int processes = 1;
  bool strict = false;
  bool isShort = false;
};

Status flattenCommand(const Request& request);
Status showCommand(const Request& request);
Status diffCommand(const Request& request);
Status checkCommand(const Request& request);
Status layoutCommand(const Request& request);
Status schemaCommand(const Request& request);
Status newCommand(const Request& request);
Status attributesCommand(const Request& request);
Status explainCommand(const Request& request);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_COMMANDS_H_
