#include "tools/job_file.h"

#include "tools/attributes.h"
#include "tools/document.h"

namespace bkoq::tool {

LoadedJob readJob(const std::string& text, Problems& problems) {
  LoadedJob loaded;
  Value root;
  SyntaxError error;
  if (!parseDocument(text, root, error)) {
    const std::size_t first = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    const bool looksLikeJob =
        first == std::string::npos || std::string("{[/").find(text[first]) != std::string::npos;
    problems.add(
        error.place, "",
        looksLikeJob ? error.message : "neither a job file, which begins with {, nor an image");
    return loaded;
  }
  Reader reader(problems, loaded.kept);
  loaded.job.reset(jobs().read(reader, root));
  return loaded;
}

}  // namespace bkoq::tool
