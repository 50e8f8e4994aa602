#ifndef BKOQ_TOOLS_DESCRIPTION_H_
#define BKOQ_TOOLS_DESCRIPTION_H_

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <string>
#include <vector>

namespace bkoq::tool {

// Help, man page and shell completion, all from the description of the command line: its commands,
// options, texts and, in the footers, examples.

// For so many columns, or 80 where there are more or it is not known.
std::string helpText(const CLI::App& app, unsigned int columns);
std::string manPage(const CLI::App& app);

// Names that values of options and arguments are completed to.
struct CompletionWords {
  std::vector<std::string> objects;  // of job files
  std::vector<std::string> currentRecords;
  std::vector<std::string> previousRecords;
};
std::string bashCompletion(const CLI::App& app, const CompletionWords& words);
std::string zshCompletion(const CLI::App& app, const CompletionWords& words);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_DESCRIPTION_H_
