#pragma once
/// \file
/// Operations on the parts of formulas. Each part may be missing.

#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "vornrun/datastructures/property/CSLFormula.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun::property {

[[noreturn]] inline void reportMissing(std::string_view part, std::string_view of) {
    throw missing_operand("The " + std::string(part) + " of " + std::string(of) + " is missing");
}

/// The part's verdict.
/// \param part, of name the part for the exception: "left operand", "&&"
/// \throws missing_operand when there is no such part
template <class F>
PropertyResult evaluate(const std::unique_ptr<F>& formula, RunContext* run, bool shallow, std::string_view part,
                        std::string_view of) {
    if (formula == nullptr) [[unlikely]] {
        reportMissing(part, of);
    }
    return formula->evaluate(run, shallow);
}

/// A deep copy, owned by the caller; null of null.
template <class F>
F* clone(const std::unique_ptr<F>& formula) {
    return formula == nullptr ? nullptr : formula->clone();
}

/// Writes the part; "(null)" when it is missing.
template <class F>
void print(std::ostream& stream, const std::unique_ptr<F>& formula) {
    if (formula == nullptr) {
        stream << "(null)";
    } else {
        stream << *formula;
    }
}

}  // namespace vornrun::property
