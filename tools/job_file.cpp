#include "tools/job_file.h"

#include <utility>

#include "tools/attributes.h"

namespace bkoq::tool {

LoadedJob readJob(std::string text, Problems& problems) {
  LoadedJob loaded;
  const std::size_t first = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  const bool looksLikeJob =
      first == std::string::npos || std::string("{[/").find(text[first]) != std::string::npos;
  loaded.document = std::make_unique<Document>(std::move(text));
  SyntaxError error;
  if (!loaded.document->parse(error)) {
    problems.add(
        loaded.document->placeOf(error.at), "",
        looksLikeJob ? error.message : "neither a job file, which begins with {, nor an image");
    return loaded;
  }
  Reader reader(*loaded.document, problems, loaded.kept);
  loaded.job.reset(jobs().read(reader, loaded.document->root()));
  return loaded;
}

}  // namespace bkoq::tool
