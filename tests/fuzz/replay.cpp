// Runs a fuzz target over files and folders of files, in the order of their names.

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" bool fuzzReplays();
extern "C" bool fuzzReplays() { return true; }

namespace {

void addFiles(const std::string& path, std::vector<std::string>& files) {
  DIR* folder = opendir(path.c_str());
  if (folder == nullptr) {
    files.push_back(path);
    return;
  }
  std::vector<std::string> names;
  while (const dirent* entry = readdir(folder)) {
    if (entry->d_name[0] != '.') names.push_back(path + "/" + entry->d_name);
  }
  closedir(folder);
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) addFiles(name, files);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) addFiles(argv[i], files);
  for (const std::string& file : files) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
      std::printf("cannot read %s\n", file.c_str());
      return 1;
    }
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);  // a crash is then the last file named
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu cases\n", files.size());
  return files.empty() ? 1 : 0;
}
