#pragma once
/// \file
/// The eight data types of the language, twice: as the run-time tag and as tag classes for templates. A run-time tag
/// meets its class in one place, withTagClass().

#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace vornrun {

class RealisedMode;

/// The data types by number. The numbers are relied on as switch labels and in value identities.
enum class VornDataTypeTag : unsigned int {
    VornBool = 0,
    VornReal = 1,
    VornInt = 2,
    VornContinuous = 3,
    VornClock = 4,
    VornEnum = 5,
    VornInterval = 6,
    VornMode = 7
};

/// Number of data types; a tag at or beyond it is none.
inline constexpr unsigned int VORN_DATA_TYPE_COUNT = 8;

struct VornBool {
    using AssociatedDataType = bool;
    static constexpr bool DefaultValue = false;
    static constexpr std::string_view op = "bool";
    static constexpr VornDataTypeTag tag = VornDataTypeTag::VornBool;
};
struct VornReal {
    using AssociatedDataType = double;
    static constexpr double DefaultValue = 0.0;
    static constexpr std::string_view op = "real";
    static constexpr VornDataTypeTag tag = VornDataTypeTag::VornReal;
};
struct VornInt {
    using AssociatedDataType = long;
    static constexpr long DefaultValue = 0;
    static constexpr std::string_view op = "int";
    static constexpr VornDataTypeTag tag = VornDataTypeTag::VornInt;
};
/// A variable that follows a trajectory equation while time passes.
struct VornContinuous {
    using AssociatedDataType = double;
    static constexpr double DefaultValue = 0.0;
    static constexpr std::string_view op = "continuous";
    static constexpr VornDataTypeTag tag = VornDataTypeTag::VornContinuous;
};
/// A variable that advances with time.
struct VornClock {
    using AssociatedDataType = double;
    static constexpr double DefaultValue = 0.0;
    static constexpr std::string_view op = "clock";
    static constexpr VornDataTypeTag tag = VornDataTypeTag::VornClock;
};
/// An enumeration value is the text of its literal: the language has no table of constants.
struct VornEnum {
    using AssociatedDataType = std::string;
    inline static const std::string DefaultValue;
    static constexpr std::string_view op = "enum";
    static constexpr VornDataTypeTag tag = VornDataTypeTag::VornEnum;
};
/// An integer of a declared range whose limits are not enforced anywhere.
struct VornInterval {
    using AssociatedDataType = long;
    static constexpr long DefaultValue = 0;
    static constexpr std::string_view op = "interval";
    static constexpr VornDataTypeTag tag = VornDataTypeTag::VornInterval;
};
/// The current mode of a component, as a value. Its enumerator prints as "VornMode".
struct VornModeVal {
    using AssociatedDataType = const RealisedMode*;
    static constexpr const RealisedMode* DefaultValue = nullptr;
    static constexpr std::string_view op = "mode";
    static constexpr VornDataTypeTag tag = VornDataTypeTag::VornMode;
};

template <class T>
concept VornTag = requires {
    typename T::AssociatedDataType;
    T::DefaultValue;
    { T::op } -> std::convertible_to<std::string_view>;
    { T::tag } -> std::convertible_to<VornDataTypeTag>;
};

/// real, continuous or clock.
template <class T>
concept DoubleTag = VornTag<T> && std::same_as<typename T::AssociatedDataType, double>;
/// int or interval.
template <class T>
concept IntegerTag = VornTag<T> && std::same_as<typename T::AssociatedDataType, long>;
template <class T>
concept NumericTag = DoubleTag<T> || IntegerTag<T>;

/// Applies a macro to each tag class, in tag order.
#define VORN_FOR_EACH_TYPE(M) \
    M(VornBool) M(VornReal) M(VornInt) M(VornContinuous) M(VornClock) M(VornEnum) M(VornInterval) M(VornModeVal)

/// Calls `f.template operator()<T>()` for the tag's class and returns its result; a value-initialised result for a tag
/// beyond the eight. The one place where a run-time tag becomes a template argument.
template <class F>
auto withTagClass(VornDataTypeTag tag, F&& f) {
    using Result = decltype(f.template operator()<VornBool>());
    switch (tag) {
        case VornDataTypeTag::VornBool:
            return f.template operator()<VornBool>();
        case VornDataTypeTag::VornReal:
            return f.template operator()<VornReal>();
        case VornDataTypeTag::VornInt:
            return f.template operator()<VornInt>();
        case VornDataTypeTag::VornContinuous:
            return f.template operator()<VornContinuous>();
        case VornDataTypeTag::VornClock:
            return f.template operator()<VornClock>();
        case VornDataTypeTag::VornEnum:
            return f.template operator()<VornEnum>();
        case VornDataTypeTag::VornInterval:
            return f.template operator()<VornInterval>();
        case VornDataTypeTag::VornMode:
            return f.template operator()<VornModeVal>();
    }
    return Result();
}

/// Writes "VornBool" ... "VornMode"; nothing for a value beyond the eight.
std::ostream& operator<<(std::ostream& stream, VornDataTypeTag tag);
/// The same text as a string.
std::string toString(VornDataTypeTag tag);
/// True for real, continuous and clock.
bool hasDoubleAsAssociatedDataType(VornDataTypeTag tag);

}  // namespace vornrun
