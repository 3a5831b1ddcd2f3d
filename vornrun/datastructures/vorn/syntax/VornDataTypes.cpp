#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"

#include <ostream>
#include <sstream>

namespace vornrun {

std::ostream& operator<<(std::ostream& stream, VornDataTypeTag tag) {
    switch (tag) {
        case VornDataTypeTag::VornBool:
            return stream << "VornBool";
        case VornDataTypeTag::VornReal:
            return stream << "VornReal";
        case VornDataTypeTag::VornInt:
            return stream << "VornInt";
        case VornDataTypeTag::VornContinuous:
            return stream << "VornContinuous";
        case VornDataTypeTag::VornClock:
            return stream << "VornClock";
        case VornDataTypeTag::VornEnum:
            return stream << "VornEnum";
        case VornDataTypeTag::VornInterval:
            return stream << "VornInterval";
        case VornDataTypeTag::VornMode:
            return stream << "VornMode";
    }
    return stream;
}

std::string toString(VornDataTypeTag tag) {
    std::ostringstream stream;
    stream << tag;
    return stream.str();
}

bool hasDoubleAsAssociatedDataType(VornDataTypeTag tag) {
    return withTagClass(tag, []<class T>() { return DoubleTag<T>; });
}

}  // namespace vornrun
