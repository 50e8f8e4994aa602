#include "tools/job_file.h"

#include "tools/attributes.h"
#include "tools/document.h"

namespace bkoq::tool {

LoadedJob readJob(const std::string& text, Problems& problems) {
  LoadedJob loaded;
  Value root;
  SyntaxError error;
  if (!parseDocument(text, root, error)) {
    problems.add(error.place, "", error.message);
    return loaded;
  }
  Reader reader(problems, loaded.kept);
  loaded.job.reset(static_cast<BKQJob*>(readObject(reader, jobs(), root)));
  return loaded;
}

}  // namespace bkoq::tool
