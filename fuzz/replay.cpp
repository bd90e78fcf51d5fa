// Runs a fuzz target once over every file named on the command line, and over
// every file of the folders named there: the main of a build without libFuzzer.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& path) {
  if (!fs::is_directory(path)) {
    return {path};
  }
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) {
      files.push_back(entry.path());
    }
  }
  return files;
}

bool replay(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    std::cerr << file << ": cannot be read\n";
    return false;
  }
  std::cerr << file << '\n';  // the last line of a run that crashes
  const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  int replayed = 0;
  for (int at = 1; at < argc; ++at) {
    for (const fs::path& file : filesOf(argv[at])) {
      if (!replay(file)) {
        return 1;
      }
      ++replayed;
    }
  }
  std::cout << replayed << " inputs\n";
  return replayed > 0 ? 0 : 1;
}
