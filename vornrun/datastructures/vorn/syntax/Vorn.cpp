#include "vornrun/datastructures/vorn/syntax/Vorn.h"

#include <ostream>

namespace vornrun {

std::ostream& operator<<(std::ostream& stream, const Vorn& vorn) {
    vorn.printVorn(stream);
    return stream;
}

}  // namespace vornrun
