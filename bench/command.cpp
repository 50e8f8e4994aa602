#include "bench/command.h"

#include <limits.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace bkoq::bench {
namespace {

[[noreturn]] void fail(const std::string& program, const std::string& output) {
  std::fprintf(stderr, "bench: %s failed: %s\n", program.c_str(), output.c_str());
  std::exit(EXIT_FAILURE);
}

std::string readAll(int file) {
  std::string text;
  char buffer[4096];
  for (;;) {
    const ssize_t size = read(file, buffer, sizeof buffer);
    if (size <= 0) return text;
    text.append(buffer, static_cast<std::size_t>(size));
  }
}

}  // namespace

std::string besideThis(const char* program) {
  char path[PATH_MAX];
  const ssize_t size = readlink("/proc/self/exe", path, sizeof path);
  const std::string self(path, size > 0 ? static_cast<std::size_t>(size) : 0);
  return self.substr(0, self.rfind('/') + 1) + program;
}

bool isInstalled(const char* program) {
  const char* path = std::getenv("PATH");
  std::string folders = path != nullptr ? path : "";
  for (std::size_t start = 0; start < folders.size();) {
    const std::size_t end = folders.find(':', start);
    const std::string folder = folders.substr(start, end - start);
    if (access((folder + "/" + program).c_str(), X_OK) == 0) return true;
    if (end == std::string::npos) return false;
    start = end + 1;
  }
  return false;
}

std::string outputOf(const std::vector<std::string>& command) {
  int ends[2];
  if (pipe(ends) != 0) fail(command[0], "no pipe");
  const pid_t child = fork();
  if (child == 0) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
      arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    dup2(ends[1], STDOUT_FILENO);
    dup2(ends[1], STDERR_FILENO);
    close(ends[0]);
    close(ends[1]);
    execvp(arguments[0], arguments.data());
    _exit(127);
  }
  close(ends[1]);
  std::string output = readAll(ends[0]);
  close(ends[0]);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || status != 0) fail(command[0], output);
  return output;
}

}  // namespace bkoq::bench
