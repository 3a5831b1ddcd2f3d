#include "tests/support/TempDir.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace vornrun::test {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vornrun-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::system_error(errno, std::generic_category(), pattern);
    mPath = pattern;
}

TempDir::~TempDir() {
    std::error_code ignored;  // a test must not fail because its folder cannot be removed
    std::filesystem::remove_all(mPath, ignored);
}

std::string TempDir::file(const std::string& name) const { return (mPath / name).string(); }

std::string TempDir::write(const std::string& name, const std::string& text) const {
    std::string path = file(name);
    std::ofstream stream(path, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) throw std::runtime_error("cannot write " + path);
    return path;
}

std::string readFile(const std::string& path) {
    const std::ifstream stream(path, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + path);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

}  // namespace vornrun::test
