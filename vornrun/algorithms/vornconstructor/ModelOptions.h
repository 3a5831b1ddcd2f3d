#pragma once
/// \file
/// Choices of those who build models.

namespace vornrun {

struct ModelOptions {
    /// An integer division or remainder that has no result throws arithmetic_fault. Otherwise it ends the process by
    /// the arithmetic signal, and costs no check.
    bool checkedArithmetic = false;
};

}  // namespace vornrun
