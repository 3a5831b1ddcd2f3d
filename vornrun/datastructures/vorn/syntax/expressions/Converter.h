#pragma once
/// \file
/// Which data type converts to which, and how. The double types convert among themselves. The integer types convert
/// among themselves and to the double types. No conversion truncates, and none checks bounds.

#include <string_view>

#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"

namespace vornrun {

/// True when a value of type From converts to type To.
template <VornTag From, VornTag To>
inline constexpr bool isConvertible = std::same_as<From, To> || (IntegerTag<From> && NumericTag<To>) ||
                                      (DoubleTag<From> && DoubleTag<To>);

/// \throws std::invalid_argument always: "Requested invalid conversion from " the type From " to " the type To
///         " (value=" the value in the stream's default format ")"
template <VornTag From>
[[noreturn]] void throwInvalidConversion(const typename From::AssociatedDataType& value, std::string_view to);

/// Converts a plain value; the pairs without a conversion fail.
template <class From, class To, class = void>
struct Converter {
    /// \throws std::invalid_argument always, see throwInvalidConversion()
    [[noreturn]] static typename To::AssociatedDataType convert(const typename From::AssociatedDataType& value) {
        throwInvalidConversion<From>(value, To::op);
    }
};

template <class From, class To>
requires isConvertible<From, To>
struct Converter<From, To, void> {
    static typename To::AssociatedDataType convert(const typename From::AssociatedDataType& value) {
        return static_cast<typename To::AssociatedDataType>(value);
    }
};

}  // namespace vornrun
