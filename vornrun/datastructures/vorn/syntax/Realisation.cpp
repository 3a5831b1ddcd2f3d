#include "vornrun/datastructures/vorn/syntax/Realisation.h"

#include <ostream>

namespace vornrun {

std::ostream& operator<<(std::ostream& stream, const Realisation& realisation) {
    realisation.print(stream);
    return stream;
}

}  // namespace vornrun
