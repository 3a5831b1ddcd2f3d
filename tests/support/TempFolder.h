#pragma once
/// \file
/// A folder for the files of one test.

#include <filesystem>
#include <string>

namespace vornrun::test {

/// A fresh, empty folder, deleted with all that is in it at the end of its life.
class TempFolder {
  public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    const std::filesystem::path& path() const noexcept { return mPath; }
    /// Writes a file of that name and gives its path.
    std::string write(const std::string& name, const std::string& content) const;

  private:
    std::filesystem::path mPath;
};

}  // namespace vornrun::test
