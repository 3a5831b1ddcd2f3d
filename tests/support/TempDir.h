#pragma once
/// \file
/// A fresh temporary folder for one test.

#include <filesystem>
#include <string>

namespace vornrun::test {

/// A new, empty folder below the system's temporary folder, removed with its contents at the end of its life.
class TempDir {
  public:
    /// \throws std::system_error when the folder cannot be made
    TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    ~TempDir();  // removes the folder

    const std::filesystem::path& path() const noexcept { return mPath; }
    /// The path of a file of that name in the folder; the file need not exist.
    std::string file(const std::string& name) const;
    /// Writes (or overwrites) a file in the folder and returns its path.
    /// \throws std::runtime_error when it cannot be written
    std::string write(const std::string& name, const std::string& text) const;

  private:
    std::filesystem::path mPath;
};

/// The text of a file. \throws std::runtime_error when it cannot be read
std::string readFile(const std::string& path);

}  // namespace vornrun::test
