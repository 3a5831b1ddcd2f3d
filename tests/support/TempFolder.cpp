#include "tests/support/TempFolder.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace vornrun::test {

TempFolder::TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "vornrun-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
    mPath = name;
}

TempFolder::~TempFolder() {  // the folder is a resource of the system
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

std::string TempFolder::write(const std::string& name, const std::string& content) const {
    const std::filesystem::path file = mPath / name;
    std::ofstream stream(file, std::ios::binary);
    stream << content;
    stream.close();
    if (!stream) throw std::runtime_error("cannot write " + file.string());
    return file.string();
}

}  // namespace vornrun::test
