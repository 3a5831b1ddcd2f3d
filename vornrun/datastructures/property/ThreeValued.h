#pragma once
/// \file
/// The operators of state formulas and their tables of three-valued verdicts.

#include <array>
#include <string_view>

#include "vornrun/datastructures/property/PropertyResult.h"

namespace vornrun {

/// Indexed by the left and then the right verdict.
using VerdictTable = std::array<std::array<PropertyResult, 3>, 3>;

// The text of an operator, and its table: rows are the left verdict, columns the right one, both in the order true,
// false, unknown.

struct CSLAnd {
    static constexpr std::string_view op = "&&";
    static constexpr VerdictTable table{{
        {PropertyTrue, PropertyFalse, PropertyUnknown},
        {PropertyFalse, PropertyFalse, PropertyFalse},
        {PropertyUnknown, PropertyFalse, PropertyUnknown},
    }};
};
struct CSLOr {
    static constexpr std::string_view op = "||";
    static constexpr VerdictTable table{{
        {PropertyTrue, PropertyTrue, PropertyTrue},
        {PropertyTrue, PropertyFalse, PropertyUnknown},
        {PropertyTrue, PropertyUnknown, PropertyUnknown},
    }};
};
struct CSLImp {
    static constexpr std::string_view op = "->";
    static constexpr VerdictTable table{{
        {PropertyTrue, PropertyFalse, PropertyUnknown},
        {PropertyTrue, PropertyTrue, PropertyTrue},
        {PropertyTrue, PropertyUnknown, PropertyUnknown},
    }};
};
/// Two unknown verdicts are equal and so give true.
struct CSLIff {
    static constexpr std::string_view op = "<->";
    static constexpr VerdictTable table{{
        {PropertyTrue, PropertyFalse, PropertyUnknown},
        {PropertyFalse, PropertyTrue, PropertyUnknown},
        {PropertyUnknown, PropertyUnknown, PropertyTrue},
    }};
};
struct CSLNot {
    static constexpr std::string_view op = "!";
    /// Indexed by the operand's verdict.
    static constexpr std::array<PropertyResult, 3> table{PropertyFalse, PropertyTrue, PropertyUnknown};
};

template <class Op>
constexpr PropertyResult combine(PropertyResult left, PropertyResult right) {
    return Op::table[left][right];
}

template <class Op>
constexpr PropertyResult combine(PropertyResult operand) {
    return Op::table[operand];
}

}  // namespace vornrun
