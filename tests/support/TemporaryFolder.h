#pragma once

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <system_error>

namespace tallyvane::testing {

/// A folder on disk that goes with the test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "tallyvane-test-XXXXXX").string();
    path = ::mkdtemp(name.data()) == nullptr ? std::string() : std::filesystem::canonical(name).string();
  }
  /// A program that is just ending may still add to it, so that removing takes more than one turn.
  ~TemporaryFolder() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{10};
    std::error_code error;
    do {
      std::filesystem::remove_all(path, error);
    } while (error && std::chrono::steady_clock::now() < end);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string path;
};

/// Written and read without the code under test.
inline void put(const std::string& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }
inline std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}
/// Of each file, by its name.
inline std::map<std::string, std::string> contentOfFolder(const std::string& folder) {
  std::map<std::string, std::string> content;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    content[entry.path().filename()] = contentOf(entry.path());
  return content;
}

}  // namespace tallyvane::testing
