#include "vornrun/datastructures/vorn/syntax/expressions/Converter.h"

#include <sstream>
#include <stdexcept>

namespace vornrun {

template <VornTag From>
void throwInvalidConversion(const typename From::AssociatedDataType& value, std::string_view to) {
    std::ostringstream text;
    text << "Requested invalid conversion from " << From::op << " to " << to << " (value=";
    if constexpr (std::is_pointer_v<typename From::AssociatedDataType>) {
        text << static_cast<const void*>(value);
    } else {
        text << value;
    }
    text << ")";
    throw std::invalid_argument(text.str());
}

#define VORN_INSTANTIATE(T) \
    template void throwInvalidConversion<T>(const typename T::AssociatedDataType& value, std::string_view to);
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun
