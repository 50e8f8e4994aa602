#include "tools/many_files.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "tools/progress.h"

namespace bkoq::tool {
namespace {

// One of several processes: the files from `first` on, what it prints and the statuses it tells.
struct Worker {
  std::size_t first;
  std::size_t count;
  pid_t id;
  std::FILE* printed;
};

// In the new process: goes through its files and ends.
[[noreturn]] void work(const Worker& self, int statuses,
                       const std::function<Status(std::size_t)>& one) {
  if (dup2(fileno(self.printed), STDOUT_FILENO) < 0) _exit(kFailed);
  for (std::size_t i = 0; i < self.count; ++i) {
    const auto status = static_cast<unsigned char>(one(self.first + i));
    // Before the status: whoever knows that a file is done can read what was printed of it.
    if (std::fflush(stdout) != 0 || write(statuses, &status, 1) != 1) _exit(kFailed);
  }
  _exit(kDone);
}

void copyTo(std::FILE* to, std::FILE* from) {
  char piece[16384];
  std::rewind(from);
  std::size_t count = 0;
  while ((count = std::fread(piece, 1, sizeof piece, from)) != 0) std::fwrite(piece, 1, count, to);
}

Tally inOneProcess(std::size_t files, const std::function<Status(std::size_t)>& one) {
  Tally tally;
  Progress progress(files);
  for (std::size_t i = 0; i < files; ++i) {
    ++tally.ended[one(i)];
    progress.at(i + 1);
  }
  return tally;
}

}  // namespace

Tally forEachFile(std::size_t files, unsigned int processes,
                  const std::function<Status(std::size_t)>& one) {
  const std::size_t workers = std::min<std::size_t>(processes, files);
  if (workers <= 1) return inOneProcess(files, one);

  Tally tally;
  int statuses[2];
  if (pipe(statuses) != 0) {
    fail(std::string("cannot start processes: ") + std::strerror(errno));
    tally.ended[kFailed] = files;
    return tally;
  }
  std::fflush(stdout);  // what is pending would be printed by every process
  std::vector<Worker> all;
  std::size_t given = 0;
  for (std::size_t i = 0; i < workers; ++i) {
    const std::size_t count = (files - given) / (workers - i);
    Worker worker = {given, count, -1, std::tmpfile()};
    given += count;
    if (worker.printed != nullptr) worker.id = fork();
    if (worker.id == 0) {
      close(statuses[0]);
      work(worker, statuses[1], one);
    }
    if (worker.id < 0) {
      fail(std::string("cannot start a process: ") + std::strerror(errno));
    }
    all.push_back(worker);
  }
  close(statuses[1]);

  Progress progress(files);
  std::size_t done = 0;
  for (unsigned char status = 0;;) {
    const ssize_t count = read(statuses[0], &status, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    ++tally.ended[std::min<unsigned char>(status, kFailed)];
    progress.at(++done);
  }
  close(statuses[0]);
  tally.ended[kFailed] += files - done;
  for (const Worker& worker : all) {
    int ending = 0;
    if (worker.id > 0) waitpid(worker.id, &ending, 0);
    if (worker.id > 0 && WIFSIGNALED(ending)) {
      fail(std::string("a process was ended by the signal ") + strsignal(WTERMSIG(ending)));
    }
    if (worker.printed == nullptr) continue;
    copyTo(stdout, worker.printed);
    std::fclose(worker.printed);
  }
  return tally;
}

}  // namespace bkoq::tool
