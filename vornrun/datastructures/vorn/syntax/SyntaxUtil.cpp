#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"

namespace vornrun::syntax {

const Log FirstOfName::sLogger("root.vornxml");

void FirstOfName::warnOfSecond(const char* kind, const std::string& name, const std::string& place) {
    VORNRUN_LOG(sLogger, Warn,
                "A second " << kind << " of name '" << name << "' in " << place << " is ignored, the first one stays.");
}

void printInModes(std::ostream& stream, const std::vector<std::string>& inModes) {
    if (inModes.empty()) return;
    const char* delimiter = " in modes (";
    for (const std::string& mode : inModes) {
        stream << delimiter << mode;
        delimiter = ", ";
    }
    stream << ")";
}

}  // namespace vornrun::syntax
