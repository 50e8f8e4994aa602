// What the texts of the command line at hand do not show of how they are laid out.

#include "tools/description.h"

#include <gtest/gtest.h>

#include <string>

namespace bkoq::tool {
namespace {

// Between a term and its meaning are two blanks, or a line break where there is no room for two.
TEST(Description, ATermKeepsItsDistance) {
  CLI::App app("about", "tool");
  app.set_help_flag();
  app.add_flag("--aaaaaaaaaaaaaaaaaaaa", "has room");
  app.add_flag("--aaaaaaaaaaaaaaaaaaaaa", "has none");
  EXPECT_EQ(helpText(app, 80), R"(about

Usage: tool [OPTIONS]

Options:
  --aaaaaaaaaaaaaaaaaaaa  has room
  --aaaaaaaaaaaaaaaaaaaaa
                          has none
)");
}

// A narrow terminal: a word too long for it is not put below an empty line.
TEST(Description, ALongWordStaysWhereItsMeaningBegins) {
  CLI::App app("about", "tool");
  app.set_help_flag();
  app.add_flag("--flag", "incomprehensible words");
  EXPECT_EQ(helpText(app, 30), R"(about

Usage: tool [OPTIONS]

Options:
  --flag                  incomprehensible
                          words
)");
}

// A man page takes a line that begins with a dot or a quote for a request, a backslash for an
// escape and a bare hyphen for another character.
TEST(Description, AManPageShowsTextsAsTheyAre) {
  CLI::App app("about", "tool");
  app.footer(".dot begins\n'quote begins\na. dot isn't first\nC:\\data -o");
  const std::string page = manPage(app);
  const std::string before = "\n.SH NOTES\n.nf\n";
  const std::size_t begin = page.find(before);
  ASSERT_NE(begin, std::string::npos);
  const std::string notes = page.substr(begin + before.size());
  EXPECT_EQ(notes.substr(0, notes.find("\n.fi\n")),
            "\\&.dot begins\n\\&'quote begins\na. dot isn't first\nC:\\edata \\-o");
}

}  // namespace
}  // namespace bkoq::tool
