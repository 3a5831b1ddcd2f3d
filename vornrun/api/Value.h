#pragma once
/// \file
/// Values of a model as a client sees them.

#include <iosfwd>
#include <string>
#include <variant>

namespace vornrun {

/// The data types of the language.
enum class ValueType {
    boolean,      ///< a `bool`
    integer,      ///< a `long`
    interval,     ///< a `long`; the limits of its declaration are not enforced
    real,         ///< a `double`
    clock,        ///< a `double` that advances with time
    continuous,   ///< a `double` that follows an equation while time passes
    enumeration,  ///< the text of the literal
    mode          ///< the name of the mode
};

/// A value: the alternative follows from its type, as ValueType tells.
using Value = std::variant<bool, long, double, std::string>;

/// Writes "true" or "false", a number in the stream's format, or the text.
std::ostream& print(std::ostream& stream, const Value& value);

/// The word for a type: "bool", "int", "interval", "real", "clock", "continuous", "enum" or "mode".
const char* word(ValueType type) noexcept;

}  // namespace vornrun
