#include "vornrun/api/Value.h"

#include <ostream>
#include <type_traits>

namespace vornrun {

std::ostream& print(std::ostream& stream, const Value& value) {
    std::visit(
        [&stream](const auto& held) {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, bool>) {
                stream << (held ? "true" : "false");
            } else {
                stream << held;
            }
        },
        value);
    return stream;
}

const char* word(ValueType type) noexcept {
    switch (type) {
        case ValueType::boolean:
            return "bool";
        case ValueType::integer:
            return "int";
        case ValueType::interval:
            return "interval";
        case ValueType::real:
            return "real";
        case ValueType::clock:
            return "clock";
        case ValueType::continuous:
            return "continuous";
        case ValueType::enumeration:
            return "enum";
        case ValueType::mode:
            return "mode";
    }
    return "";
}

}  // namespace vornrun
